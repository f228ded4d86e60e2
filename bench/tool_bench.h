// What the tool benchmarks set up alike: a scratch folder with a work folder, a program
// wired as the desktop wires it with the user's answers scripted, generated figures,
// the restore of a figure between rounds, the open of a figure through its handlers,
// and the table of best times against `cp`.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "app/app.h"
#include "bench_support.h"
#include "generator/generator.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"

namespace tolvane::bench {

namespace fs = std::filesystem;

struct ToolBench {
  fs::path dir;
  fs::path dest;  // the figure the tools change, when there is one
  ui::ScriptedServices services;
  ui::MemorySettings settings;
  std::unique_ptr<Program> program;

  // A folder of its own under the temporary folder, named after the benchmark.
  explicit ToolBench(const std::string& name)
      : dir(fs::temp_directory_path() / ("tolvane-" + name + "-bench-" + std::to_string(::getpid()))) {
    fs::create_directories(dir / "work");
    ProgramOptions options;
    options.workDir = dir / "work";
    options.currentDir = dir;
    program = std::make_unique<Program>(services, settings, options);
    app::wire(*program);
  }
  ~ToolBench() {
    std::error_code ignored;
    fs::remove_all(dir, ignored);
  }
  ToolBench(const ToolBench&) = delete;
  ToolBench& operator=(const ToolBench&) = delete;

  // Writes the generator's large figure of about `megabytes` into the folder.
  fs::path generate(const std::string& name, std::uint64_t megabytes) {
    fs::path path = dir / name;
    gen::LargeFigureOptions options;
    options.targetBytes = megabytes << 20;
    auto start = Clock::now();
    gen::writeLargeFigure(path, options);
    std::printf("generated %s (%.1f MB) in %.2f s\n", path.c_str(), static_cast<double>(fs::file_size(path)) / 1e6,
                seconds(start));
    return path;
  }

  // `cp` of the figure, and with the copy flushed to the device as every tool's
  // replace flushes its new text.
  double cp() { return cpSeconds(dest, dir / "cp.cr2"); }
  double cpFlushed() { return cpSeconds(dest, dir / "cp.cr2", true); }

  // Puts `pristine` back as `dest` the way the tools leave a figure: a new file renamed
  // over the old (writing over the old file in place makes the next replace wait for
  // its pages).
  void restore(const fs::path& pristine, const fs::path& dest) {
    fs::copy_file(pristine, dir / "restore.tmp", fs::copy_options::overwrite_existing);
    fs::rename(dir / "restore.tmp", dest);
  }
};

// One timed tool of a benchmark and its best time over the rounds.
struct Best {
  const char* name;
  double time = 1e9;
  void keep(double t) { time = t < time ? t : time; }
};

// Prints the best times and their ratios to cp and to cp with a flush; true when each
// stays within `aim` times cp.
template <typename Rows>
bool printBest(int rounds, double cp, double cpFlushed, const Rows& rows, double aim) {
  std::printf("best of %d rounds\n%-15s %7.3f s\n%-15s %7.3f s\n", rounds, "cp", cp, "cp + flush", cpFlushed);
  bool ok = true;
  for (const auto& r : rows) {
    std::printf("%-15s %7.3f s  %5.2fx cp  %5.2fx cp + flush\n", r.name, r.time, r.time / cp, r.time / cpFlushed);
    ok = ok && r.time < aim * cp;
  }
  std::printf("%s %gx cp\n", ok ? "every tool within" : "a tool is OUTSIDE", aim);
  return ok;
}

// The folders of the figure's main geometry under the Poser folder, which Open changes
// into while it lists the figure.
inline void makeGeometryFolders(const fs::path& figure, const fs::path& poser) {
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

// Seconds File, Open of `figure` takes through its handlers in a fresh program, with
// every list reader; `actors` gets the number of ListActors entries.
inline double openSeconds(const fs::path& figure, const fs::path& poser, const fs::path& work, int& actors) {
  ui::ScriptedServices services;
  ui::MemorySettings settings;
  settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
  ProgramOptions options;
  options.workDir = work;
  options.currentDir = work;
  Program program(services, settings, options);
  app::wire(program);
  services.dialog(figure.string());
  for (int i = 0; i < 8; ++i) services.answer(ui::Answer::OK);
  double s = timed([&] { fireEvent(program, "Opening", "MenuFileOpen", EventKind::Click); });
  for (const auto& m : services.messages())
    if (m.title != "ALERT!") std::cerr << "message: " << m.title << ": " << m.text << '\n';
  actors = program.opening.ListActors.listCount();
  return s;
}

}  // namespace tolvane::bench

namespace tolvane::bench {

// The figure an open benchmark opens: the one named on the command line (with its Poser
// folder), or else the generator's large figure of about 100 MB in a temporary Poser
// folder, removed at the end unless TOLVANE_BENCH_KEEP is set.
struct OpenInput {
  fs::path temp, poser, figure;
  bool generated = false;

  OpenInput(const std::string& name, int argc, char** argv)
      : temp(fs::temp_directory_path() / ("tolvane-" + name + "-bench-" + std::to_string(::getpid()))),
        poser(argc > 2 ? fs::path(argv[2]) : temp / "Poser"),
        figure(argc > 1 ? fs::path(argv[1]) : poser / "Runtime/Libraries/Character/Big/Big.cr2"),
        generated(argc < 2) {
    fs::create_directories(temp / "work");
    if (!generated) return;
    fs::create_directories(figure.parent_path());
    gen::writeLargeFigure(figure, {});
    makeGeometryFolders(figure, poser);
  }
  ~OpenInput() {
    std::error_code ignored;
    if (generated && !std::getenv("TOLVANE_BENCH_KEEP")) fs::remove_all(temp, ignored);
  }
  OpenInput(const OpenInput&) = delete;
  OpenInput& operator=(const OpenInput&) = delete;

  fs::path work() const { return temp / "work"; }
};

}  // namespace tolvane::bench
