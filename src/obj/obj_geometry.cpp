#include "obj/obj_geometry.h"

#include <cmath>

#include "text/run_time_number.h"

namespace tolvane::obj {

ViewScales viewScales(const ui::FormOBJ& form) {
  ViewScales s;
  s.y = (form.viewerHeight * 15 / form.screenHeight) / (form.viewer2HeightInches / 6);
  s.x = (form.viewerWidth * 15 / form.screenWidth) / (form.viewer2WidthInches / 6);
  return s;
}

PicturePoints project(const ui::ObjVertex& v, const ViewScales& scales, int w, int h) {
  double xs = v.x * scales.x, ys = v.y * scales.y, zs = v.z * scales.y;
  double across = w / 6.0;
  PicturePoints p;
  p.front = {text::CLng(across * xs + w / 2.0), text::CLng(h - ys * scales.y)};
  p.side = {text::CLng(across * zs + w / 2.0), text::CLng(h - ys * scales.y)};
  p.top = {text::CLng(across * xs + w / 2.0), text::CLng(h / 2.0 + zs * scales.y)};
  return p;
}

ui::Vec3 scaledPoint(const ui::ObjVertex& v, const ViewScales& scales) {
  return {static_cast<float>(v.x * scales.x), static_cast<float>(v.y * scales.y),
          static_cast<float>(v.z * scales.y)};
}

ui::DrawnPicture& currentPicture(ui::FormOBJ& form) {
  if (form.currentView == 2) return form.PictureStore2;
  if (form.currentView == 3) return form.PictureStore3;
  return form.PictureStore;
}

void writeBoundLabels(ui::FormOBJ& form) {
  if (form.minX < 0) form.minX = std::fabs(form.minX);
  auto caption = [](double value) { return text::LTrim(text::StrSingle(value)); };
  form.LabelBiggestX.setCaption(
      caption(form.maxX * form.viewerWidth * 15 / form.screenWidth + form.viewerWidth / 2));
  form.LabelSmallestX.setCaption(caption(std::fabs(form.minX) * form.viewerWidth * 15 / form.screenWidth));
  form.LabelBiggestY.setCaption(caption(form.maxY * form.viewerHeight * 15 / form.screenHeight));
}

}  // namespace tolvane::obj
