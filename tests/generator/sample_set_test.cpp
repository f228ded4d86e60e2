#include <gtest/gtest.h>

#include <set>

#include "core/figure_text.h"
#include "core/line_reader.h"
#include "figure_facts.h"
#include "generator/generator.h"
#include "support/test_support.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using gen::SampleSet;

std::set<std::string> filesUnder(const fs::path& root) {
  std::set<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(root))
    if (entry.is_regular_file()) files.insert(fs::relative(entry.path(), root).generic_string());
  files.erase("README.md");
  return files;
}

bool isText(const std::string& relative) { return relative.substr(relative.size() - 4) != ".bmp"; }

std::vector<std::string> standardParts() {
  std::vector<std::string> parts = {"hip", "abdomen", "chest", "neck", "head"};
  for (const char* side : {"l", "r"}) {
    for (const char* p : {"Collar", "Shldr", "ForeArm", "Hand", "Thigh", "Shin", "Foot", "Toe"})
      parts.push_back(std::string(side) + p);
    for (const char* finger : {"Thumb", "Index", "Mid", "Ring", "Pinky"})
      for (int seg = 1; seg <= 3; ++seg) parts.push_back(std::string(side) + finger + std::to_string(seg));
  }
  return parts;
}

class SampleSetTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_dir = new TempDir;
    gen::writeSampleSet(s_dir->path());
  }
  static void TearDownTestSuite() {
    delete s_dir;
    s_dir = nullptr;
  }
  static fs::path path(const char* relative) { return s_dir->path() / relative; }
  static TempDir* s_dir;
};
TempDir* SampleSetTest::s_dir = nullptr;

TEST_F(SampleSetTest, MatchesTheCommittedSamplesByteForByte) {
  const fs::path committed = TOLVANE_SAMPLES;
  ASSERT_TRUE(fs::exists(committed));
  std::set<std::string> made = filesUnder(s_dir->path());
  EXPECT_EQ(made, filesUnder(committed)) << "regenerate samples/ with tolvane-generate samples samples";
  for (const auto& relative : made) {
    SCOPED_TRACE(relative);
    if (!fs::exists(committed / relative)) continue;
    if (isText(relative)) {
      EXPECT_EQ(firstDifference(s_dir->path() / relative, committed / relative), "");
    }
    EXPECT_TRUE(readFile(s_dir->path() / relative) == readFile(committed / relative));
  }
}

TEST_F(SampleSetTest, EveryTextFileHasCrLfAndBalancedBraces) {
  for (const auto& relative : filesUnder(s_dir->path())) {
    if (!isText(relative)) continue;
    SCOPED_TRACE(relative);
    EXPECT_TRUE(crlfEverywhere(readFile(s_dir->path() / relative)));
    std::string kind = core::FileKind(relative);
    if (kind == "obj" || kind == "mtl") continue;
    FigureFacts facts = gatherFacts(s_dir->path() / relative);
    EXPECT_EQ(facts.lowestDepth, 0);
    EXPECT_EQ(facts.finalDepth, 0);
    EXPECT_EQ(facts.problems, std::vector<std::string>{});
  }
}

// Each part of each figure: a declaration (tab-only line for BODY, storageOffset for
// the others) and a definition whose line after the brace is empty.
void expectTwoHeaders(const FigureFacts& facts, int figure) {
  std::vector<std::string> parts = standardParts();
  parts.push_back("BODY");
  for (const auto& part : parts) {
    std::string header = "actor " + part + ":" + std::to_string(figure);
    SCOPED_TRACE(header);
    auto after = facts.afterBrace.find(header);
    ASSERT_NE(after, facts.afterBrace.end());
    ASSERT_EQ(after->second.size(), 2u);
    EXPECT_EQ(after->second[0], part == "BODY" ? "\t" : "\tstorageOffset 0 0 0");
    EXPECT_EQ(after->second[1], "");
  }
}

TEST_F(SampleSetTest, FigureHasEachPartTwiceAndTheFiguresSections) {
  FigureFacts facts = gatherFacts(path(SampleSet::kFigure));
  expectTwoHeaders(facts, 1);
  EXPECT_EQ(facts.actorHeaders.size(), standardParts().size() + 1);
  EXPECT_EQ(facts.figureResFiles, 2);
  EXPECT_EQ(facts.propHeaders["prop Earrings:1"], 2);
  EXPECT_EQ(facts.propHeaders["prop Bangle:1"], 2);
  EXPECT_GE(facts.controlBlocks, 3);
  EXPECT_GE(facts.targetGeoms, 15);
  EXPECT_GT(facts.deltaLines, 50);
}

TEST_F(SampleSetTest, SceneHoldsTwoFiguresAndTheSceneObjects) {
  FigureFacts facts = gatherFacts(path(SampleSet::kScene));
  expectTwoHeaders(facts, 1);
  expectTwoHeaders(facts, 2);
  EXPECT_EQ(facts.figureResFiles, 4);
  EXPECT_EQ(facts.actorHeaders["actor UNIVERSE"], 1);
  EXPECT_EQ(facts.propHeaders["prop GROUND"], 2);
  std::string text = readFile(path(SampleSet::kScene));
  for (const char* line : {"\r\nlight LIGHT_1\r\n", "\r\ncamera MAIN_CAMERA\r\n", "\r\ndoc\r\n",
                           "\r\nmovie\r\n", "\t\t\tFigure 2\r\n\t\t\tBODY:2\r\n", "name    Figure 2\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
}

// Every Poser path in the set names a file of the set, and every usemtl of the OBJ a
// material of the figure.
TEST_F(SampleSetTest, PathsAndMaterialsResolve) {
  std::set<std::string> materials;
  core::LineReader figure(path(SampleSet::kFigure));
  std::string line;
  while (figure.readRawLine(line))
    if (core::hasPrefix(line, "\tmaterial ")) materials.insert(line.substr(10));
  core::LineReader obj(path(SampleSet::kObj));
  std::set<std::string> groups;
  while (obj.readRawLine(line)) {
    if (core::hasPrefix(line, "usemtl ")) {
      EXPECT_TRUE(materials.count(line.substr(7))) << line;
    }
    if (core::hasPrefix(line, "g ")) groups.insert(line.substr(2));
  }
  for (const auto& part : standardParts()) EXPECT_TRUE(groups.count(part)) << part;
  for (const auto& relative : filesUnder(s_dir->path())) {
    if (!isText(relative)) continue;
    core::LineReader in(s_dir->path() / relative);
    while (in.readRawLine(line)) {
      std::size_t at = line.find(":Runtime:");
      if (at == std::string::npos) continue;
      std::string poser = line.substr(at, line.find('"', at) - at);
      std::string native = core::Replace(poser.substr(1), ":", "/");
      EXPECT_TRUE(fs::exists(s_dir->path() / native)) << relative << ": " << line;
    }
  }
}

TEST_F(SampleSetTest, TexturesAreBitmapsOfTheirStatedSize) {
  for (const char* name : SampleSet::kTextures) {
    SCOPED_TRACE(name);
    std::string bytes = readFile(s_dir->path() / SampleSet::kTextureFolder / name);
    ASSERT_GT(bytes.size(), 54u);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    auto u32 = [&bytes](std::size_t at) {
      return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) |
             static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8 |
             static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 2])) << 16;
    };
    EXPECT_EQ(u32(2), bytes.size());
    EXPECT_EQ(u32(10) + u32(18) * u32(22) * 3, bytes.size());  // 32 pixels: rows need no padding
  }
}

}  // namespace
}  // namespace tolvane::test
