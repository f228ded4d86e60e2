#include <gtest/gtest.h>

#include "obj/obj_geometry.h"
#include "obj_fixture.h"

namespace tolvane::test {
namespace {

using ui::Colour;

int countOf(const ui::Raster& r, Colour c) {
  int n = 0;
  for (int y = 0; y < r.height(); ++y)
    for (int x = 0; x < r.width(); ++x) n += r.pixel(x, y) == ui::pixelOf(c);
  return n;
}

TEST(ObjProjection, YAndZGoDownByTheYScaleTwice) {
  obj::ViewScales s{2, 3};
  obj::PicturePoints p = obj::project({0.5f, 1.0f, 0.25f}, s, 60, 90);
  // Across: w/6 per scaled unit from the middle; down: the y scale once more.
  EXPECT_EQ(p.front.x, 10 * 1 + 30);
  EXPECT_EQ(p.front.y, 90 - 9);
  EXPECT_EQ(p.side.x, 10 * 0.75 + 30 + 0.5);  // 37.5 rounds to the even 38
  EXPECT_EQ(p.side.y, 90 - 9);
  EXPECT_EQ(p.top.x, 40);
  EXPECT_EQ(p.top.y, 45 + 2);  // 2.25 rounds to 2
}

class ObjPicturesTest : public ObjTest {};

TEST_F(ObjPicturesTest, ATriangleDrawsAsALineAndAQuadAsTheTriangleOfItsLastCorners) {
  // Corner 1 stands far to the left of the three others.
  Lines mesh = {"v -0.3 0.6 0", "v 0.01 0.1 0", "v 0.04 0.1 0", "v 0.04 0.6 0", "g body", "usemtl plain"};
  load(writeObj("triangle.obj", {mesh[0], mesh[1], mesh[2], mesh[3], mesh[4], mesh[5], "f 1 2 3"}));
  const ui::Raster& front = f.PictureStore.raster();
  Colour fill = f.PictureStore.fillColor();
  EXPECT_EQ(countOf(front, fill), 0);
  EXPECT_GT(countOf(front, ui::kBlack), 0);
  obj::PicturePoints far = obj::project(f.vertexTable[1], {f.xScale, f.yScale}, 480, 480);
  EXPECT_EQ(front.pixel(far.front.x, far.front.y), ui::pixelOf(ui::kWhite));

  load(writeObj("quad.obj", {mesh[0], mesh[1], mesh[2], mesh[3], mesh[4], mesh[5], "f 1 2 3 4"}));
  EXPECT_GT(countOf(f.PictureStore.raster(), f.PictureStore.fillColor()), 0);
  EXPECT_EQ(f.PictureStore.raster().pixel(far.front.x, far.front.y), ui::pixelOf(ui::kWhite));
  // The live view takes the first three corners instead.
  ASSERT_EQ(f.vertexList.size(), 3u);
  EXPECT_FLOAT_EQ(f.vertexList[0].x, static_cast<float>(-0.3 * f.xScale));
}

TEST_F(ObjPicturesTest, NoColoursFillsTheFrontPictureBlueAndTheViewOptionPicksThePicture) {
  f.OptionNoColors.setValue(true);
  f.OptionTopView.setValue(true);
  load(writeObj("quad.obj", {"v 0 0.1 0", "v 0.01 0.1 0.2", "v 0.04 0.6 0.2", "v 0.08 0.6 0", "g body",
                             "usemtl plain", "f 1 2 3 4"}));
  EXPECT_EQ(f.PictureStore.fillColor(), 0x800000u);
  EXPECT_GT(countOf(f.PictureStore.raster(), 0x800000), 0);
  EXPECT_EQ(f.currentView, 3);
  EXPECT_TRUE(f.PictureStore3.visible());
  EXPECT_FALSE(f.PictureLop.visible());  // shown only when groups are coloured

  f.OptionSideView.setValue(true);
  fire("OptionSideView", EventKind::Click);
  EXPECT_TRUE(f.PictureStore2.visible());
  EXPECT_FALSE(f.PictureStore3.visible());
  // "R" draws the side picture afresh from the file.
  f.PictureStore2.Cls();
  key(114);
  EXPECT_GT(countOf(f.PictureStore2.raster(), ui::kBlack), 0);
}

}  // namespace
}  // namespace tolvane::test
