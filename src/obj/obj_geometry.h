// The workbench's geometry rules: the two view scales of a load, the projection of a
// vertex into the three still pictures (front, side, top), the scaled point of the live
// view's list, and the captions of the bound labels.
#pragma once

#include <cstdint>

#include "ui/form_obj.h"
#include "ui/raster.h"

namespace tolvane::obj {

struct ViewScales {
  double x = 1, y = 1;
};

// y scale = (viewer height x 15 / screen height) / (drawing picture height / 6), and
// the same across for x.
ViewScales viewScales(const ui::FormOBJ& form);

// Picture points of one vertex in the three still pictures. Across, a picture takes
// w/6 per scaled unit from its middle; down, y and z are multiplied by the y scale a
// second time. Points are rounded to 32-bit integers (error 6 beyond).
struct PicturePoints {
  ui::PicturePoint front, side, top;
};
PicturePoints project(const ui::ObjVertex& v, const ViewScales& scales, int w, int h);

// The live view's point for a vertex: x by the x scale, y and z by the y scale.
ui::Vec3 scaledPoint(const ui::ObjVertex& v, const ViewScales& scales);

// The live view's list takes the first three corners of each face while it is below
// 40,000 corners, then those of every second face.
class VertexListRule {
 public:
  bool takeFace(std::size_t listSize) {
    if (listSize < 40000) return true;
    return ++m_late % 2 == 0;
  }

 private:
  std::uint64_t m_late = 0;
};

// The still picture of the current view (1 front, 2 side, 3 top).
ui::DrawnPicture& currentPicture(ui::FormOBJ& form);

// Writes the captions of LabelBiggestX, LabelSmallestX and LabelBiggestY from the bounds
// (the smallest x made positive first).
void writeBoundLabels(ui::FormOBJ& form);

}  // namespace tolvane::obj
