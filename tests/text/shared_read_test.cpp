#include "text/shared_read.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

#include "text/figure_scan.h"
#include "text/runtime_error.h"
#include "test_files.h"

namespace tolvane::text {
namespace {

using test::TempDir;
using test::writeFile;

// Every raw line of a scanner, each with the fields of a second pass, as one text.
std::string walk(FigureScanner& in, int stopAfter = -1) {
  std::string seen;
  std::string_view line;
  for (int n = 0; n != stopAfter && in.rawLine(line); ++n) seen.append(line).push_back('|');
  in.close();
  return seen;
}

std::string figureText(std::mt19937& rng, std::size_t lines) {
  std::string s;
  for (std::size_t i = 0; i < lines; ++i) {
    int len = std::uniform_int_distribution<int>(0, 40)(rng);
    // Now and then a line far longer than a block, to go through the copying window.
    if (i % 97 == 13) len = 700;
    for (int j = 0; j < len; ++j) s.push_back(static_cast<char>('a' + j % 26));
    s += (i % 11 == 5) ? "\r" : "\r\n";
  }
  return s;
}

// Scanners on several threads over one shared read see exactly what a scanner of their
// own sees: with tiny blocks, a tiny lead and lines longer than a block, and with a
// reader that stops early and one that never reads.
TEST(SharedRead, ScannersOnThreadsSeeTheFileAsAlone) {
  TempDir dir;
  std::mt19937 rng(7);
  struct Case {
    const char* name;
    std::size_t block, ahead, overlap, window;
  };
  const Case cases[] = {
      {"tiny blocks", 64, 2, 8, 32},
      {"no overlap", 100, 1, 0, 50},
      {"large blocks", 4096, 4, 256, 1024},
  };
  auto file = dir / "figure.cr2";
  writeFile(file, figureText(rng, 3000));
  FigureScanner alone(file);
  std::string expected = walk(alone);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto shared = std::make_shared<SharedRead>(file, c.block, c.ahead, c.overlap);
    std::vector<std::string> seen(4);
    std::vector<std::function<void()>> jobs;
    for (int r = 0; r < 3; ++r)
      jobs.push_back([&, r] {
        FigureScanner in(shared, r, c.window);
        seen[static_cast<std::size_t>(r)] = walk(in);
      });
    jobs.push_back([&] {
      FigureScanner in(shared, 3, c.window);
      seen[3] = walk(in, 10);  // stops early: the others must not wait for it
    });
    int idles = 0;
    auto faults = runTogether(jobs, [&] { ++idles; });
    for (auto& f : faults) EXPECT_FALSE(f);
    for (int r = 0; r < 3; ++r) EXPECT_EQ(seen[static_cast<std::size_t>(r)], expected) << "reader " << r;
    EXPECT_EQ(seen[3], expected.substr(0, seen[3].size()));
  }
}

TEST(SharedRead, FaultsStayWithTheirJobAndEmptyFilesEnd) {
  TempDir dir;
  writeFile(dir / "empty.cr2", "");
  auto shared = std::make_shared<SharedRead>(dir / "empty.cr2", 16, 2, 4);
  std::string line;
  auto faults = runTogether(
      {[&] {
         FigureScanner in(shared, 0);
         in.ReadRawLine();  // past the end: error 62
       },
       [&] {
         FigureScanner in(shared, 1);
         line = walk(in);
       }},
      {});
  ASSERT_TRUE(faults[0]);
  EXPECT_EQ(test::runTimeErrorOf([&] { std::rethrow_exception(faults[0]); }), kInputPastEndOfFile);
  EXPECT_FALSE(faults[1]);
  EXPECT_EQ(line, "");
  EXPECT_EQ(test::runTimeErrorOf([&] { SharedRead missing(dir / "missing.cr2"); }), kFileNotFound);
  EXPECT_EQ(test::runTimeErrorOf([&] { SharedRead folder(dir.path()); }), kPathFileAccessError);
}

}  // namespace
}  // namespace tolvane::text
