// Times File, Open of a large figure stored compressed (CRZ) against `zcat FILE >
// /dev/null` plus File, Open of the same text stored plain, in the same run, and prints
// the figures and the ratio (the compressed open should stay within 1.5 of the sum).
// Usage: compressed_open_bench [figure.cr2 [poser folder]]; without a path it writes a
// large figure of about 100 MB (the generator's) into a temporary Poser folder first.
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include "tool_bench.h"

namespace fs = std::filesystem;
using tolvane::bench::openSeconds;
using tolvane::bench::timed;

namespace {

// `command` run through the shell, its output thrown away.
double shellSeconds(const std::string& command) {
  return timed([&] {
    if (std::system(command.c_str()) != 0) std::cerr << "failed: " << command << '\n';
  });
}

}  // namespace

int main(int argc, char** argv) {
  tolvane::bench::OpenInput in("crz", argc, argv);
  const fs::path& figure = in.figure;
  fs::path packed = figure;
  packed.replace_extension(".crz");
  shellSeconds("gzip -c '" + figure.string() + "' > '" + packed.string() + "'");
  const std::string zcat = "zcat '" + packed.string() + "' > /dev/null";
  shellSeconds(zcat);  // both files into the page cache
  double unpack = 1e9, plain = 1e9, compressed = 1e9;
  int plainActors = 0, actors = 0;
  for (int i = 0; i < 3; ++i) {
    unpack = std::min(unpack, shellSeconds(zcat));
    plain = std::min(plain, openSeconds(figure, in.poser, in.work(), plainActors));
    // A new time stamp makes the packed file a changed one, unpacked afresh.
    fs::last_write_time(packed, fs::file_time_type::clock::now());
    compressed = std::min(compressed, openSeconds(packed, in.poser, in.work(), actors));
  }
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("file              %s (%.1f MB, %.1f MB packed, %d / %d ListActors entries)\n", packed.c_str(),
              static_cast<double>(fs::file_size(figure)) / (1 << 20),
              static_cast<double>(fs::file_size(packed)) / (1 << 20), actors, plainActors);
  std::printf("zcat > /dev/null  %.3f s\n", unpack);
  std::printf("open (plain)      %.3f s\n", plain);
  std::printf("open (CRZ)        %.3f s\n", compressed);
  std::printf("ratio             %.2f  (open CRZ / (zcat + open plain))\n", compressed / (unpack + plain));
  std::printf("peak RSS          %.1f MB\n", static_cast<double>(usage.ru_maxrss) / 1024);
  return 0;
}
