// The OBJ workbench against plain work on the same files in the same run:
//  - the load of a 1,000,000-triangle OBJ (scratch records, lists, still pictures, the
//    live view's list) against one pass that counts v/vt/f lines and converts the vertex
//    numbers with std::from_chars, with the load's peak memory against the vertex table
//    and the live view's list;
//  - Mash and OBJ scaling of a 100 MB OBJ against cp;
//  - frames of the live view's software renderer on a 10,000-vertex mesh;
//  - the mesh tools on the loaded 1,000,000-triangle OBJ: a UV template, a mirror, a
//    merge with a second copy of itself and a box lop, each against the plain pass.
// Usage: obj_bench [triangles [scale-MB]]
#include <sys/resource.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "app/app.h"
#include "generator/obj_mesh.h"
#include "obj/obj_view.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

double cpuSeconds() {
  struct rusage u {};
  ::getrusage(RUSAGE_SELF, &u);
  return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
         static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

double secondsOf(const std::function<void()>& run) {
  auto start = Clock::now();
  run();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Plain {
  std::uint64_t v = 0, vt = 0, f = 0;
  double sum = 0;
};

// One pass in 4 MB blocks: lines counted by kind, vertex numbers converted.
Plain plainParse(const fs::path& file) {
  Plain p;
  std::ifstream in(file, std::ios::binary);
  std::vector<char> block(4 << 20);
  std::string carry;
  auto line = [&p](const char* s, const char* e) {
    if (e - s > 2 && s[0] == 'v' && s[1] == ' ') {
      ++p.v;
      for (const char* q = s + 2; q < e;) {
        double d = 0;
        auto r = std::from_chars(q, e, d);
        p.sum += d;
        q = r.ptr == q ? q + 1 : r.ptr;
      }
    } else if (e - s > 2 && s[0] == 'v' && s[1] == 't') {
      ++p.vt;
    } else if (e - s > 1 && s[0] == 'f' && s[1] == ' ') {
      ++p.f;
    }
  };
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    std::size_t n = static_cast<std::size_t>(in.gcount());
    const char* s = block.data();
    const char* end = s + n;
    for (const char* q = s; q < end; ++q) {
      if (*q != '\n') continue;
      if (!carry.empty()) {
        carry.append(s, q);
        line(carry.data(), carry.data() + carry.size() - (carry.back() == '\r'));
        carry.clear();
      } else {
        line(s, q - (q > s && q[-1] == '\r'));
      }
      s = q + 1;
    }
    carry.append(s, end);
  }
  return p;
}

long residentKb(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string key;
  for (std::string word; status >> word;) {
    if (word == field) {
      long kb = 0;
      status >> kb;
      return kb;
    }
  }
  return 0;
}

struct Session {
  tolvane::ui::ScriptedServices services;
  tolvane::ui::MemorySettings settings;
  std::unique_ptr<tolvane::Program> program;
  explicit Session(const fs::path& work) {
    tolvane::ProgramOptions options;
    options.workDir = work;
    options.currentDir = work;
    program = std::make_unique<tolvane::Program>(services, settings, options);
    tolvane::app::wire(*program);
  }
  void load(const fs::path& obj) {
    program->opening.OpenFilePath = obj.string();
    program->opening.LabelOBJFileName.setCaption(obj.string());
    tolvane::fireEvent(*program, "Opening", "PictureOBJView", tolvane::EventKind::Click);
    tolvane::fireEvent(*program, "FormOBJ", "LabelView", tolvane::EventKind::Click);
    for (const auto& m : services.messages())
      std::fprintf(stderr, "message: %s: %s\n", m.title.c_str(), m.text.c_str());
  }
};

void loadFigures(const fs::path& temp, std::uint64_t triangles) {
  fs::path obj = temp / "mesh.obj";
  tolvane::gen::MeshSize size = tolvane::gen::writeGridObj(obj, triangles);
  Plain plain;
  plainParse(obj);  // the file into the page cache
  double plainSeconds = 1e9, loadSeconds = 1e9, plainCpu = 1e9, loadCpu = 1e9;
  long peakKb = 0;
  std::size_t tableBytes = 0, listBytes = 0;
  for (int i = 0; i < 3; ++i) {
    double cpu = cpuSeconds();
    plainSeconds = std::min(plainSeconds, secondsOf([&] { plain = plainParse(obj); }));
    plainCpu = std::min(plainCpu, cpuSeconds() - cpu);
    Session s(temp);
    long before = residentKb("VmRSS:");
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts from here
    cpu = cpuSeconds();
    loadSeconds = std::min(loadSeconds, secondsOf([&] { s.load(obj); }));
    loadCpu = std::min(loadCpu, cpuSeconds() - cpu);
    peakKb = std::max(peakKb, residentKb("VmHWM:") - before);
    tableBytes = s.program->formOBJ.vertexTable.size() * sizeof(tolvane::ui::ObjVertex);
    listBytes = s.program->formOBJ.vertexList.size() * sizeof(tolvane::ui::Vec3);
  }
  double model = static_cast<double>(tableBytes + listBytes) / (1 << 20);
  std::printf("mesh            %.1f MB, %llu vertices, %llu triangles\n",
              static_cast<double>(size.bytes) / (1 << 20), static_cast<unsigned long long>(size.vertices),
              static_cast<unsigned long long>(size.triangles));
  std::printf("plain parse     %.3f s, %.3f s of processor time (%llu v, %llu vt, %llu f)\n", plainSeconds,
              plainCpu, static_cast<unsigned long long>(plain.v), static_cast<unsigned long long>(plain.vt),
              static_cast<unsigned long long>(plain.f));
  std::printf("load            %.3f s, %.3f s of processor time (FArray.txt %.0f MB)\n", loadSeconds, loadCpu,
              static_cast<double>(fs::file_size(temp / "FArray.txt")) / (1 << 20));
  std::printf("load / plain    %.1f (goal: under 5, and the load under 3 s)\n", loadSeconds / plainSeconds);
  std::printf(
      "load peak       %.1f MB above the start; vertex table + list %.1f MB; ratio %.1f (goal: under 4)\n",
      static_cast<double>(peakKb) / 1024, model, static_cast<double>(peakKb) / 1024 / model);
}

void mashAndScaleFigures(const fs::path& temp, std::uint64_t megabytes) {
  fs::path big = temp / "big.obj";
  tolvane::gen::MeshSize size = tolvane::gen::writeGridObj(big, megabytes * 1000000 / 58);
  fs::path copy = temp / "copy.obj";
  auto cp = [&] {
    fs::remove(copy);
    std::string command = "cp '" + big.string() + "' '" + copy.string() + "'";
    if (std::system(command.c_str()) != 0) std::fprintf(stderr, "cp failed\n");
  };
  cp();
  double cpSeconds = 1e9, mashSeconds = 1e9, scaleSeconds = 1e9;
  for (int i = 0; i < 3; ++i) {
    cpSeconds = std::min(cpSeconds, secondsOf(cp));
    Session s(temp);
    s.program->opening.LabelOBJFileName.setCaption(copy.string());
    s.program->opening.OptionMashOBJ.setVisible(true);
    s.program->opening.OptionMashOBJ.setValue(true);
    s.services.answer(tolvane::ui::Answer::OK);
    fs::remove(temp / "copy.bak");
    mashSeconds =
        std::min(mashSeconds, secondsOf([&] {
                   tolvane::fireEvent(*s.program, "Opening", "PictureMash", tolvane::EventKind::Click);
                 }));
    cp();
    s.program->opening.TextOBJScale.setText("2");
    s.services.answer(tolvane::ui::Answer::OK);
    tolvane::EventArgs enter;
    enter.keyCode = 13;
    scaleSeconds =
        std::min(scaleSeconds, secondsOf([&] {
                   tolvane::fireEvent(*s.program, "Opening", "TextOBJScale", tolvane::EventKind::Key, enter);
                 }));
    cp();
  }
  std::printf("scale file      %.1f MB\n", static_cast<double>(size.bytes) / (1 << 20));
  std::printf("cp              %.3f s\n", cpSeconds);
  std::printf("mash            %.3f s, %.1f x cp (goal: within 3)\n", mashSeconds, mashSeconds / cpSeconds);
  std::printf("scale x2        %.3f s, %.1f x cp (goal: within 3)\n", scaleSeconds, scaleSeconds / cpSeconds);
}

void softwareViewFigures(const fs::path& temp) {
  fs::path obj = temp / "small.obj";
  tolvane::gen::MeshSize size = tolvane::gen::writeGridObj(obj, 19600, false);
  Session s(temp);
  s.load(obj);
  tolvane::ui::FormOBJ& f = s.program->formOBJ;
  f.stopFlag = 0;
  f.TimerRotate.setEnabled(true);
  int frames = 0;
  double seconds = secondsOf([&] {
    for (auto end = Clock::now() + std::chrono::seconds(2); Clock::now() < end; ++frames)
      tolvane::obj::RotateTick(*s.program);
  });
  std::printf("software view   %llu vertices, %zu in the list: %.0f frames a second (goal: 30 or more)\n",
              static_cast<unsigned long long>(size.vertices), f.vertexList.size(), frames / seconds);
}

// The tools on the loaded mesh; each answer they ask for is queued before the click.
void toolFigures(const fs::path& temp, std::uint64_t triangles) {
  fs::path obj = temp / "tools.obj";
  tolvane::gen::writeGridObj(obj, triangles);
  fs::path second = temp / "second.obj";
  fs::copy_file(obj, second, fs::copy_options::overwrite_existing);
  plainParse(obj);
  double plainSeconds = 1e9, plainCpu = 1e9;
  for (int i = 0; i < 3; ++i) {
    double cpu = cpuSeconds();
    plainSeconds = std::min(plainSeconds, secondsOf([&] { plainParse(obj); }));
    plainCpu = std::min(plainCpu, cpuSeconds() - cpu);
  }
  Session s(temp);
  s.load(obj);
  tolvane::Program& p = *s.program;
  using tolvane::EventKind;
  using tolvane::ui::Answer;
  auto fire = [&p](const char* control, EventKind kind, const tolvane::EventArgs& args = {}) {
    tolvane::fireEvent(p, "FormOBJ", control, kind, args);
  };
  double cpu = cpuSeconds();
  double uv = secondsOf([&] { fire("LabelUVMap", EventKind::Click); });
  double uvCpu = cpuSeconds() - cpu;
  cpu = cpuSeconds();
  double mirror = secondsOf([&] {
    s.services.answer(Answer::Yes);
    s.services.answer(Answer::No);
    s.services.answer(Answer::No);
    s.services.answer(Answer::OK);
    s.services.cancelDialog();
    fire("LabelMirror", EventKind::Click);
  });
  double mirrorCpu = cpuSeconds() - cpu;
  cpu = cpuSeconds();
  double add = secondsOf([&] {
    s.services.dialog(second.string());
    fire("PictureAddOBJ", EventKind::Click);
  });
  double addCpu = cpuSeconds() - cpu;
  cpu = cpuSeconds();
  double mergeOnly = secondsOf([&] {
    s.services.answer(Answer::OK);
    fire("PictureMerge", EventKind::Click);
  });
  double mergeCpu = cpuSeconds() - cpu;
  double merge = add + mergeOnly;
  p.formOBJ.secondaryHeld = false;
  cpu = cpuSeconds();
  double lop = secondsOf([&] {
    fire("PictureLop", EventKind::Click);
    tolvane::EventArgs a;
    a.x = 200;
    a.y = 200;
    fire("PictureStore", EventKind::Press, a);
    a.x = 280;
    a.y = 280;
    fire("PictureStore", EventKind::MouseMove, a);
    s.services.answer(Answer::Yes);
    s.services.cancelDialog();
    fire("PictureStore", EventKind::Release, a);
  });
  double lopCpu = cpuSeconds() - cpu;
  for (const auto& m : s.services.messages())
    if (m.title.rfind("Run-time", 0) == 0 || m.text.rfind("Run-time", 0) == 0)
      std::fprintf(stderr, "message: %s: %s\n", m.title.c_str(), m.text.c_str());
  // The processor-time ratios hold steadier than the wall-clock ones on a shared machine.
  std::printf("tools plain     %.3f s (%.3f s processor)\n", plainSeconds, plainCpu);
  auto row = [&](const char* name, double seconds, double processor, const char* note) {
    std::printf("%-15s %.3f s, %.1f x plain (%.3f s processor, %.1f x) (goal: within 5%s)\n", name, seconds,
                seconds / plainSeconds, processor, processor / plainCpu, note);
  };
  row("UV template", uv, uvCpu, "");
  row("mirror", mirror, mirrorCpu, "");
  row("merge", merge, addCpu + mergeCpu, "; the second mesh's parse included");
  std::printf("  of which       the second mesh's parse %.3f s (%.3f s processor), the merge %.3f s (%.3f s)\n",
              add, addCpu, mergeOnly, mergeCpu);
  row("box lop", lop, lopCpu, "");
}

}  // namespace

int main(int argc, char** argv) {
  std::uint64_t triangles = argc > 1 ? std::stoull(argv[1]) : 1000000;
  if (argc > 3 && std::string(argv[3]) == "tools") {  // the mesh tools alone
    fs::path temp = fs::temp_directory_path() / ("tolvane-obj-bench-" + std::to_string(::getpid()));
    fs::create_directories(temp);
    toolFigures(temp, triangles);
    fs::remove_all(temp);
    return 0;
  }
  std::uint64_t megabytes = argc > 2 ? std::stoull(argv[2]) : 100;
  fs::path temp = fs::temp_directory_path() / ("tolvane-obj-bench-" + std::to_string(::getpid()));
  fs::create_directories(temp);
  loadFigures(temp, triangles);
  mashAndScaleFigures(temp, megabytes);
  softwareViewFigures(temp);
  toolFigures(temp, triangles);
  fs::remove_all(temp);
  return 0;
}
