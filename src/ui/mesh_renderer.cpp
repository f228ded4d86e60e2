#include "ui/mesh_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tolvane::ui {

namespace {

Vec3 sub(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
float dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
Vec3 normalised(const Vec3& v) {
  float n = std::sqrt(dot(v, v));
  return n > 0 ? Vec3{v.x / n, v.y / n, v.z / n} : v;
}

struct ScreenPoint {
  float x, y;
};

class SoftwareMeshRenderer : public MeshRenderer {
 public:
  SoftwareMeshRenderer(Raster& raster, std::function<void()> presented)
      : m_raster(raster), m_presented(std::move(presented)) {}

  void setCamera(const Vec3& eye, const Vec3& target, const Vec3& up) override {
    m_eye = eye;
    m_axisZ = normalised(sub(target, eye));
    m_axisX = normalised(cross(up, m_axisZ));
    m_axisY = cross(m_axisZ, m_axisX);
  }
  void setProjection(float nearPlane, float farPlane, float fieldOfView) override {
    m_near = nearPlane;
    m_far = farPlane;
    m_focus = std::cos(fieldOfView / 2) / std::sin(fieldOfView / 2);
  }
  void setWorldRotationY(float radians) override {
    m_cos = std::cos(radians);
    m_sin = std::sin(radians);
  }
  void setMaterial(float red, float green, float blue) override {
    auto byte = [](float v) {
      return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255));
    };
    m_colour = 0xFF000000u | (byte(red) << 16) | (byte(green) << 8) | byte(blue);
  }
  void clear(Colour colour) override { m_raster.fill(pixelOf(colour)); }
  void drawTriangles(const VertexList& list) override;
  void drawPoints(const VertexList& list) override;
  void present() override {
    if (m_presented) m_presented();
  }

 private:
  // World rotation, then the camera: x right, y up, z the depth.
  Vec3 toView(const Vec3& p) const {
    Vec3 w{p.x * m_cos + p.z * m_sin, p.y, -p.x * m_sin + p.z * m_cos};
    Vec3 d = sub(w, m_eye);
    return {dot(m_axisX, d), dot(m_axisY, d), dot(m_axisZ, d)};
  }
  ScreenPoint toScreen(const Vec3& v) const {
    float w = m_raster.width(), h = m_raster.height();
    return {(v.x * m_focus / v.z + 1) * w / 2, (1 - v.y * m_focus / v.z) * h / 2};
  }
  void fill(const ScreenPoint* points, int count);

  Raster& m_raster;
  std::function<void()> m_presented;
  Vec3 m_eye{}, m_axisX{1, 0, 0}, m_axisY{0, 1, 0}, m_axisZ{0, 0, 1};
  float m_near = 1, m_far = 1000, m_focus = 1;
  float m_cos = 1, m_sin = 0;
  std::uint32_t m_colour = 0xFFFF0000u;
  std::vector<float> m_crossings;
};

void SoftwareMeshRenderer::drawTriangles(const VertexList& list) {
  for (std::size_t i = 0; i + 2 < list.size(); i += 3) {
    std::array<Vec3, 3> v{toView(list[i]), toView(list[i + 1]), toView(list[i + 2])};
    if (v[0].z > m_far && v[1].z > m_far && v[2].z > m_far) continue;
    // Cut at the near plane: the corners in front of it, and where the edges cross it.
    std::array<ScreenPoint, 4> points;
    int count = 0;
    for (int k = 0; k < 3; ++k) {
      const Vec3& a = v[k];
      const Vec3& b = v[(k + 1) % 3];
      if (a.z >= m_near) points[count++] = toScreen(a);
      if ((a.z >= m_near) != (b.z >= m_near)) {
        float t = (m_near - a.z) / (b.z - a.z);
        points[count++] = toScreen({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), m_near});
      }
    }
    if (count >= 3) fill(points.data(), count);
  }
}

void SoftwareMeshRenderer::drawPoints(const VertexList& list) {
  for (const Vec3& p : list.points()) {
    Vec3 v = toView(p);
    if (v.z < m_near || v.z > m_far) continue;
    ScreenPoint s = toScreen(v);
    m_raster.setPixel(static_cast<int>(std::floor(s.x)), static_cast<int>(std::floor(s.y)), m_colour);
  }
}

// Even-odd fill at pixel centres.
void SoftwareMeshRenderer::fill(const ScreenPoint* points, int count) {
  float top = points[0].y, bottom = points[0].y;
  for (int i = 1; i < count; ++i) {
    top = std::min(top, points[i].y);
    bottom = std::max(bottom, points[i].y);
  }
  int first = std::max(0, static_cast<int>(std::ceil(top - 0.5f)));
  int last = std::min(m_raster.height() - 1, static_cast<int>(std::ceil(bottom - 0.5f)) - 1);
  std::uint32_t* pixels = m_raster.data();
  for (int y = first; y <= last; ++y) {
    float cy = y + 0.5f;
    m_crossings.clear();
    for (int i = 0; i < count; ++i) {
      const ScreenPoint& p = points[i];
      const ScreenPoint& q = points[(i + 1) % count];
      if ((p.y <= cy) == (q.y <= cy)) continue;
      m_crossings.push_back(p.x + (cy - p.y) * (q.x - p.x) / (q.y - p.y));
    }
    std::sort(m_crossings.begin(), m_crossings.end());
    for (std::size_t i = 0; i + 1 < m_crossings.size(); i += 2) {
      int from = std::max(0, static_cast<int>(std::ceil(m_crossings[i] - 0.5f)));
      int to = std::min(m_raster.width() - 1, static_cast<int>(std::ceil(m_crossings[i + 1] - 0.5f)) - 1);
      std::uint32_t* row = pixels + static_cast<std::size_t>(y) * m_raster.width();
      for (int x = from; x <= to; ++x) row[x] = m_colour;
    }
  }
}

}  // namespace

std::unique_ptr<MeshRenderer> softwareMeshRenderer(Raster& raster, std::function<void()> presented) {
  return std::make_unique<SoftwareMeshRenderer>(raster, std::move(presented));
}

}  // namespace tolvane::ui
