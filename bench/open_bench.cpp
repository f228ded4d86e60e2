// Times File, Open of a large figure through the event handlers (all five list readers)
// against `grep -c targetGeom` over the same file in the same run, and prints both and
// their ratio. Usage: open_bench [figure.cr2 [poser folder]]; without a path it writes
// a large figure of about 100 MB (the generator's) into a temporary Poser folder first.
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

double grepSeconds(const fs::path& file, std::string& count) {
  std::string command = "grep -c targetGeom '" + file.string() + "'";
  return timed([&] {
    FILE* pipe = ::popen(command.c_str(), "r");
    char buf[64] = {};
    if (pipe && std::fgets(buf, sizeof buf, pipe)) count = buf;
    if (pipe) ::pclose(pipe);
    while (!count.empty() && (count.back() == '\n' || count.back() == '\r')) count.pop_back();
  });
}

}  // namespace

int main(int argc, char** argv) {
  tolvane::bench::OpenInput in("open", argc, argv);
  const fs::path& figure = in.figure;
  std::string count;
  grepSeconds(figure, count);  // the file into the page cache
  double grep = 1e9, open = 1e9;
  int actors = 0;
  for (int i = 0; i < 3; ++i) {
    grep = std::min(grep, grepSeconds(figure, count));
    open = std::min(open, openSeconds(figure, in.poser, in.work(), actors));
  }
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("file            %s (%.1f MB, %s targetGeom lines, %d ListActors entries)\n", figure.c_str(),
              static_cast<double>(fs::file_size(figure)) / (1 << 20), count.c_str(), actors);
  std::printf("grep -c         %.3f s\n", grep);
  std::printf("open (5 lists)  %.3f s\n", open);
  std::printf("ratio           %.1f\n", open / grep);
  std::printf("peak RSS        %.1f MB\n", static_cast<double>(usage.ru_maxrss) / 1024);
  return 0;
}
