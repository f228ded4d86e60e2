#include "ui/raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tolvane::ui {

Raster::Raster(int width, int height, Colour background)
    : m_width(std::max(width, 1)),
      m_height(std::max(height, 1)),
      m_pixels(static_cast<std::size_t>(m_width) * m_height, pixelOf(background)) {}

void Raster::fill(std::uint32_t value) { std::fill(m_pixels.begin(), m_pixels.end(), value); }

namespace {

class SoftwarePainter : public PicturePainter {
 public:
  explicit SoftwarePainter(Raster& raster) : m_raster(raster) {}

  void clear(Colour background) override { m_raster.fill(pixelOf(background)); }

  void polygon(const PicturePoint* points, int count, Colour fill, Colour outline) override {
    if (count < 2) return;
    if (count >= 3) fillPolygon(points, count, pixelOf(fill));
    std::uint32_t pen = pixelOf(outline);
    if (count == 2) return drawLine(points[0], points[1], pen);  // there and back is one line
    for (int i = 0; i < count; ++i) drawLine(points[i], points[(i + 1) % count], pen);
  }

  void line(PicturePoint from, PicturePoint to, Colour colour) override {
    drawLine(from, to, pixelOf(colour));
  }

  void setPixel(int x, int y, Colour colour) override { m_raster.setPixel(x, y, pixelOf(colour)); }

 private:
  void drawLine(PicturePoint a, PicturePoint b, std::uint32_t pen) {
    // Far ends are clipped to a margin around the picture first, so that a stray
    // coordinate does not cost a walk across millions of pixels.
    if (!clip(a, b)) return;
    long long dx = std::llabs(static_cast<long long>(b.x) - a.x),
              dy = -std::llabs(static_cast<long long>(b.y) - a.y);
    int sx = a.x < b.x ? 1 : -1, sy = a.y < b.y ? 1 : -1;
    long long err = dx + dy;
    for (int x = a.x, y = a.y;;) {
      m_raster.setPixel(x, y, pen);
      if (x == b.x && y == b.y) break;
      long long e2 = 2 * err;
      if (e2 >= dy) {
        err += dy;
        x += sx;
      }
      if (e2 <= dx) {
        err += dx;
        y += sy;
      }
    }
  }

  // Cuts the segment to the picture plus a margin (Liang-Barsky); false when it misses.
  bool clip(PicturePoint& a, PicturePoint& b) const {
    const double lo = -2, hiX = m_raster.width() + 1, hiY = m_raster.height() + 1;
    if (a.x >= lo && a.x <= hiX && a.y >= lo && a.y <= hiY && b.x >= lo && b.x <= hiX && b.y >= lo &&
        b.y <= hiY)
      return true;
    double x0 = a.x, y0 = a.y, dx = static_cast<double>(b.x) - a.x, dy = static_cast<double>(b.y) - a.y;
    double t0 = 0, t1 = 1;
    const double p[4] = {-dx, dx, -dy, dy}, q[4] = {x0 - lo, hiX - x0, y0 - lo, hiY - y0};
    for (int i = 0; i < 4; ++i) {
      if (p[i] == 0) {
        if (q[i] < 0) return false;
        continue;
      }
      double t = q[i] / p[i];
      if (p[i] < 0)
        t0 = std::max(t0, t);
      else
        t1 = std::min(t1, t);
      if (t0 > t1) return false;
    }
    b = {static_cast<std::int32_t>(std::lround(x0 + t1 * dx)),
         static_cast<std::int32_t>(std::lround(y0 + t1 * dy))};
    a = {static_cast<std::int32_t>(std::lround(x0 + t0 * dx)),
         static_cast<std::int32_t>(std::lround(y0 + t0 * dy))};
    return true;
  }

  void fillPolygon(const PicturePoint* points, int count, std::uint32_t brush) {
    int top = m_raster.height(), bottom = -1;
    for (int i = 0; i < count; ++i) {
      top = std::min(top, points[i].y);
      bottom = std::max(bottom, points[i].y);
    }
    top = std::max(top, 0);
    bottom = std::min(bottom, m_raster.height() - 1);
    std::vector<double>& crossings = m_crossings;
    for (int y = top; y <= bottom; ++y) {
      double cy = y + 0.5;
      crossings.clear();
      for (int i = 0; i < count; ++i) {
        const PicturePoint& p = points[i];
        const PicturePoint& q = points[(i + 1) % count];
        if ((p.y <= cy) == (q.y <= cy)) continue;
        crossings.push_back(p.x +
                            (cy - p.y) * (static_cast<double>(q.x) - p.x) / (static_cast<double>(q.y) - p.y));
      }
      std::sort(crossings.begin(), crossings.end());
      for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        int from = std::max(0, static_cast<int>(std::ceil(crossings[i] - 0.5)));
        int to = std::min(m_raster.width() - 1, static_cast<int>(std::ceil(crossings[i + 1] - 0.5)) - 1);
        for (int x = from; x <= to; ++x) m_raster.setPixel(x, y, brush);
      }
    }
  }

  Raster& m_raster;
  std::vector<double> m_crossings;
};

}  // namespace

std::unique_ptr<PicturePainter> softwarePainter(Raster& raster) {
  return std::make_unique<SoftwarePainter>(raster);
}

}  // namespace tolvane::ui

namespace tolvane::ui {

std::string bitmapBytes(const Raster& raster, int width, int height) {
  if (width <= 0 || height <= 0 || raster.width() <= 0 || raster.height() <= 0) return {};
  std::size_t row = (static_cast<std::size_t>(width) * 3 + 3) & ~std::size_t{3};
  std::size_t pixels = row * static_cast<std::size_t>(height);
  std::string out(54 + pixels, '\0');
  auto put32 = [&out](std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) out[at + i] = static_cast<char>((v >> (8 * i)) & 0xFF);
  };
  out[0] = 'B';
  out[1] = 'M';
  put32(2, static_cast<std::uint32_t>(out.size()));
  put32(10, 54);
  put32(14, 40);
  put32(18, static_cast<std::uint32_t>(width));
  put32(22, static_cast<std::uint32_t>(height));
  out[26] = 1;
  out[28] = 24;
  put32(34, static_cast<std::uint32_t>(pixels));
  for (int y = 0; y < height; ++y) {
    int sy = static_cast<int>(static_cast<long long>(height - 1 - y) * raster.height() / height);
    char* line = out.data() + 54 + row * static_cast<std::size_t>(y);
    for (int x = 0; x < width; ++x) {
      std::uint32_t p = raster.pixel(static_cast<int>(static_cast<long long>(x) * raster.width() / width), sy);
      line[3 * x] = static_cast<char>(p & 0xFF);
      line[3 * x + 1] = static_cast<char>((p >> 8) & 0xFF);
      line[3 * x + 2] = static_cast<char>((p >> 16) & 0xFF);
    }
  }
  return out;
}

}  // namespace tolvane::ui
