// Times File, Open of a large figure through the event handlers (all five list readers)
// against `grep -c targetGeom` over the same file in the same run, and prints both and
// their ratio. Usage: open_bench [figure.cr2 [poser folder]]; without a path it writes
// a large figure of about 100 MB (the generator's) into a temporary Poser folder first.
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

double grepSeconds(const fs::path& file, std::string& count) {
  std::string command = "grep -c targetGeom '" + file.string() + "'";
  return secondsOf([&] {
    FILE* pipe = ::popen(command.c_str(), "r");
    char buf[64] = {};
    if (pipe && std::fgets(buf, sizeof buf, pipe)) count = buf;
    if (pipe) ::pclose(pipe);
    while (!count.empty() && (count.back() == '\n' || count.back() == '\r')) count.pop_back();
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
  fs::path temp = fs::temp_directory_path() / ("tolvane-open-bench-" + std::to_string(::getpid()));
  fs::path poser = argc > 2 ? fs::path(argv[2]) : temp / "Poser";
  fs::path figure = argc > 1 ? fs::path(argv[1]) : poser / "Runtime/Libraries/Character/Big/Big.cr2";
  fs::create_directories(temp / "work");
  if (argc < 2) {
    fs::create_directories(figure.parent_path());
    tolvane::gen::writeLargeFigure(figure, {});
    makeGeometryFolders(figure, poser);
  }
  std::string count;
  grepSeconds(figure, count);  // the file into the page cache
  double grep = 1e9, open = 1e9;
  int actors = 0;
  for (int i = 0; i < 3; ++i) {
    grep = std::min(grep, grepSeconds(figure, count));
    open = std::min(open, openSeconds(figure, poser, temp / "work", actors));
  }
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("file            %s (%.1f MB, %s targetGeom lines, %d ListActors entries)\n", figure.c_str(),
              static_cast<double>(fs::file_size(figure)) / (1 << 20), count.c_str(), actors);
  std::printf("grep -c         %.3f s\n", grep);
  std::printf("open (5 lists)  %.3f s\n", open);
  std::printf("ratio           %.1f\n", open / grep);
  std::printf("peak RSS        %.1f MB\n", static_cast<double>(usage.ru_maxrss) / 1024);
  if (argc < 2 && !std::getenv("TOLVANE_BENCH_KEEP")) fs::remove_all(temp);
  return 0;
}
