// The live mesh view's renderer: the few operations the rotating view needs (camera,
// projection, world rotation about the vertical axis, a flat material, clear, a
// triangle list or a point list, present). A front end puts a hardware renderer behind
// it; the software renderer here draws into a raster, with the same left-handed
// camera and projection, where there is no graphics context.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "ui/controls.h"
#include "ui/raster.h"

namespace tolvane::ui {

struct Vec3 {
  float x = 0, y = 0, z = 0;
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
  virtual void drawTriangles(const std::vector<Vec3>& list) = 0;
  virtual void drawPoints(const std::vector<Vec3>& list) = 0;
  // Shows what was drawn since the last clear.
  virtual void present() = 0;
};

// Draws into `raster`; `presented` runs after each present, for the view to show it.
std::unique_ptr<MeshRenderer> softwareMeshRenderer(Raster& raster, std::function<void()> presented);

}  // namespace tolvane::ui
