// The Manual Editor's pane on screen with a generated 50 MB figure, offscreen: the load
// and first paint, typing at the top, paging, a jump to the middle, and the peak memory,
// beside a plain read of the same file. Usage: editor_view_bench [MEGABYTES].
#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "editor/editor_panes.h"
#include "generator/generator.h"
#include "gui/editor_view.h"
#include "ui/form_editor.h"

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

long peakKiB() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  return -1;
}

double plainRead(const std::filesystem::path& path) {
  auto start = Clock::now();
  std::string bytes(std::filesystem::file_size(path), '\0');
  int fd = ::open(path.c_str(), O_RDONLY);
  std::size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
    if (n <= 0) break;
    done += static_cast<std::size_t>(n);
  }
  ::close(fd);
  return secondsSince(start);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tolvane;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  std::uint64_t megabytes = argc > 1 ? std::stoull(argv[1]) : 50;
  auto dir = std::filesystem::temp_directory_path() / ("editor_view_bench_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  auto file = dir / "big.cr2";
  gen::LargeFigureOptions options;
  options.targetBytes = megabytes << 20;
  gen::writeLargeFigure(file, options);

  ui::FormEditor form;
  gui::EditorView view(form.RichTextBox1);
  view.resize(900, 700);
  view.show();
  app.processEvents();
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak from here on

  double read = plainRead(file);
  auto start = Clock::now();
  editor::loadPaneFile(form.RichTextBox1, file.string());
  view.refresh();
  view.repaint();
  double load = secondsSince(start);

  start = Clock::now();
  for (int i = 0; i < 50; ++i) {
    QTest::keyClick(&view, Qt::Key_X);
    view.refresh();
    view.repaint();
  }
  double typing = secondsSince(start) / 50;

  start = Clock::now();
  for (int i = 0; i < 50; ++i) {
    QTest::keyClick(&view, Qt::Key_PageDown);
    view.repaint();
  }
  double paging = secondsSince(start) / 50;

  start = Clock::now();
  view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() / 2);
  view.repaint();
  double jump = secondsSince(start);

  std::printf("figure:              %.1f MB, %lld lines\n", std::filesystem::file_size(file) / 1048576.0,
              static_cast<long long>(form.RichTextBox1->lineCount()));
  std::printf("plain read:          %8.3f s\n", read);
  std::printf("load and first paint:%8.3f s  (%.2f x plain read)\n", load, load / read);
  std::printf("a key typed at top:  %8.1f ms\n", typing * 1000);
  std::printf("a page down:         %8.1f ms\n", paging * 1000);
  std::printf("jump to the middle:  %8.1f ms\n", jump * 1000);
  std::printf("peak memory:         %8.1f MB (VmHWM)\n", peakKiB() / 1024.0);
  std::filesystem::remove_all(dir);
  return 0;
}
