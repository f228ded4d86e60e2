#include "ui/raster.h"

#include <gtest/gtest.h>

#include <cmath>

#include "ui/mesh_renderer.h"

namespace tolvane::test {
namespace {

using ui::PicturePoint;

int count(const ui::Raster& r, ui::Colour c) {
  int n = 0;
  for (int y = 0; y < r.height(); ++y)
    for (int x = 0; x < r.width(); ++x) n += r.pixel(x, y) == ui::pixelOf(c);
  return n;
}

TEST(SoftwarePainter, PolygonsFillInsideTheOutlineAndTwoPointsDrawALine) {
  ui::Raster r(20, 20);
  auto painter = ui::softwarePainter(r);
  const PicturePoint square[] = {{2, 2}, {12, 2}, {12, 12}, {2, 12}};
  painter->polygon(square, 4, 0x0000FF, 0x000000);
  EXPECT_EQ(count(r, 0x000000), 40);     // the outline: 11 x 11 less the 9 x 9 inside
  EXPECT_EQ(count(r, 0x0000FF), 9 * 9);  // the inside in the fill colour
  EXPECT_EQ(r.pixel(7, 7), ui::pixelOf(0x0000FF));

  r.fill(ui::pixelOf(ui::kWhite));
  const PicturePoint line[] = {{0, 0}, {5, 10}};
  painter->polygon(line, 2, 0x0000FF, 0x000000);
  EXPECT_EQ(count(r, 0x0000FF), 0);
  EXPECT_EQ(count(r, 0x000000), 11);
  EXPECT_EQ(r.pixel(5, 10), ui::pixelOf(0x000000));
  const PicturePoint one[] = {{3, 3}};
  painter->polygon(one, 1, 0x0000FF, 0x00FF00);
  EXPECT_EQ(count(r, 0x00FF00), 0);
}

TEST(SoftwarePainter, FarCoordinatesAreClippedNotWalked) {
  ui::Raster r(10, 10);
  auto painter = ui::softwarePainter(r);
  painter->line({-2000000000, 5}, {2000000000, 5}, 0x000000);
  EXPECT_EQ(count(r, 0x000000), 10);
  const PicturePoint huge[] = {{-2000000000, -2000000000}, {2000000000, -2000000000}, {0, 2000000000}};
  painter->polygon(huge, 3, 0xFF0000, 0x000000);
  EXPECT_GT(count(r, 0xFF0000), 50);
}

ui::VertexList listOf(std::initializer_list<ui::Vec3> points) {
  ui::VertexList list;
  for (const ui::Vec3& p : points) list.push_back(p);
  return list;
}

TEST(SoftwareMeshRenderer, DrawsWhatIsInFrontOfTheCameraInTheMaterialColour) {
  ui::Raster r(100, 100);
  int presented = 0;
  auto renderer = ui::softwareMeshRenderer(r, [&] { ++presented; });
  renderer->setCamera({-3, 0, 0}, {0, 0, 0}, {0, 1, 0});
  renderer->setProjection(1, 1000, 3.14f / 2);
  renderer->setMaterial(0, 0, 1);
  renderer->clear(ui::kWhite);
  // A triangle across the view at the origin, either winding: nothing is culled.
  renderer->drawTriangles(listOf({{0, -1, -1}, {0, 1, 0}, {0, -1, 1}, {0, -1, 1}, {0, 1, 0}, {0, -1, -1}}));
  renderer->present();
  EXPECT_EQ(presented, 1);
  int blue = count(r, 0xFF0000);
  EXPECT_GT(blue, 500);
  EXPECT_EQ(r.pixel(50, 50), ui::pixelOf(0xFF0000));
  // Behind the camera it is gone; a point in front is one pixel.
  renderer->clear(ui::kWhite);
  renderer->drawTriangles(listOf({{-5, -1, -1}, {-5, 1, 0}, {-5, -1, 1}}));
  EXPECT_EQ(count(r, 0xFF0000), 0);
  renderer->drawPoints(listOf({{0, 0, 0}, {-5, 0, 0}}));
  EXPECT_EQ(count(r, 0xFF0000), 1);
}

}  // namespace
}  // namespace tolvane::test
