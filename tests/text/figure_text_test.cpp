#include "text/figure_text.h"

#include <gtest/gtest.h>

#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "test_files.h"

namespace tolvane::text {
namespace {

TEST(RunTimeNumber, SingleAndDoubleText) {
  struct Case {
    double value;
    const char* single;
    const char* dbl;
  } cases[] = {
      {0, " 0", " 0"},
      {1, " 1", " 1"},
      {-1, "-1", "-1"},
      {0.5, " .5", " .5"},
      {-0.25, "-.25", "-.25"},
      {112, " 112", " 112"},
      {0.1, " .1", " .1"},
      {1.0 / 3.0, " .3333333", " .333333333333333"},
      {0.0001, " .0001", " .0001"},
      {0.00001, " 1E-05", " 1E-05"},
      {-0.0000123, "-1.23E-05", "-1.23E-05"},
      {1234567, " 1234567", " 1234567"},
      {12345678, " 1.234568E+07", " 12345678"},
      {1e15, " 1E+15", " 1E+15"},
      {123456789012345.0, " 1.234568E+14", " 123456789012345"},
      {0.156863 * 256, " 40.15693", " 40.156928"},
      {255.99999999, " 256", " 255.99999999"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.value);
    EXPECT_EQ(StrSingle(c.value), c.single);
    EXPECT_EQ(StrDouble(c.value), c.dbl);
  }
  EXPECT_EQ(StrInteger(112), " 112");
  EXPECT_EQ(StrInteger(-3), "-3");
}

TEST(RunTimeNumber, ValTakesTheLongestNumericPrefix) {
  struct Case {
    const char* text;
    double value;
  } cases[] = {
      {"1 1 1", 1},  {"  0.5 0.2", 0.5}, {"\t-2.5x", -2.5}, {"abc", 0}, {"", 0},      {".25", 0.25},
      {"1e3", 1000}, {"1E", 1},          {"-", 0},          {"3.", 3},  {"1D2", 100},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_DOUBLE_EQ(Val(c.text), c.value);
  }
}

// Padded records lose their blanks a word at a time: lengths either side of the word
// and block edges, blanks inside the text, and a tab, which is no blank.
TEST(RunTimeNumber, TrailingBlanksGoAcrossWordEdges) {
  struct Case {
    std::string text;
    std::string trimmed;
  } cases[] = {
      {"", ""},
      {std::string(400, ' '), ""},
      {"f 1 2 3" + std::string(393, ' '), "f 1 2 3"},
      {"f 1  2" + std::string(32, ' '), "f 1  2"},
      {std::string(31, 'x') + " " + std::string(8, ' '), std::string(31, 'x')},
      {std::string(9, 'y') + std::string(7, ' '), std::string(9, 'y')},
      {std::string(40, ' ') + "z" + std::string(33, ' '), std::string(40, ' ') + "z"},
      {"v 1 2\t" + std::string(16, ' '), "v 1 2\t"},
      {"  lead", "  lead"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text.size());
    EXPECT_EQ(RTrim(c.text), c.trimmed);
    EXPECT_EQ(Trim(c.text), LTrim(c.trimmed));
  }
}

TEST(FigureText, MatchFormsAndRecognisers) {
  EXPECT_TRUE(hasPrefix("actor hip:1", "actor"));
  EXPECT_FALSE(hasPrefix("\tactor hip:1", "actor"));  // raw lines match only at depth 0
  EXPECT_TRUE(contains("\t\tname hip", "name"));
  EXPECT_TRUE(contains("\t\ttargetGeom nameless", "name"));  // contains fires on any four letters
  EXPECT_EQ(charAt("\t\t\t\td 1 0 0 0", 5), 'd');
  EXPECT_TRUE(IsActorHeader("actor lHand:1"));
  EXPECT_TRUE(IsPropHeader("propx"));
  EXPECT_EQ(ActorName("actor lHand:1"), "lHand:1");
  EXPECT_EQ(FigureNumber("actor lHand:2"), '2');
  // The whole header tells a part from one whose name begins with it.
  EXPECT_FALSE(isExact("actor lHand2:1", "actor lHand:1"));
  EXPECT_FALSE(isExact("actor lHand", "actor lHand:1"));
}

TEST(FigureText, PoserPathForms) {
  EXPECT_EQ(ToPoserPath("C:\\Poser\\Runtime\\Geometries\\Ava\\ava.obj"), "Runtime:Geometries:Ava:ava.obj");
  EXPECT_EQ(ToPoserPath("/opt/poser/Runtime/textures/a.tif"), "Runtime:textures:a.tif");
  EXPECT_EQ(test::runTimeErrorOf([] { ToPoserPath("C:\\elsewhere\\ava.obj"); }), kInvalidProcedureCall);
  test::TempDir dir;
  test::writeFile(dir / "Runtime/Geometries/Ava/ava.obj", "v 0 0 0\r\n");
  std::string ploc = dir.path().string() + "/";
  EXPECT_EQ(FromPoserPath(":Runtime:Geometries:Ava:ava.obj", ploc), dir / "Runtime/Geometries/Ava/ava.obj");
  // Poser paths are case-blind; this file system is not.
  EXPECT_EQ(FromPoserPath(":runtime:geometries:AVA:Ava.OBJ", ploc), dir / "Runtime/Geometries/Ava/ava.obj");
}

TEST(FigureText, OneBasedStringHelpers) {
  EXPECT_EQ(Mid("targetGeom x", 12), "x");
  EXPECT_EQ(Mid("abc", 5), "");
  EXPECT_EQ(Mid("abcdef", 2, 3), "bcd");
  EXPECT_THROW(Mid("abc", 0), RuntimeError);
  EXPECT_EQ(Left("abc", 5), "abc");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_THROW(Left("abc", -1), RuntimeError);
  EXPECT_EQ(InStr("a.b.c", "."), 2u);
  EXPECT_EQ(InStr("a.b.c", ".", 3), 4u);
  EXPECT_EQ(InStr("abc", "x"), 0u);
  EXPECT_EQ(Replace("a\\b\\c", "\\", ":"), "a:b:c");
  EXPECT_EQ(workFile("/w", "\\Reorder.cr2"), std::filesystem::path("/w/Reorder.cr2"));
}

}  // namespace
}  // namespace tolvane::text
