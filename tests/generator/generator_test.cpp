// The generator's output: the demo sample set, written byte for byte as committed, and
// the large figure of the benchmarks. Both are checked by their structure: header
// counts, brace depth, line endings, the lines that follow the opening brace of each
// actor block, and delta and control-block shape, gathered in one pass per file.
#include "generator/generator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "support/test_support.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using gen::SampleSet;

struct FigureFacts {
  std::map<std::string, int> actorHeaders;  // "actor hip:1" -> occurrences
  std::map<std::string, int> propHeaders;
  int figureResFiles = 0;
  int lowestDepth = 0;  // brace depth never below this
  int finalDepth = 0;
  int targetGeoms = 0;
  int controlBlocks = 0;
  int deltaLines = 0;
  // Line after "{" of each actor block, in file order, per header.
  std::map<std::string, std::vector<std::string>> afterBrace;
  std::vector<std::string> problems;  // shapes a broken writer would produce
};

FigureFacts gatherFacts(const std::filesystem::path& file) {
  auto trimmed = [](const std::string& line) {
    std::size_t start = line.find_first_not_of("\t ");
    return start == std::string::npos ? std::string() : line.substr(start);
  };
  FigureFacts facts;
  text::LineReader in(file);
  std::string line, next;
  int depth = 0;
  while (in.readRawLine(line)) {
    std::string text = trimmed(line);
    if (text == "{") ++depth;
    if (text == "}") --depth;
    facts.lowestDepth = std::min(facts.lowestDepth, depth);
    if (text::hasPrefix(line, "figureResFile ")) ++facts.figureResFiles;
    if (text::hasPrefix(line, "\t\ttargetGeom ")) ++facts.targetGeoms;
    if (text::contains(line, "valueOpDeltaAdd")) {
      // The four lines behind it, the last deltaAddDelta, all at three tabs.
      std::vector<std::string> block;
      for (int i = 0; i < 4 && in.readRawLine(next); ++i) block.push_back(next);
      if (block.size() != 4 || !text::hasPrefix(block[3], "\t\t\tdeltaAddDelta "))
        facts.problems.push_back("control block without its deltaAddDelta line");
      for (const auto& l : block)
        if (!text::hasPrefix(l, "\t\t\t") || l[3] == '\t')
          facts.problems.push_back("control line not at three tabs: " + l);
      ++facts.controlBlocks;
    }
    if (text.rfind("d ", 0) == 0) {
      ++facts.deltaLines;
      if (text::charAt(line, 5) != 'd' || line.rfind("\t\t\t\td ", 0) != 0)
        facts.problems.push_back("delta line not at four tabs: " + line);
    }
    if (text::hasPrefix(line, "prop ")) ++facts.propHeaders[line];
    if (!text::hasPrefix(line, "actor ")) continue;
    ++facts.actorHeaders[line];
    if (!in.readRawLine(next) || next != "\t{") facts.problems.push_back("no brace behind " + line);
    ++depth;
    if (in.readRawLine(next)) facts.afterBrace[line].push_back(next);
    if (trimmed(next) == "}") --depth;
  }
  facts.finalDepth = depth;
  return facts;
}

// True when every line feed has a carriage return before it and every carriage
// return a line feed after it, and the file ends with a line ending.
bool crlfEverywhere(const std::string& bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) return false;
    if (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n')) return false;
  }
  return bytes.size() >= 2 && bytes.compare(bytes.size() - 2, 2, "\r\n") == 0;
}

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

// The set is written once, for all tests of this file.
const fs::path& made() {
  static struct Made {
    TempDir dir;
    Made() { gen::writeSampleSet(dir.path()); }
  } set;
  return set.dir.path();
}

// The committed samples are what the generator writes; every bitmap has its stated size,
// every text file CR LF line endings and balanced braces, and every Poser path in it
// names a file of the set.
TEST(SampleSet, MatchesTheCommittedSamplesAndIsWellFormed) {
  const fs::path committed = TOLVANE_SAMPLES;
  ASSERT_TRUE(fs::exists(committed));
  std::set<std::string> files = filesUnder(made());
  EXPECT_EQ(files, filesUnder(committed)) << "regenerate samples/ with tolvane-generate samples samples";
  for (const auto& relative : files) {
    SCOPED_TRACE(relative);
    std::string bytes = readFile(made() / relative);
    if (fs::exists(committed / relative)) {
      EXPECT_TRUE(bytes == readFile(committed / relative))
          << firstDifference(made() / relative, committed / relative);
    }
    if (!isText(relative)) {  // a bitmap of its stated size
      ASSERT_GT(bytes.size(), 54u);
      EXPECT_EQ(bytes.substr(0, 2), "BM");
      auto u32 = [&bytes](std::size_t at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) |
               static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8 |
               static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 2])) << 16;
      };
      EXPECT_EQ(u32(2), bytes.size());
      EXPECT_EQ(u32(10) + u32(18) * u32(22) * 3, bytes.size());  // 32 pixels: rows need no padding
      continue;
    }
    EXPECT_TRUE(crlfEverywhere(bytes));
    for (auto at = bytes.find(":Runtime:"); at != std::string::npos; at = bytes.find(":Runtime:", at + 1)) {
      std::string poser = bytes.substr(at + 1, bytes.find_first_of("\"\r\n", at) - at - 1);
      EXPECT_TRUE(fs::exists(made() / text::Replace(poser, ":", "/"))) << poser;
    }
    std::string kind = text::FileKind(relative);
    if (kind == "obj" || kind == "mtl") continue;
    FigureFacts facts = gatherFacts(made() / relative);
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

TEST(SampleSet, FigureAndSceneHaveEachPartTwiceAndTheirSections) {
  FigureFacts figure = gatherFacts(made() / SampleSet::kFigure);
  expectTwoHeaders(figure, 1);
  EXPECT_EQ(figure.actorHeaders.size(), standardParts().size() + 1);
  EXPECT_EQ(figure.figureResFiles, 2);
  EXPECT_EQ(figure.propHeaders["prop Earrings:1"], 2);
  EXPECT_EQ(figure.propHeaders["prop Bangle:1"], 2);
  EXPECT_GE(figure.controlBlocks, 3);
  EXPECT_GE(figure.targetGeoms, 15);
  EXPECT_GT(figure.deltaLines, 50);

  // The scene holds two figures and the scene objects.
  FigureFacts scene = gatherFacts(made() / SampleSet::kScene);
  expectTwoHeaders(scene, 1);
  expectTwoHeaders(scene, 2);
  EXPECT_EQ(scene.figureResFiles, 4);
  EXPECT_EQ(scene.actorHeaders["actor UNIVERSE"], 1);
  EXPECT_EQ(scene.propHeaders["prop GROUND"], 2);
  std::string text = readFile(made() / SampleSet::kScene);
  for (const char* line : {"\r\nlight LIGHT_1\r\n", "\r\ncamera MAIN_CAMERA\r\n", "\r\ndoc\r\n",
                           "\r\nmovie\r\n", "\t\t\tFigure 2\r\n\t\t\tBODY:2\r\n", "name    Figure 2\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
}

// Every usemtl of the OBJ names a material of the figure, and every part has its group.
TEST(SampleSet, ObjMaterialsAndGroupsMatchTheFigure) {
  std::set<std::string> materials;
  text::LineReader figure(made() / SampleSet::kFigure);
  std::string line;
  while (figure.readRawLine(line))
    if (text::hasPrefix(line, "\tmaterial ")) materials.insert(line.substr(10));
  text::LineReader obj(made() / SampleSet::kObj);
  std::set<std::string> groups;
  while (obj.readRawLine(line)) {
    if (text::hasPrefix(line, "usemtl ")) {
      EXPECT_TRUE(materials.count(line.substr(7))) << line;
    }
    if (text::hasPrefix(line, "g ")) groups.insert(line.substr(2));
  }
  for (const auto& part : standardParts()) EXPECT_TRUE(groups.count(part)) << part;
}

TEST(LargeFigure, ReachesItsSizeWithTheCountsAskedAlikeOnEveryRun) {
  const struct {
    const char* name;
    gen::LargeFigureOptions options;  // bytes, actors, morphs, props
  } cases[] = {
      {"default counts, 6 MB", {6u << 20, 84, 3200, 6}},
      {"more parts and morphs, 10 MB", {10u << 20, 100, 4000, 3}},
      {"a size below the skeleton still gets every morph", {1000, 84, 3000, 2}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempDir dir;
    fs::path cr2 = dir / "big.cr2";
    std::uint64_t written = gen::writeLargeFigure(cr2, c.options);
    EXPECT_EQ(written, fs::file_size(cr2));
    EXPECT_GE(written, c.options.targetBytes);
    // Overshoot is the tail behind the last morph (a few parts and the figure section).
    if (c.options.targetBytes > (1u << 20)) {
      EXPECT_LT(written, c.options.targetBytes + (1u << 20));
    }
    FigureFacts facts = gatherFacts(cr2);
    EXPECT_EQ(facts.actorHeaders.size(), static_cast<std::size_t>(c.options.actors) + 1);
    for (const auto& [header, count] : facts.actorHeaders) {
      ASSERT_EQ(count, 2) << header;
      EXPECT_EQ(facts.afterBrace[header].back(), "") << header;
    }
    EXPECT_EQ(facts.propHeaders.size(), static_cast<std::size_t>(c.options.props));
    EXPECT_EQ(facts.targetGeoms, c.options.morphs);
    EXPECT_EQ(facts.controlBlocks, c.options.morphs / 10);
    EXPECT_GE(facts.deltaLines, c.options.morphs);
    EXPECT_EQ(facts.figureResFiles, 2);
    EXPECT_EQ(facts.lowestDepth, 0);
    EXPECT_EQ(facts.finalDepth, 0);
    EXPECT_EQ(facts.problems, std::vector<std::string>{});
    std::string bytes = readFile(cr2);
    EXPECT_TRUE(crlfEverywhere(bytes));
    gen::writeLargeFigure(dir / "again.cr2", c.options);
    EXPECT_TRUE(readFile(dir / "again.cr2") == bytes);
  }
}

TEST(LargeScene, HoldsOneLargeFigureOnItsStage) {
  TempDir dir;
  fs::path pz3 = dir / "big.pz3";
  gen::LargeFigureOptions options{4u << 20, 84, 3200, 6};
  std::uint64_t written = gen::writeLargeScene(pz3, options);
  EXPECT_EQ(written, fs::file_size(pz3));
  EXPECT_GE(written, options.targetBytes);
  EXPECT_LT(written, options.targetBytes + (1u << 20));
  FigureFacts facts = gatherFacts(pz3);
  expectTwoHeaders(facts, 1);
  EXPECT_EQ(facts.actorHeaders["actor UNIVERSE"], 1);
  EXPECT_EQ(facts.propHeaders["prop GROUND"], 2);
  EXPECT_EQ(facts.targetGeoms, options.morphs);
  EXPECT_EQ(facts.figureResFiles, 2);
  EXPECT_EQ(facts.lowestDepth, 0);
  EXPECT_EQ(facts.finalDepth, 0);
  std::string text = readFile(pz3);
  EXPECT_TRUE(crlfEverywhere(text));
  for (const char* line : {"\r\nmovie\r\n", "\r\nlight LIGHT_2\r\n", "\r\ncamera MAIN_CAMERA\r\n", "\r\ndoc\r\n",
                           "\r\nsetGeomHandlerOffset 0 0.3487 0\r\n}\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
}

}  // namespace
}  // namespace tolvane::test
