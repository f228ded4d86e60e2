// The live mesh view's renderer: the few operations the rotating view needs (camera,
// projection, world rotation about the vertical axis, a flat material, clear, a
// triangle list or a point list, present). A front end puts a hardware renderer behind
// it; the software renderer here draws into a raster, with the same left-handed
// camera and projection, where there is no graphics context.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "ui/controls.h"
#include "ui/raster.h"

namespace tolvane::ui {

struct Vec3 {
  float x = 0, y = 0, z = 0;
};

// The points a renderer draws, with a revision that changes whenever they do, so that a
// renderer that keeps a copy (in video memory) knows when to take a new one.
class VertexList {
 public:
  std::size_t size() const { return m_points.size(); }
  bool empty() const { return m_points.empty(); }
  const Vec3& operator[](std::size_t i) const { return m_points[i]; }
  const Vec3* data() const { return m_points.data(); }
  const std::vector<Vec3>& points() const { return m_points; }
  std::uint64_t revision() const { return m_revision; }
  void push_back(const Vec3& point) {
    m_points.push_back(point);
    ++m_revision;
  }
  void clear() {
    m_points.clear();
    ++m_revision;
  }
  void release() {
    std::vector<Vec3>().swap(m_points);
    ++m_revision;
  }

 private:
  std::vector<Vec3> m_points;
  std::uint64_t m_revision = 0;
};

class MeshRenderer {
 public:
  virtual ~MeshRenderer() = default;
  // A left-handed look-at view.
  virtual void setCamera(const Vec3& eye, const Vec3& target, const Vec3& up) = 0;
  // A square perspective with the field of view in radians.
  virtual void setProjection(float nearPlane, float farPlane, float fieldOfView) = 0;
  virtual void setWorldRotationY(float radians) = 0;
  // The flat colour of what is drawn, each part 0 to 1.
  virtual void setMaterial(float red, float green, float blue) = 0;
  virtual void clear(Colour colour) = 0;
  // Every three points of the list are one triangle; no face is culled.
  virtual void drawTriangles(const VertexList& list) = 0;
  virtual void drawPoints(const VertexList& list) = 0;
  // Shows what was drawn since the last clear.
  virtual void present() = 0;
};

// Draws into `raster`; `presented` runs after each present, for the view to show it.
std::unique_ptr<MeshRenderer> softwareMeshRenderer(Raster& raster, std::function<void()> presented);

}  // namespace tolvane::ui
