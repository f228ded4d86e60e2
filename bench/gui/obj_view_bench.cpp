// Frames a second of the live view on OpenGL (run under an X server: xvfb-run -a):
// the list that the load builds from a 1,000,000-triangle OBJ, and a list of 1,000,000
// whole triangles, each turned as the rotation does it, one frame painted per step.
// Usage: obj_view_bench [triangles]
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <cstdio>
#include <filesystem>

#include "app/app.h"
#include "generator/obj_mesh.h"
#include "gui/gl_mesh_view.h"
#include "program/program.h"
#include "ui/scripted_services.h"
#include "ui/settings.h"

namespace fs = std::filesystem;
using namespace tolvane;

namespace {

double framesASecond(gui::GlMeshView& view, const ui::VertexList& list, int seconds) {
  view.setCamera({-3.0f, 2.5f, 0}, {0, 2.5f, 0}, {0, 1, 0});
  view.setProjection(1, 1000, 3.14f / 2);
  view.setMaterial(0, 0, 1);
  long long start = view.framesPainted();
  QElapsedTimer timer;
  timer.start();
  for (int angle = 0; timer.elapsed() < seconds * 1000; ++angle) {
    long long before = view.framesPainted();
    view.clear(ui::kWhite);
    view.drawTriangles(list);
    view.setWorldRotationY(static_cast<float>(angle) / 360);
    view.present();
    while (view.framesPainted() == before && timer.elapsed() < seconds * 1000) QApplication::processEvents();
  }
  return static_cast<double>(view.framesPainted() - start) * 1000.0 / static_cast<double>(timer.elapsed());
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::uint64_t triangles = argc > 1 ? std::stoull(argv[1]) : 1000000;
  if (!gui::openGlUsable()) {
    std::printf("no OpenGL context on the platform \"%s\": run under xvfb-run -a\n",
                qPrintable(QGuiApplication::platformName()));
    return 0;
  }
  fs::path temp = fs::temp_directory_path() / ("tolvane-view-bench-" + std::to_string(QCoreApplication::applicationPid()));
  fs::create_directories(temp);
  fs::path obj = temp / "mesh.obj";
  gen::writeGridObj(obj, triangles, false);
  ui::ScriptedServices services;
  ui::MemorySettings settings;
  ProgramOptions options;
  options.workDir = temp;
  options.currentDir = temp;
  Program program(services, settings, options);
  app::wire(program);
  program.opening.OpenFilePath = obj.string();
  fireEvent(program, "Opening", "PictureOBJView", EventKind::Click);
  fireEvent(program, "FormOBJ", "LabelView", EventKind::Click);
  const ui::VertexList& loaded = program.formOBJ.vertexList;

  gui::GlMeshView view(nullptr, ui::kObjPictureSize);
  view.show();
  if (!QTest::qWaitForWindowExposed(&view)) std::printf("the view was not shown\n");
  double fromLoad = framesASecond(view, loaded, 3);
  std::printf("GL view, the load's list  %zu vertices (%zu triangles): %.1f frames a second (goal: 30)\n",
              loaded.size(), loaded.size() / 3, fromLoad);
  ui::VertexList whole;
  for (std::size_t i = 0; i + 2 < loaded.size() && whole.size() < triangles * 3; i += 3)
    for (int copy = 0; copy < 2 && whole.size() < triangles * 3; ++copy)
      for (std::size_t k = 0; k < 3; ++k) whole.push_back(loaded[i + k]);
  double fromWhole = framesASecond(view, whole, 3);
  std::printf("GL view, whole triangles  %zu vertices (%zu triangles): %.1f frames a second\n", whole.size(),
              whole.size() / 3, fromWhole);
  std::printf("renderer                  %s\n", reinterpret_cast<const char*>(view.context()->functions()->glGetString(GL_RENDERER)));
  fs::remove_all(temp);
  return 0;
}
