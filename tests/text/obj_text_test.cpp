#include "text/obj_text.h"

#include <gtest/gtest.h>

#include "test_files.h"
#include "text/run_time_random.h"
#include "text/runtime_error.h"

namespace tolvane::test {
namespace {

using text::ObjLineKind;

TEST(ObjText, TheDialectRewritesAndSortsLines) {
  struct Case {
    const char* line;
    ObjLineKind kind;
    const char* normalised;
  };
  const Case cases[] = {
      {"v 1 2 3", ObjLineKind::Vertex, "v 1 2 3"},
      {"v  1 2 3", ObjLineKind::Vertex, "v 1 2 3"},
      {" v 1 2 3", ObjLineKind::Vertex, "v 1 2 3"},
      {"  v 1 2 3", ObjLineKind::Ignored, " v 1 2 3"},  // only one blank goes
      {"\tv 1 2 3", ObjLineKind::Vertex, "v 1 2 3"},
      {"\tvt 0.5 1", ObjLineKind::TextureVertex, "vt  0.5 1"},
      {"vt 0.5 1", ObjLineKind::TextureVertex, "vt 0.5 1"},
      {"vn 0 0 1", ObjLineKind::Ignored, "vn 0 0 1"},
      {"g head", ObjLineKind::Group, "g head"},
      {"gx", ObjLineKind::Group, "gx"},
      {"usemtl skin", ObjLineKind::Material, "usemtl skin"},
      {"use", ObjLineKind::Material, "use"},
      {"fo 1 2 3", ObjLineKind::Face, "f 1 2 3"},
      {"\tf 1 2 3", ObjLineKind::Face, "f  1 2 3"},
      {"f 1 2 3", ObjLineKind::Face, "f 1 2 3"},
      {"F 1 2 3", ObjLineKind::Ignored, "F 1 2 3"},
      {"# f 1 2 3", ObjLineKind::Ignored, "# f 1 2 3"},
      {"", ObjLineKind::Ignored, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    std::string line = c.line;
    EXPECT_EQ(text::normaliseObjLine(line), c.kind);
    EXPECT_EQ(line, c.normalised);
  }
}

TEST(ObjText, TheVertexSplitKeepsItsTwoOddities) {
  struct Case {
    const char *line, *x, *y, *z;
  };
  const Case cases[] = {
      {"v 0.5 0.25 0.125", ".5", "0.25", "0.125"},
      {"v 1.5 0.25 0.125", ".5", "0.25", "0.125"},  // the first digit is dropped
      {"v -0.5 1 2", "-0.5", "1", "2"},
      {"v -.512 0 0", "-0.12", "0", "0"},  // the digit after the point is lost
      {"v 10 -1 2 3", "-1", "2", "3"},     // "-" third after the cut: x goes, fields shift
      {"v 0.1 0.2 0.3 extra", ".1", "0.2", "0.3 extra"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    text::VertexText v;
    text::splitVertexLine(c.line, v);
    EXPECT_EQ(v.x, c.x);
    EXPECT_EQ(v.y, c.y);
    EXPECT_EQ(v.z, c.z);
  }
  text::VertexText v;
  EXPECT_EQ(runTimeErrorOf([&] { text::splitVertexLine("v 0.5 1", v); }), text::kInvalidProcedureCall);
  EXPECT_EQ(runTimeErrorOf([&] { text::splitVertexLine("v 0.5", v); }), text::kInvalidProcedureCall);
}

TEST(ObjText, TextureRecordsAreSinglesInTheRunTimeText) {
  EXPECT_EQ(text::textureRecord("vt 0.5 0.25"), " .5* .25");
  EXPECT_EQ(text::textureRecord("vt  -0.125 1 0"), "-.125* 1");
  EXPECT_EQ(text::textureRecord("vt 0.00001 0.3333333333"), " 1E-05* .3333333");
  EXPECT_EQ(runTimeErrorOf([] { text::textureRecord("vt 0.5"); }), text::kInvalidProcedureCall);
  EXPECT_EQ(runTimeErrorOf([] { text::textureRecord("vt 1e300 0"); }), text::kOverflow);
}

TEST(ObjText, TheCornerWalkTakesTheVertexIndexOfEachCorner) {
  struct Case {
    const char* line;
    std::size_t positions, stored;
    std::vector<double> index;  // of the stored positions, 0 for an empty one
  };
  const Case cases[] = {
      {"f 1 2 3", 3, 3, {1, 2, 3}},
      {"f 1/4 2/5 3/6 7/8", 4, 4, {1, 2, 3, 7}},
      {"f 1/4/9 2//5 3/6/1", 3, 3, {1, 2, 3}},
      {"f -1 -5 2", 3, 3, {0, -4, 2}},
      {"f 1 2 3 ", 4, 3, {1, 2, 3}},     // a trailing blank: one more, empty corner
      {"f  4 3 2", 4, 4, {0, 4, 3, 2}},  // a leading empty corner
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    text::FaceCorners corners;
    text::walkFaceCorners(c.line, corners);
    EXPECT_EQ(corners.positions, c.positions);
    ASSERT_EQ(corners.stored, c.stored);
    for (std::size_t i = 0; i < c.stored; ++i)
      EXPECT_EQ(corners.set[i] ? corners.index[i] : 0.0, c.index[i]) << "corner " << i;
  }
}

TEST(ObjText, ACornerOutsideTheTableOrPastTheStoredOnesIsError9) {
  text::FaceCorners corners;
  text::walkFaceCorners("f 1 -2 5 ", corners);
  EXPECT_EQ(text::cornerSlot(corners, 0, 5), 1u);
  EXPECT_EQ(runTimeErrorOf([&] { text::cornerSlot(corners, 1, 5); }), text::kSubscriptOutOfRange);  // slot -1
  EXPECT_EQ(text::cornerSlot(corners, 2, 5), 5u);
  EXPECT_EQ(runTimeErrorOf([&] { text::cornerSlot(corners, 2, 4); }), text::kSubscriptOutOfRange);
  EXPECT_EQ(runTimeErrorOf([&] { text::cornerSlot(corners, 3, 5); }), text::kSubscriptOutOfRange);
}

TEST(RunTimeRandom, ReproducesTheRunTimeSequence) {
  text::RunTimeRandom random;
  // The run-time's first two numbers without a Randomize.
  EXPECT_FLOAT_EQ(random.Rnd(), 0.7055475f);
  EXPECT_FLOAT_EQ(random.Rnd(), 0.5334240f);
  // Randomize keeps the low byte, so the same seed does not repeat the numbers.
  text::RunTimeRandom seeded;
  seeded.Randomize(254);
  EXPECT_EQ(seeded.state(), 0x806F00u);
  float first = seeded.Rnd();
  seeded.Randomize(254);
  EXPECT_NE(seeded.Rnd(), first);
  text::RunTimeRandom negative;
  negative.Randomize(-1);  // the upper word of -1.0 is 0xBFF00000
  EXPECT_EQ(negative.state(), ((0x0000u ^ 0xBFF0u) << 8) | (0x50000u & 0xFF0000FFu));
}

}  // namespace
}  // namespace tolvane::test
