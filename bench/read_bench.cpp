// Read benchmark: times a plain `wc -l` over a large figure, then a full pass with the
// line reader's raw lines and one with its fields, and prints the rates and the ratios
// to `wc -l`. Usage: read_bench [FILE] [ROUNDS]; without a file a 100 MB figure is
// generated into a temporary folder. The best round of each pass counts.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "text/line_reader.h"
#include "generator/generator.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double timeWc(const fs::path& file) {
  std::string command = "wc -l < '" + file.string() + "' > /dev/null";
  auto start = Clock::now();
  if (std::system(command.c_str()) != 0) std::fprintf(stderr, "wc -l failed\n");
  return seconds(start);
}

template <typename Read>
double timePass(const fs::path& file, Read read, std::uint64_t& count) {
  auto start = Clock::now();
  tolvane::text::LineReader reader(file);
  std::string text;
  count = 0;
  while ((reader.*read)(text)) count += 1 + (text.size() & 1);  // touch the text so the pass is not skipped
  return seconds(start);
}

int run(int argc, char** argv) {
  fs::path file;
  fs::path temp;
  if (argc > 1) {
    file = argv[1];
  } else {
    temp = fs::temp_directory_path() / ("tolvane-read-bench-" + std::to_string(::getpid()));
    fs::create_directories(temp);
    file = temp / "large.cr2";
    auto start = Clock::now();
    tolvane::gen::writeLargeFigure(file, tolvane::gen::LargeFigureOptions{});
    std::printf("generated %s in %.2f s\n", file.c_str(), seconds(start));
  }
  int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  double megabytes = static_cast<double>(fs::file_size(file)) / 1e6;
  double wc = 1e9, raw = 1e9, field = 1e9;
  std::uint64_t lines = 0, fields = 0;
  timeWc(file);  // brings the file into the page cache
  for (int round = 0; round < rounds; ++round) {
    wc = std::min(wc, timeWc(file));
    raw = std::min(raw, timePass(file, &tolvane::text::LineReader::readRawLine, lines));
    field = std::min(field, timePass(file, &tolvane::text::LineReader::readField, fields));
  }
  std::printf("file %.1f MB, best of %d rounds\n", megabytes, rounds);
  std::printf("wc -l        %8.3f s  %8.0f MB/s\n", wc, megabytes / wc);
  std::printf("readRawLine  %8.3f s  %8.0f MB/s  %5.2fx wc -l\n", raw, megabytes / raw, raw / wc);
  std::printf("readField    %8.3f s  %8.0f MB/s  %5.2fx wc -l\n", field, megabytes / field, field / wc);
  if (!temp.empty()) fs::remove_all(temp);
  return lines > 0 && fields > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "read_bench: %s\n", e.what());
    return 1;
  }
}
