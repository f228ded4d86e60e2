#include "obj/obj_view.h"

#include <algorithm>
#include <cmath>

#include "obj/obj_geometry.h"
#include "obj/obj_redraw.h"
#include "program/program.h"
#include "text/runtime_error.h"

namespace tolvane::obj {

namespace {

constexpr float kFieldOfView = 3.14f / 2;
constexpr float kNear = 1.0f, kFar = 1000.0f;
constexpr float kFirstZoom = 2.0f, kFirstHeight = 2.5f;

// A step of a tenth on a value kept in tenths, so that walking down lands on 0 exactly.
float stepTenth(float value, int tenths) {
  return static_cast<float>(std::lround(value * 10.0) + tenths) / 10.0f;
}

void setCamera(ui::FormOBJ& f, float height) {
  f.renderer().setCamera({-3.0f, height, 0}, {0, height, 0}, {0, 1, 0});
}

float presentHeight(const ui::FormOBJ& f) { return f.cameraHeight == 0 ? kFirstHeight : f.cameraHeight; }

// A change made while the view stands still shows at once.
void showChange(Program& program) {
  if (!program.formOBJ.TimerRotate.enabled()) DrawFrame(program);
}

void zoomBy(Program& program, int tenths) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.zoom == 0) f.zoom = kFirstZoom;  // 0 counts as never used
  f.zoom = stepTenth(f.zoom, tenths);
  // A zoom of 0 gives no projection; the renderer keeps the last one.
  if (f.zoom != 0) f.renderer().setProjection(kNear, kFar, 3.14f / f.zoom);
  showChange(program);
}

void moveCamera(Program& program, int tenths) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.cameraHeight == 0) f.cameraHeight = kFirstHeight;
  f.cameraHeight = stepTenth(f.cameraHeight, tenths);
  setCamera(f, f.cameraHeight);
  showChange(program);
}

void changeSpeed(Program& program, int by) {
  ui::FormOBJ& f = program.formOBJ;
  f.speed = static_cast<std::int16_t>(std::max(1, f.speed + by));
  setCamera(f, presentHeight(f));
  showChange(program);
}

void space(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.PictureUVMap.setVisible(false);
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.PictureStore, &f.PictureStore2, &f.PictureStore3})
    c->setVisible(false);
  if (f.stopFlag == 0) {
    f.stopFlag = -1;
    f.PictureNewFile.setVisible(true);
    f.TimerRotate.setEnabled(false);
    return;
  }
  f.stopFlag = 0;
  f.PictureNewFile.setVisible(false);
  f.material[0] = f.material[1] = 0;
  f.material[2] = 1;
  f.renderer().setMaterial(0, 0, 1);
  f.PictureOBJViewer.setVisible(false);
  f.PictureObjViewer2.setVisible(true);
  f.TimerRotate.setEnabled(true);
}

}  // namespace

void SetUpView(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  ui::MeshRenderer& r = f.renderer();
  f.material[0] = 1;
  f.material[1] = f.material[2] = 0;
  r.setMaterial(1, 0, 0);
  setCamera(f, kFirstHeight);
  r.setProjection(kNear, kFar, kFieldOfView);
  r.setWorldRotationY(static_cast<float>(f.angle) / 360);
}

void DrawFrame(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  ui::MeshRenderer& r = f.renderer();
  r.clear(ui::kWhite);
  if (f.OptionShowPolys.value()) r.drawTriangles(f.vertexList);
  if (f.OptionShowPoints.value()) r.drawPoints(f.vertexList);
  r.present();
}

void RotateTick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.stopFlag != 0) {
    f.TimerRotate.setEnabled(false);
    return;
  }
  long long angle = static_cast<long long>(f.angle) + f.speed;
  if (angle > INT32_MAX) text::raiseError(text::kOverflow);
  f.angle = static_cast<std::int32_t>(angle);
  ui::MeshRenderer& r = f.renderer();
  r.clear(ui::kWhite);
  if (f.OptionShowPolys.value()) r.drawTriangles(f.vertexList);
  if (f.OptionShowPoints.value()) r.drawPoints(f.vertexList);
  r.setWorldRotationY(static_cast<float>(f.angle) / 360);
  r.present();
}

void FormOBJKey(Program& program, int code) {
  ui::FormOBJ& f = program.formOBJ;
  if (code != 27 && code != 114 && (f.secondaryHeld || f.LabelWait.visible())) return;
  switch (code) {
    case 27:
      f.drawingHidden = !f.drawingHidden;
      return;
    case 114:
      return RefreshOBJ(program);
    case 32:
      return space(program);
    case 47:
      return zoomBy(program, -1);
    case 42:
      return zoomBy(program, 1);
    case 43:
      return moveCamera(program, -1);  // "+" lowers the camera: the model moves up
    case 45:
      return moveCamera(program, 1);
    case 57:
      return changeSpeed(program, 1);
    case 51:
      return changeSpeed(program, -1);
    default:
      return;  // 8 2 4 6 5 f s t and the rest are taken and ignored
  }
}

void ViewOptionClick(Program& program, int view) {
  ui::FormOBJ& f = program.formOBJ;
  f.currentView = view;
  ui::DrawnPicture* stills[] = {&f.PictureStore, &f.PictureStore2, &f.PictureStore3};
  ui::DrawnPicture* added[] = {&f.PictureAddObjFront, &f.PictureAddObjSide, &f.PictureAddObjTop};
  for (int i = 0; i < 3; ++i) {
    stills[i]->setVisible(i + 1 == view);
    if (f.secondaryHeld) added[i]->setVisible(i + 1 == view);
  }
}

void ColourOptionClick(Program& program) {
  program.formOBJ.PictureLop.setVisible(false);
  program.formOBJ.PicturePhiLopper.setVisible(false);
}

void LabelBossClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.PictureZoom, &f.PictureOBJViewer, &f.PictureObjViewer2})
    c->setVisible(false);
  f.ImageBoss.setVisible(true);
  f.ImageRDS.setVisible(true);
  f.LabelBoss.setCaption("Render");
  f.LabelPlay.setCaption("Mesh");
}

void LabelPlayClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.ImageBoss.setVisible(false);
  f.ImageRDS.setVisible(false);
  f.LabelBoss.setCaption("Boss Button");
  f.LabelPlay.setCaption("PLAY");
  f.PictureZoom.setVisible(true);
  if (f.zoomX1 > f.zoomX2) std::swap(f.zoomX1, f.zoomX2);
  if (f.zoomY1 > f.zoomY2) std::swap(f.zoomY1, f.zoomY2);
  drawZoomArea(f);
}

void StillPicturePress(Program& program, const EventArgs& args) {
  ui::FormOBJ& f = program.formOBJ;
  if (args.button != 1) return;
  f.zoomX1 = f.zoomX2 = static_cast<int>(args.x);
  f.zoomY1 = f.zoomY2 = static_cast<int>(args.y);
  f.zoomDragging = true;
}

// The box is inverted at the old corners, which takes it away, then at the new ones.
void StillPictureMove(Program& program, const EventArgs& args) {
  ui::FormOBJ& f = program.formOBJ;
  if (!f.zoomDragging || args.button != 1) {
    f.zoomDragging = false;
    return;
  }
  ui::DrawnPicture& picture = currentPicture(f);
  invertBox(picture, f.zoomX1, f.zoomY1, f.zoomX2, f.zoomY2);
  f.zoomX2 = static_cast<int>(args.x);
  f.zoomY2 = static_cast<int>(args.y);
  invertBox(picture, f.zoomX1, f.zoomY1, f.zoomX2, f.zoomY2);
  picture.refresh();
}

void FormOBJRightRelease(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.PictureObjViewer2.setVisible(false);
  f.PictureOBJViewer.setVisible(false);
  f.PictureNoDX.setVisible(true);
  PreviewOBJ(program);
}

}  // namespace tolvane::obj
