// Times File, Open of a large figure stored compressed (CRZ) against `zcat FILE >
// /dev/null` plus File, Open of the same text stored plain, in the same run, and prints
// the figures and the ratio (the compressed open should stay within 1.5 of the sum).
// Usage: compressed_open_bench [figure.cr2 [poser folder]]; without a path it writes a
// large figure of about 100 MB (the generator's) into a temporary Poser folder first.
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>

#include "app/app.h"
#include "generator/generator.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// The folders of the figure's main geometry under the Poser folder, which Open changes
// into while it lists the figure.
void makeGeometryFolders(const fs::path& figure, const fs::path& poser) {
  std::ifstream in(figure, std::ios::binary);
  std::string line;
  while (std::getline(in, line) && line.find("figureResFile") == std::string::npos) {
  }
  std::size_t at = line.find("Geometries:");
  if (at == std::string::npos) return;
  fs::path folder = poser / "Runtime" / "Geometries";
  std::string rest = line.substr(at + 11);
  for (std::size_t colon = rest.find(':'); colon != std::string::npos; colon = rest.find(':')) {
    folder /= rest.substr(0, colon);
    rest.erase(0, colon + 1);
  }
  fs::create_directories(folder);
}

double secondsOf(const std::function<void()>& run) {
  auto start = Clock::now();
  run();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// `command` run through the shell, its output thrown away.
double shellSeconds(const std::string& command) {
  return secondsOf([&] {
    if (std::system(command.c_str()) != 0) std::cerr << "failed: " << command << '\n';
  });
}

double openSeconds(const fs::path& figure, const fs::path& poser, const fs::path& work, int& actors) {
  tolvane::ui::ScriptedServices services;
  tolvane::ui::MemorySettings settings;
  settings.save(tolvane::kAppName, "Startup", "PLoc", poser.string() + "/");
  tolvane::ProgramOptions options;
  options.workDir = work;
  options.currentDir = work;
  tolvane::Program program(services, settings, options);
  tolvane::app::wire(program);
  services.dialog(figure.string());
  for (int i = 0; i < 8; ++i) services.answer(tolvane::ui::Answer::OK);
  double s =
      secondsOf([&] { tolvane::fireEvent(program, "Opening", "MenuFileOpen", tolvane::EventKind::Click); });
  for (const auto& m : services.messages())
    if (m.title != "ALERT!") std::cerr << "message: " << m.title << ": " << m.text << '\n';
  actors = program.opening.ListActors.listCount();
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  fs::path temp = fs::temp_directory_path() / ("tolvane-crz-bench-" + std::to_string(::getpid()));
  fs::path poser = argc > 2 ? fs::path(argv[2]) : temp / "Poser";
  fs::path figure = argc > 1 ? fs::path(argv[1]) : poser / "Runtime/Libraries/Character/Big/Big.cr2";
  fs::create_directories(temp / "work");
  if (argc < 2) {
    fs::create_directories(figure.parent_path());
    tolvane::gen::writeLargeFigure(figure, {});
    makeGeometryFolders(figure, poser);
  }
  fs::path packed = figure;
  packed.replace_extension(".crz");
  shellSeconds("gzip -c '" + figure.string() + "' > '" + packed.string() + "'");
  const std::string zcat = "zcat '" + packed.string() + "' > /dev/null";
  shellSeconds(zcat);  // both files into the page cache
  double unpack = 1e9, plain = 1e9, compressed = 1e9;
  int plainActors = 0, actors = 0;
  for (int i = 0; i < 3; ++i) {
    unpack = std::min(unpack, shellSeconds(zcat));
    plain = std::min(plain, openSeconds(figure, poser, temp / "work", plainActors));
    // A new time stamp makes the packed file a changed one, unpacked afresh.
    fs::last_write_time(packed, fs::file_time_type::clock::now());
    compressed = std::min(compressed, openSeconds(packed, poser, temp / "work", actors));
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
  if (argc < 2 && !std::getenv("TOLVANE_BENCH_KEEP")) fs::remove_all(temp);
  return 0;
}
