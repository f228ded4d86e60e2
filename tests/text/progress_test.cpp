#include "text/progress.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

#include "test_files.h"
#include "text/disk.h"
#include "text/figure_scan.h"
#include "text/line_reader.h"
#include "text/scratch_move.h"

namespace tolvane::text {
namespace {

using test::TempDir;
using test::writeFile;
using Beats = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

// A pace that records every beat; `every` zero beats at every report.
struct Recorder {
  explicit Recorder(std::chrono::steady_clock::duration every = {})
      : pace([this](std::uint64_t done, std::uint64_t total) { beats.emplace_back(done, total); }, every) {}
  Beats beats;
  Pace pace;
};

TEST(Pace, BeatsByTimeWithTheLastFigures) {
  Recorder slow(std::chrono::hours(1));
  slow.pace.at(10, 100);
  slow.pace.tick();
  EXPECT_TRUE(slow.beats.empty()) << "no beat before the time has come";

  Recorder quick;
  quick.pace.at(10, 100);
  quick.pace.tick();  // no bytes counted: the last figures again
  quick.pace.at(60, 100);
  quick.pace.restart();
  quick.pace.tick();  // a new job knows no figures yet
  EXPECT_EQ(quick.beats, (Beats{{10, 100}, {10, 100}, {60, 100}, {0, 0}}));
}

TEST(Pace, ReportsReachTheInnermostLiveScopeOfTheThread) {
  Recorder outer, inner;
  reportProgress(1, 2);  // no scope: nowhere to go
  {
    PaceScope a(outer.pace);
    auto b = std::make_unique<PaceScope>(inner.pace);
    reportProgress(3, 4);
    // Another thread has no pace of its own.
    std::thread([] { reportProgress(99, 99); }).join();
    // Scopes that end out of order leave the right one in charge.
    auto c = std::make_unique<PaceScope>(outer.pace);
    b.reset();
    reportProgress(5, 6);
    c.reset();
    reportProgress(7, 8);
  }
  reportProgress(9, 10);
  EXPECT_EQ(outer.beats, (Beats{{5, 6}, {7, 8}}));
  EXPECT_EQ(inner.beats, (Beats{{3, 4}}));
}

// A text of `lines` lines of 100 bytes each.
std::string lines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::string(98, 'a' + i % 26) + "\r\n";
  return text;
}

// Every loop that streams a file tells how far it is, in order, once per buffer, and
// ends at the file's length.
TEST(Pace, StreamingLoopsReportTheirBytesInOrder) {
  TempDir dir;
  const std::filesystem::path file = dir / "big.cr2";
  writeFile(file, lines(30000));  // 3 MB: several buffers of each reader
  const std::uint64_t size = std::filesystem::file_size(file);
  struct Case {
    const char* loop;
    std::function<void()> run;
    std::size_t fewestBeats;
  } cases[] = {
      {"line reader",
       [&] {
         LineReader in(file);
         std::string line;
         while (in.readRawLine(line)) {
         }
       },
       3},
      {"figure scanner",
       [&] {
         FigureScanner in(file, 1 << 20);
         std::string_view line;
         while (in.rawLine(line)) {
         }
       },
       2},
      {"copy staged on another file system",
       [&] {
         std::filesystem::create_directories(dir / "work");
         std::filesystem::create_directories(dir / "user");
         writeFile(dir / "user" / "target.cr2", "old\r\n");
         std::filesystem::copy_file(file, dir / "work" / "scratch.txt");
         disk::refuseRenamesAcrossFolders(true);
         replaceAtomically(dir / "work" / "scratch.txt", dir / "user" / "target.cr2");
         disk::refuseRenamesAcrossFolders(false);
       },
       1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.loop);
    Recorder r;
    {
      PaceScope scope(r.pace);
      c.run();
    }
    EXPECT_GE(r.beats.size(), c.fewestBeats);
    for (std::size_t i = 0; i < r.beats.size(); ++i) {
      EXPECT_EQ(r.beats[i].second, size);
      EXPECT_LE(r.beats[i].first, size);
      if (i > 0) {
        EXPECT_LE(r.beats[i - 1].first, r.beats[i].first);
      }
    }
  }
}

// A scanner with a yield of its own keeps to it and does not report besides.
TEST(Pace, AScannerWithItsOwnYieldReportsNothing) {
  TempDir dir;
  writeFile(dir / "f.cr2", lines(30000));
  Recorder r;
  PaceScope scope(r.pace);
  FigureScanner in(dir / "f.cr2", 1 << 20);
  in.setYield([] {});
  std::string_view line;
  while (in.rawLine(line)) {
  }
  EXPECT_TRUE(r.beats.empty());
}

}  // namespace
}  // namespace tolvane::text
