#include "obj/obj_load.h"

#include <gtest/gtest.h>

#include "obj/obj_load_after.h"
#include "obj_fixture.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

class ObjLoadTest : public ObjTest {};

TEST_F(ObjLoadTest, TheDialectCaseFillsTheScratchRecordsToTheCharacter) {
  std::string obj = copy("dialect/model.obj");
  load(obj);
  ASSERT_EQ(services.messages().size(), 0u) << lastMessage();
  for (const char* name : {"FArray.txt", "VArray.txt", "VTArray.txt"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(readFile(work(name)), readFile(data(std::string("dialect/") + name)));
  }
  EXPECT_EQ(f.caption(), "OBJ Viewer " + obj);
  EXPECT_EQ(f.ListGroups.items(), linesOf(data("dialect/groups.txt")));
  EXPECT_EQ(f.ListGroupColors.items(), linesOf(data("dialect/group_colours.txt")));
  EXPECT_EQ(f.ListMaterials.items(), linesOf(data("dialect/materials.txt")));
  EXPECT_EQ(f.ListMATColors.items(), linesOf(data("dialect/material_colours.txt")));

  // Slot 0 stays empty; positive x values lose their first character.
  const float expected[][3] = {
      {0, 0, 0}, {0.5f, 0.25f, 0.125f}, {0.5f, 0.25f, 0.125f}, {-0.12f, 0, 0}, {0.1f, -0.2f, 0.3f}};
  ASSERT_EQ(f.vertexTable.size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(f.vertexTable[i].x, expected[i][0]);
    EXPECT_EQ(f.vertexTable[i].y, expected[i][1]);
    EXPECT_EQ(f.vertexTable[i].z, expected[i][2]);
  }
  EXPECT_EQ(f.maxX, 0.5f);
  EXPECT_EQ(f.minX, 0.12f);  // made positive after the load
  EXPECT_EQ(f.maxY, 0.25f);
  EXPECT_EQ(f.faceCount, 4u);
  EXPECT_EQ(f.recordCount, 6u);
  EXPECT_EQ(f.vertexCount, 4u);
  EXPECT_EQ(f.textureCount, 2u);
  EXPECT_TRUE(f.hasTextureVertices);
  // The live view's list: the first three corners of each face, scaled.
  ASSERT_EQ(f.vertexList.size(), 12u);
  EXPECT_FLOAT_EQ(f.vertexList[9].x, 0);  // "-1" reaches slot 0
  EXPECT_FLOAT_EQ(f.vertexList[10].x, static_cast<float>(0.5 * f.xScale));
  EXPECT_FLOAT_EQ(f.vertexList[10].y, static_cast<float>(0.25 * f.yScale));
  EXPECT_FLOAT_EQ(f.vertexList[10].z, static_cast<float>(0.125 * f.yScale));
  EXPECT_TRUE(f.loaded);
  EXPECT_FALSE(f.LabelWait.visible());
  EXPECT_TRUE(f.PictureStore.visible());
  EXPECT_TRUE(f.OptionShowPolys.visible());
}

TEST_F(ObjLoadTest, AReloadKeepsEachColourAndANewGroupGetsTheNextOne) {
  std::string obj = copy("dialect/model.obj");
  load(obj);
  writeFile(obj, readFile(obj) + crlf({"g arm", "f 1 2 3", "g head", "f 3 2 1"}));
  f.reload = true;
  fire("LabelView", EventKind::Click);
  Lines colours = linesOf(data("dialect/group_colours.txt"));
  colours.push_back("g arm*143 31 45");
  EXPECT_EQ(f.ListGroupColors.items(), colours);
  EXPECT_EQ(f.ListGroups.items(), (Lines{"head", "neck", "", "arm"}));
  EXPECT_EQ(f.ListMATColors.items(), linesOf(data("dialect/material_colours.txt")));
}

TEST_F(ObjLoadTest, FaultsEndTheLoadWithTheRunTimeErrorAndLeaveTheFileAndTheFormUsable) {
  struct Case {
    const char* what;
    Lines lines;
    std::string error;  // the start of the report's text
    std::size_t faceRecords;
    int beeps = 0;
  };
  const std::string longFace = "f 1 2 3" + std::string(400, ' ') + "1";
  const Case cases[] = {
      {"index past the table", {"v 0 0 0", "v 1 1 1", "f 1 2 3"}, "Run-time error '9':", 1},
      {"index -2 reaches slot -1", {"v 0 0 0", "v 1 1 1", "v 1 1 1", "f 1 -2 3"}, "Run-time error '9':", 1},
      {"trailing blank", {"v 0 0 0", "v 1 1 1", "v 1 1 1", "f 1 2 3 "}, "Run-time error '9':", 1},
      {"two corners", {"v 0 0 0", "v 1 1 1", "f 1 2"}, "Run-time error '9':", 1},
      {"face record too long", {"v 0 0 0", "g a", longFace}, "Run-time error '5':", 1, 1},
      {"vertex record too long", {"v 0 0 0" + std::string(50, '0')}, "Run-time error '5':", 0},
      {"vertex too large", {"v 0 1e300 0"}, "Run-time error '6':", 0},
      {"vertex of two fields", {"v 0 1"}, "Run-time error '5':", 0},
      {"a group line of 10 MB", {"v 0 0 0", "g " + std::string(10 << 20, 'x')}, "Run-time error '5':", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    services.clearRecords();
    std::string obj = writeObj("bad.obj", c.lines);
    std::string before = readFile(obj);
    services.answer(ui::Answer::OK);
    load(obj);
    ASSERT_EQ(services.messages().size(), 1u);
    EXPECT_EQ(services.messages()[0].text.rfind(c.error, 0), 0u) << lastMessage();
    EXPECT_EQ(services.beeps(), c.beeps);
    EXPECT_EQ(readFile(obj), before);
    EXPECT_EQ(text::fileLength(work("FArray.txt")), c.faceRecords * 400);
    EXPECT_FALSE(f.LabelWait.visible());
    EXPECT_FALSE(f.loaded);
    // The scratch files are closed: they can go at once.
    text::killFile(work("FArray.txt"));
    text::killFile(work("VArray.txt"));
  }
}

TEST_F(ObjLoadTest, FewerThanThreeRecordsShowTheMorphNoteAndItsPoints) {
  const Lines files[] = {{"v 0.1 0.5 0", "v -0.1 0.3 0", "g body"}, {}, {"v 0.1 0.5 0", "g a", "usemtl b"}};
  for (const Lines& lines : files) {
    services.clearRecords();
    if (lines.empty())
      services.expect("Sorry!", "Tolvane may not be able...", ui::Answer::Cancel);  // no CR LF in it
    services.expect("Note!", "This is a morph obj -- no faces in the file.");
    load(writeObj("morph.obj", lines));
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_FALSE(f.LabelWait.visible());
  }
  // The points are green set-pixels in the front picture.
  const ui::Raster& r = f.PictureStore.raster();
  int green = 0;
  for (int y = 0; y < r.height(); ++y)
    for (int x = 0; x < r.width(); ++x) green += r.pixel(x, y) == ui::pixelOf(0x008000);
  EXPECT_EQ(green, 1);
}

TEST_F(ObjLoadTest, ALowModelIsShownFromItsStretchedCopy) {
  std::string obj = writeObj("low.obj", {"v 0.1 0.0012 0.3", "v 0.2 0.012 0.4", "v -0.1 0.05 0.1", "g a",
                                         "f 1 2 3", "f 3 2 1", "vt 0 0"});
  std::string before = readFile(obj);
  load(obj);
  EXPECT_EQ(readFile(obj), before);
  EXPECT_EQ(readFile(work("Param.obj")),
            crlf({"v 0.1 .12 0.3", "v 0.2 .12 0.4", "v -0.1 .5 0.1", "g a", "f 1 2 3", "f 3 2 1", "vt 0 0"}));
  EXPECT_EQ(f.caption(), "OBJ Viewer " + obj);
  EXPECT_FALSE(f.useParamObj);
  EXPECT_FLOAT_EQ(f.maxY, 0.5f);
  EXPECT_EQ(readFile(work("VArray.txt")).substr(0, 14), "v 0.1 .12 0.3 ");

  // A flat model stays low after the stretch and is shown as it is.
  load(writeObj("flat.obj", {"v 0 0 0", "v 1 0 0", "v 1 0 1", "g a", "f 1 2 3", "f 3 2 1"}));
  EXPECT_TRUE(f.loaded);
  EXPECT_EQ(f.maxY, 0.0f);
}

TEST_F(ObjLoadTest, TheLiveViewListHalvesPast40000Corners) {
  Lines lines = {"v 0 1 0", "v 1 1 0", "v 1 2 0", "g a"};
  for (int i = 0; i < 14000; ++i) lines.push_back("f 1 2 3");
  load(writeObj("many.obj", lines));
  // 13,334 faces whole (the last of them starts at 39,999), then every second face.
  EXPECT_EQ(f.vertexList.size(), 3u * (13334 + (14000 - 13334) / 2));
}

TEST(ObjLoadHelpers, ExponentTextExpandsAsTheMorphViewReadsIt) {
  EXPECT_EQ(obj::expandExponent(" 1.5E-05"), "0.000001");
  EXPECT_EQ(obj::expandExponent("-2E-06"), "-0.00000");
  EXPECT_EQ(obj::expandExponent(" 1.2345E-01"), "0.012345");
}

}  // namespace
}  // namespace tolvane::test
