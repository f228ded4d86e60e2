// Times File, Open of a large figure through the event handlers (all five list readers)
// against `grep -c targetGeom` over the same file in the same run, and prints both and
// their ratio. Usage: open_bench [figure.cr2 [poser folder]]; without a path it writes
// a large figure of about 100 MB into a temporary Poser folder first.
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

#include "program/events.h"
#include "program/program.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"
#ifndef TOLVANE_NO_GENERATOR
#include "generator/generator.h"
#endif

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

#ifdef TOLVANE_NO_GENERATOR
// A plain large figure: declarations, long morph blocks, props and materials.
void writeCrudeFigure(const fs::path& cr2, std::uint64_t targetBytes) {
  const int actors = 84, morphs = 3200, props = 6, materials = 12;
  const int perActor = morphs / actors + 1;
  const std::uint64_t perMorph = targetBytes / (actors * perActor);
  std::ofstream out(cr2, std::ios::binary);
  auto w = [&](const std::string& s) { out << s << "\r\n"; };
  w("{");
  w("version");
  w("\t{");
  w("\tnumber 4.01");
  w("\t}");
  w("figureResFile :Runtime:Geometries:Big:big.obj");
  for (int a = 0; a < actors; ++a) {
    std::string name = a == 0 ? "BODY:1" : "part" + std::to_string(a) + ":1";
    w("actor " + name);
    w("\t{");
    w(a == 0 ? "\t" : "\tstorageOffset 0 0 0");
    if (a) w("\tgeomHandlerGeom 13 part" + std::to_string(a));
    w("\t}");
  }
  for (int p = 0; p < props; ++p) {
    w("prop thing" + std::to_string(p) + ":1");
    w("\t{");
    w("\tstorageOffset 0 0.3487 0");
    w("\tobjFileGeom 0 0 :Runtime:Geometries:Big:thing" + std::to_string(p) + ".obj");
    w("\t}");
  }
  for (int a = 0; a < actors; ++a) {
    std::string name = a == 0 ? "BODY:1" : "part" + std::to_string(a) + ":1";
    w("actor " + name);
    w("\t{");
    w("");
    w("\tname " + name);
    w("\tchannels");
    w("\t\t{");
    for (int m = 0; m < perActor && a > 0; ++m) {
      std::string morph = "morph" + std::to_string(a) + "_" + std::to_string(m);
      w("\t\ttargetGeom " + morph);
      w("\t\t\t{");
      w("\t\t\tname " + morph);
      w("\t\t\tinitValue 0");
      w("\t\t\tkeys");
      w("\t\t\t\t{");
      w("\t\t\t\tk 0 0");
      w("\t\t\t\t}");
      w("\t\t\tinterpStyleLocked 0");
      w("\t\t\tdeltas");
      w("\t\t\t\t{");
      for (std::uint64_t bytes = 0, d = 0; bytes < perMorph; ++d) {
        std::string line = "\t\t\t\td " + std::to_string(d) + " 0.00123 -0.00456 0.00789";
        bytes += line.size() + 2;
        w(line);
      }
      w("\t\t\t\t}");
      w("\t\t\t}");
    }
    w("\t\t}");
    w("\t}");
  }
  w("figureResFile :Runtime:Geometries:Big:big.obj");
  w("figure");
  w("\t{");
  w("\tname Figure 1");
  for (int m = 0; m < materials; ++m) {
    w("\tmaterial " + std::string(m == 0 ? "skin" : "mat" + std::to_string(m)));
    w("\t\t{");
    w("\t\tKdColor 1 0.8 0.6 1");
    w("\t\tKaColor 0 0 0 1");
    w("\t\tKsColor 0.1 0.1 0.1 1");
    w("\t\ttextureMap :Runtime:textures:Big:t" + std::to_string(m % 3) + ".jpg");
    w("\t\tbumpMap NO_MAP");
    w("\t\treflectionMap NO_MAP");
    w("\t\ttransparencyMap NO_MAP");
    w("\t\t}");
  }
  w("\tpresetMaterial skin");
  w("\t}");
  w("}");
}
#endif

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
  services.dialog(figure.string());
  for (int i = 0; i < 8; ++i) services.answer(tolvane::ui::Answer::OK);
  double s = secondsOf([&] { tolvane::fireEvent(program, "Opening", "MenuFileOpen", tolvane::EventKind::Click); });
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
    fs::create_directories(poser / "Runtime/Geometries/Big");
#ifdef TOLVANE_NO_GENERATOR
    writeCrudeFigure(figure, 100ull << 20);
#else
    tolvane::gen::writeLargeFigure(figure, {});
#endif
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
