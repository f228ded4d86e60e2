// Library file writers benchmark: on a generated figure and a generated scene (100 MB
// each by default), runs each writer through its handlers and prints its time, its
// ratio to `cp` of the same input in the same run, and the peak memory of a process
// that runs that writer alone. Every writer streams, so the aim is within 3x of cp and
// under 64 MB.
// Usage: library_bench [MB] [WRITER] (WRITER: run only the writers whose name holds it)
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "tool_bench.h"

namespace {

namespace fs = std::filesystem;
using tolvane::bench::cpSeconds;
using tolvane::bench::require;
using tolvane::bench::timed;
using tolvane::EventKind;
using tolvane::ui::Answer;

struct Bench : tolvane::bench::ToolBench {
  fs::path figure, scene;

  explicit Bench(std::uint64_t megabytes) : ToolBench("library") {
    figure = generate("large.cr2", megabytes);
    scene = dir / "large.pz3";
    tolvane::gen::LargeFigureOptions options;
    options.targetBytes = megabytes << 20;
    tolvane::gen::writeLargeScene(scene, options);
    std::printf("scene %.1f MB\n", static_cast<double>(fs::file_size(scene)) / 1e6);
    settings.save(tolvane::kAppName, "Startup", "PLoc", (dir / "poser").string() + "/");
    fs::create_directories(dir / "poser");
  }
  void open(const fs::path& path) { program->opening.LabelFileNameForEditor.setCaption(path.string()); }
  void fire(const std::string& form, const std::string& control, EventKind kind = EventKind::Click) {
    tolvane::fireEvent(*program, form, control, kind);
  }
  void clean() {
    for (const char* name : {"largeMaster.cr2", "largeNew.pz2", "large.mtl", "out.cr2", "out.pz2", "mor.pz2"})
      fs::remove(dir / name);
    fs::remove(dir / "poser" / "NullFig.cr2");
    fs::remove(dir / "work" / "Pose.txt");
  }
};

struct Writer {
  const char* name;
  bool onScene;
  std::function<void(Bench&)> prepare;  // untimed
  std::function<void(Bench&)> run;      // timed
};

const Writer kWriters[] = {
    {"master CR2", false, {}, [](Bench& b) {
       b.services.answer(Answer::OK);
       b.fire("Opening", "MenuAnyMasterStandard");
     }},
    {"master, no FBM", false, {}, [](Bench& b) {
       b.services.answer(Answer::OK);
       b.fire("Opening", "MenuAnyMasterNoFBM");
     }},
    {"null figure", false, {}, [](Bench& b) {
       b.services.answer(Answer::OK);
       b.fire("Opening", "menuNullFig");
     }},
    {"pose file", false,
     [](Bench& b) {
       b.fire("Opening", "MenuPoseFile");
       auto& f = b.program->formPZ2;
       f.ListActorsWanted.setItems(f.ListActorsPZ2.items());
     },
     [](Bench& b) {
       b.services.answer(Answer::OK);
       b.fire("FormPZ2", "LabelDonePZ2");
     }},
    {"material file", false,
     [](Bench& b) {
       b.fire("Opening", "menuMatFile");
       b.program->formPZ2.CheckAllMat.setValue(true);
     },
     [](Bench& b) {
       b.services.dialog((b.dir / "out.pz2").string());
       b.fire("FormPZ2", "LabelDonePZ2");
     }},
    {"MOR file", false, {}, [](Bench& b) {
       b.fire("Opening", "MenuMor");
       b.services.dialog((b.dir / "mor.pz2").string());
       b.fire("FormMOR", "LabelDone");
     }},
    {"scene to figure", true, {}, [](Bench& b) {
       b.services.dialog((b.dir / "out.cr2").string());
       b.fire("Opening", "MenuPZ3Cr2Conv");
     }},
    {"MTL", true, {}, [](Bench& b) {
       b.services.answer(Answer::OK);
       b.fire("Opening", "MenuMakeMTL");
     }},
    {"camera restore", true,
     [](Bench& b) {
       fs::copy_file(b.scene, b.dir / "shot.pz3", fs::copy_options::overwrite_existing);
       std::FILE* cam = std::fopen((b.dir / "shot.cam").c_str(), "wb");
       std::fputs("camera MAIN_CAMERA\r\n\t{\r\n\t}\r\n", cam);
       std::fclose(cam);
     },
     [](Bench& b) {
       b.services.dialog((b.dir / "shot.pz3").string());
       b.services.answer(Answer::OK);
       b.fire("Opening", "MenuP3P4Cam");
     }},
};

// Runs the writer in a child process; returns its time and the child's peak memory.
std::pair<double, double> runAlone(Bench& b, const Writer& w) {
  int pipeFds[2];
  require(::pipe(pipeFds) == 0, "pipe");
  pid_t child = ::fork();
  require(child >= 0, "fork");
  if (child == 0) {
    ::close(pipeFds[0]);
    double time = -1;
    try {
      b.clean();
      b.open(w.onScene ? b.scene : b.figure);
      if (w.prepare) w.prepare(b);
      time = timed([&] { w.run(b); });
      if (b.services.pending() != 0 || b.services.runTimeErrorReports() != 0) time = -1;
    } catch (const std::exception& e) {
      std::fprintf(stderr, "%s: %s\n", w.name, e.what());
    }
    if (::write(pipeFds[1], &time, sizeof time) != sizeof time) std::_Exit(2);
    std::_Exit(0);
  }
  ::close(pipeFds[1]);
  double time = -1;
  if (::read(pipeFds[0], &time, sizeof time) != sizeof time) time = -1;
  ::close(pipeFds[0]);
  int status = 0;
  struct rusage usage {};
  ::wait4(child, &status, 0, &usage);
  return {time, usage.ru_maxrss / 1024.0};
}

int run(int argc, char** argv) {
  Bench b(argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 100);
  cpSeconds(b.figure, b.dir / "cp.cr2");  // both inputs into the page cache
  cpSeconds(b.scene, b.dir / "cp.pz3");
  bool ok = true;
  std::printf("best of 5 rounds; cp and cp with the copy flushed, of the writer's input\n");
  std::printf("%-16s %8s %8s %7s %10s %7s %9s\n", "writer", "time", "cp", "ratio", "cp+flush", "ratio", "peak MB");
  std::string only = argc > 2 ? argv[2] : "";
  for (const Writer& w : kWriters) {
    if (std::string(w.name).find(only) == std::string::npos) continue;
    double best = 1e9, cpBest = 1e9, cpFlushed = 1e9, peak = 0;
    for (int round = 0; round < 5; ++round) {
      fs::path input = w.onScene ? b.scene : b.figure;
      cpBest = std::min(cpBest, cpSeconds(input, b.dir / "cp.copy"));
      cpFlushed = std::min(cpFlushed, cpSeconds(input, b.dir / "cp.copy", true));
      ::sync();
      auto [time, memory] = runAlone(b, w);
      require(time >= 0, std::string(w.name) + " failed");
      best = std::min(best, time);
      peak = std::max(peak, memory);
    }
    double ratio = best / cpBest;
    std::printf("%-16s %7.3fs %7.3fs %6.2fx %9.3fs %6.2fx %8.1f\n", w.name, best, cpBest, ratio, cpFlushed,
                best / cpFlushed, peak);
    ok = ok && ratio <= 3.0 && peak < 64.0;
  }
  std::printf("%s\n", ok ? "within the aim (3x cp, under 64 MB)" : "OUTSIDE the aim (3x cp, under 64 MB)");
  return 0;
}

}  // namespace

int main(int argc, char** argv) { return tolvane::bench::benchMain("library_bench", run, argc, argv); }
