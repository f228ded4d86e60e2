#include "text/figure_scan.h"

#include <gtest/gtest.h>

#include <random>

#include "text/line_reader.h"
#include "text/runtime_error.h"
#include "test_files.h"

namespace tolvane::text {
namespace {

using test::TempDir;
using test::writeFile;

// The reference skip: line by line with LineReader, stepping back onto the first line
// that holds a needle (or, when fields are counted, a double quote).
std::uint64_t referenceSkip(LineReader& in, const std::vector<std::string>& needles, bool fields) {
  std::uint64_t n = 0;
  while (!in.atEnd()) {
    std::uint64_t start = in.position();
    std::string line = in.ReadRawLine();
    std::uint64_t end = in.position();
    bool stop = fields && line.find('"') != std::string::npos;
    for (const auto& w : needles) stop = stop || line.find(w) != std::string::npos;
    if (stop || fields) in.seek(start);
    if (stop) break;
    if (!fields) ++n;
    for (std::string f; fields && in.position() < end && in.readField(f);) ++n;
  }
  return n;
}

std::string randomText(std::mt19937& rng) {
  static const char* const pieces[] = {"a",    "bc",      " ",  "\t",     ",",     "\"",  "\r\n",
                                       "\r\n", "\r",      "\n", "\r\n\n", "actor", "Map", "figureResFile",
                                       "x y",  "\r\n\t\t"};
  std::string s;
  int n = std::uniform_int_distribution<int>(0, 300)(rng);
  for (int i = 0; i < n; ++i) s += pieces[std::uniform_int_distribution<int>(0, 15)(rng)];
  return s;
}

// Random texts read with a random mix of line reads, field reads and skips, by the
// scanner with tiny windows and by LineReader: every result must agree.
TEST(FigureScanner, AgreesWithTheLineReader) {
  TempDir dir;
  std::mt19937 rng(20261122);
  const std::vector<std::string> needles{"actor", "Map"};
  for (int round = 0; round < 400; ++round) {
    std::string text = randomText(rng);
    auto file = dir / ("t" + std::to_string(round));
    writeFile(file, text);
    std::size_t window = std::size_t{1} << std::uniform_int_distribution<int>(1, 8)(rng);
    FigureScanner scan(file, window);
    LineReader ref(file);
    Needles keys{"actor", "Map"};
    for (int step = 0; step < 200; ++step) {
      SCOPED_TRACE("round " + std::to_string(round) + " step " + std::to_string(step) + " window " +
                   std::to_string(window));
      int op = std::uniform_int_distribution<int>(0, 3)(rng);
      ASSERT_EQ(scan.atEnd(), ref.atEnd());
      if (op < 2) {
        std::string_view a;
        std::string b;
        bool more = op == 0 ? scan.rawLine(a) : scan.field(a);
        ASSERT_EQ(more, op == 0 ? ref.readRawLine(b) : ref.readField(b));
        if (more) {
          ASSERT_EQ(std::string(a), b) << (op == 0 ? "raw line" : "field");
        }
      } else {
        bool fields = op == 3;
        // The scanner passes over lines only from a line start; the reference is
        // asked only then.
        std::uint64_t before = ref.position();
        std::uint64_t got = scan.skipLines(keys, fields, true);
        if (got == 0) continue;
        ref.seek(before);
        ASSERT_EQ(got, referenceSkip(ref, needles, fields));
      }
    }
  }
}

// Reading on past the cut is error 62, as past any end.
TEST(FigureScanner, AFileCutShortWhileItIsReadEndsWhereItWasCut) {
  TempDir dir;
  std::string text;
  for (int i = 0; i < 200; ++i) text += "line " + std::to_string(i) + "\r\n";
  writeFile(dir / "f.txt", text);
  FigureScanner scan(dir / "f.txt", 64);
  std::string_view line;
  ASSERT_TRUE(scan.rawLine(line));
  EXPECT_EQ(line, "line 0");
  std::filesystem::resize_file(dir / "f.txt", 300);  // just into line 34
  std::string last;
  int lines = 1;
  while (scan.rawLine(line)) {
    last = std::string(line);
    ++lines;
  }
  EXPECT_EQ(lines, 35);
  EXPECT_EQ(last, "line");  // the part of line 34 that is left
  EXPECT_TRUE(scan.atEnd());
  EXPECT_EQ(scan.length(), 300u);
  EXPECT_EQ(test::runTimeErrorOf([&] { scan.ReadRawLine(); }), kInputPastEndOfFile);
}

}  // namespace
}  // namespace tolvane::text
