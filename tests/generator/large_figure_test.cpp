#include <gtest/gtest.h>

#include "figure_facts.h"
#include "generator/generator.h"
#include "support/test_support.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;

struct LargeCase {
  const char* name;
  gen::LargeFigureOptions options;
};

gen::LargeFigureOptions options(std::uint64_t bytes, int actors, int morphs, int props) {
  gen::LargeFigureOptions o;
  o.targetBytes = bytes;
  o.actors = actors;
  o.morphs = morphs;
  o.props = props;
  return o;
}

TEST(LargeFigure, ReachesItsSizeWithTheCountsAsked) {
  const LargeCase cases[] = {
      {"default counts, 6 MB", options(6u << 20, 84, 3200, 6)},
      {"more parts and morphs, 10 MB", options(10u << 20, 100, 4000, 3)},
      {"a size below the skeleton still gets every morph", options(1000, 84, 3000, 2)},
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
    EXPECT_TRUE(crlfEverywhere(readFile(cr2)));
  }
}

TEST(LargeFigure, IsTheSameOnEveryRun) {
  TempDir dir;
  gen::writeLargeFigure(dir / "a.cr2", options(2u << 20, 84, 3200, 6));
  gen::writeLargeFigure(dir / "b.cr2", options(2u << 20, 84, 3200, 6));
  EXPECT_TRUE(readFile(dir / "a.cr2") == readFile(dir / "b.cr2"));
}

}  // namespace
}  // namespace tolvane::test
