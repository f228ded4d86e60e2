#include <gtest/gtest.h>

#include "obj_fixture.h"

namespace tolvane::test {
namespace {

int countOf(const ui::Raster& r, std::uint32_t pixel) {
  int n = 0;
  for (int y = 0; y < r.height(); ++y)
    for (int x = 0; x < r.width(); ++x) n += r.pixel(x, y) == pixel;
  return n;
}

class ObjViewTest : public ObjTest {
 protected:
  // A square across the camera's line of sight, which looks along x.
  void SetUp() override {
    load(writeObj("square.obj", {"v 0 0.1 -0.2", "v 0 0.1 0.2", "v 0 0.5 0.2", "v 0 0.5 -0.2", "g square",
                                 "usemtl plain", "f 1 2 3", "f 1 3 4"}));
    ASSERT_TRUE(f.loaded) << lastMessage();
  }
  void tick(int times = 1) {
    for (int i = 0; i < times; ++i) fire("TimerRotate", EventKind::Timer);
  }
  int blue() const { return countOf(f.PictureObjViewer2.raster(), ui::pixelOf(0xFF0000)); }
};

TEST_F(ObjViewTest, SpaceTwiceAfterALoadStartsTheRotationAndOnceMoreStopsIt) {
  key(32);  // the stop flag is 0 after a load: the first Space stops a rotation not running
  EXPECT_EQ(f.stopFlag, -1);
  EXPECT_FALSE(f.TimerRotate.enabled());
  EXPECT_TRUE(f.PictureNewFile.visible());
  key(32);
  EXPECT_TRUE(f.TimerRotate.enabled());
  EXPECT_FALSE(f.PictureNewFile.visible());
  EXPECT_TRUE(f.PictureObjViewer2.visible());
  EXPECT_FALSE(f.PictureStore.visible());
  EXPECT_EQ(f.material[2], 1.0f);
  tick(3);
  EXPECT_EQ(f.angle, 3);
  EXPECT_GT(blue(), 0);  // drawn in the material's blue
  key(32);
  tick();
  EXPECT_FALSE(f.TimerRotate.enabled());
  EXPECT_EQ(f.angle, 3);
}

TEST_F(ObjViewTest, TheKeyTableChangesSpeedZoomAndCamera) {
  key(51);  // "3" at speed 1
  EXPECT_EQ(f.speed, 1);
  key(57);
  key(57);
  EXPECT_EQ(f.speed, 3);
  for (int code : {56, 50, 52, 54, 53, 102, 115, 116}) key(code);
  EXPECT_EQ(f.speed, 3);
  EXPECT_EQ(f.zoom, 0.0f);
  EXPECT_EQ(f.cameraHeight, 0.0f);
  // Zoom starts at 2.0 when first used; walked down to 0 it counts as never used.
  for (int i = 0; i < 20; ++i) key(47);
  EXPECT_EQ(f.zoom, 0.0f);
  key(47);
  EXPECT_FLOAT_EQ(f.zoom, 1.9f);
  key(42);
  EXPECT_FLOAT_EQ(f.zoom, 2.0f);
  // "+" lowers the camera; a height walked to 0 starts again at 2.5.
  for (int i = 0; i < 25; ++i) key(43);
  EXPECT_EQ(f.cameraHeight, 0.0f);
  key(45);
  EXPECT_FLOAT_EQ(f.cameraHeight, 2.6f);
  // A change while the view stands still draws one frame at once, in the last group's
  // colour.
  const ui::Raster& frame = f.PictureObjViewer2.raster();
  EXPECT_LT(countOf(frame, ui::pixelOf(ui::kWhite)), frame.width() * frame.height());
  // ESC toggles the hidden drawing; while a secondary mesh is held only ESC and "r" act.
  key(27);
  EXPECT_TRUE(f.drawingHidden);
  f.secondaryHeld = true;
  key(57);
  EXPECT_EQ(f.speed, 3);
  key(27);
  EXPECT_FALSE(f.drawingHidden);
}

TEST_F(ObjViewTest, WithNeitherPolygonsNorPointsTheRotatingFrameStaysWhite) {
  f.OptionShowPolys.setValue(false);
  f.OptionShowPoints.setValue(false);
  key(32);
  key(32);
  tick(2);
  const ui::Raster& r = f.PictureObjViewer2.raster();
  EXPECT_EQ(countOf(r, ui::pixelOf(ui::kWhite)), r.width() * r.height());
  f.OptionShowPoints.setValue(true);
  tick();
  EXPECT_GT(blue(), 0);
  EXPECT_LE(blue(), 6);  // the first three corners of each of the two faces
}

TEST_F(ObjViewTest, TheBossButtonCoversTheViewAndPlayDrawsTheZoomedArea) {
  fire("LabelBoss", EventKind::Click);
  EXPECT_TRUE(f.ImageBoss.visible());
  EXPECT_FALSE(f.PictureZoom.visible());
  EXPECT_EQ(f.LabelBoss.caption(), "Render");
  EXPECT_EQ(f.LabelPlay.caption(), "Mesh");
  // A box dragged from right to left in the still picture.
  EventArgs a;
  a.x = 300, a.y = 470;
  fire("PictureStore", EventKind::Press, a);
  a.x = 200, a.y = 420;
  fire("PictureStore", EventKind::MouseMove, a);
  a.x = 150, a.y = 400;
  fire("PictureStore", EventKind::MouseMove, a);
  fire("LabelPlay", EventKind::Click);
  EXPECT_EQ(f.LabelBoss.caption(), "Boss Button");
  EXPECT_EQ(f.LabelPlay.caption(), "PLAY");
  EXPECT_FALSE(f.ImageBoss.visible());
  EXPECT_TRUE(f.PictureZoom.visible());
  EXPECT_EQ(f.zoomX1, 150);
  EXPECT_EQ(f.zoomX2, 300);
  EXPECT_EQ(f.zoomY1, 400);
  const ui::Raster& zoom = f.PictureZoom.raster();
  EXPECT_LT(countOf(zoom, ui::pixelOf(ui::kWhite)), zoom.width() * zoom.height());
}

TEST_F(ObjViewTest, ARightReleaseDrawsEveryFaceWholeInThePreview) {
  fire("FormOBJ", EventKind::RightRelease);
  EXPECT_TRUE(f.PictureNoDX.visible());
  EXPECT_FALSE(f.PictureOBJViewer.visible());
  const ui::Raster& r = f.PictureNoDX.raster();
  EXPECT_LT(countOf(r, ui::pixelOf(ui::kWhite)), r.width() * r.height());
}

}  // namespace
}  // namespace tolvane::test
