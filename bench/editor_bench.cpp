// Manual Editor figures: a generated 50 MB figure loaded into a pane through the
// editor's own hand-over, a replace of all places of a word found 10,000 times, a go to
// line in the middle, and the peak memory, each beside a plain read or scan of the same
// file in the same run.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/app.h"
#include "generator/generator.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/scripted_services.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr const char* kWord = "Quillmark";
constexpr int kWordCount = 10000;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// A generated large figure of about `bytes` bytes, with kWord put at the end of
// kWordCount lines spread evenly through it.
void writeFigure(const std::filesystem::path& path, std::uint64_t bytes) {
  auto plain = path.string() + ".plain";
  tolvane::gen::LargeFigureOptions options;
  options.targetBytes = bytes;
  tolvane::gen::writeLargeFigure(plain, options);
  std::ifstream in(plain, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  in.close();
  std::filesystem::remove(plain);
  std::size_t lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::size_t every = lines / kWordCount, line = 0;
  int words = 0;
  std::string out;
  out.reserve(text.size() + kWordCount * (std::strlen(kWord) + 1));
  std::size_t start = 0;
  for (std::size_t lf = text.find('\n'); lf != std::string::npos; lf = text.find('\n', start)) {
    std::size_t end = lf > start && text[lf - 1] == '\r' ? lf - 1 : lf;
    out.append(text, start, end - start);
    if (words < kWordCount && line++ % every == every / 2) {
      out += ' ';
      out += kWord;
      ++words;
    }
    out.append(text, end, lf + 1 - end);
    start = lf + 1;
  }
  out.append(text, start, std::string::npos);
  std::ofstream(path, std::ios::binary) << out;
}

// Starts the peak memory afresh, so that the figures leave out the generator.
void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

long peakKiB() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  return -1;
}

double plainRead(const std::filesystem::path& path, std::string& into) {
  auto start = Clock::now();
  int fd = ::open(path.c_str(), O_RDONLY);
  into.resize(std::filesystem::file_size(path));
  std::size_t done = 0;
  while (done < into.size()) {
    ssize_t n = ::read(fd, into.data() + done, into.size() - done);
    if (n <= 0) break;
    done += static_cast<std::size_t>(n);
  }
  ::close(fd);
  return secondsSince(start);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tolvane;
  std::size_t megabytes = argc > 1 ? std::stoul(argv[1]) : 50;
  auto dir = std::filesystem::temp_directory_path() / ("editor_bench_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  auto file = dir / "big.cr2";
  writeFigure(file, megabytes << 20);
  std::printf("figure: %.1f MB, %d places of \"%s\"\n", std::filesystem::file_size(file) / 1048576.0,
              kWordCount, kWord);

  std::string plain;
  double readTime = plainRead(file, plain);
  auto scanStart = Clock::now();
  int count = 0;
  for (std::size_t at = plain.find(kWord); at != std::string::npos; at = plain.find(kWord, at + 1)) ++count;
  double scanTime = secondsSince(scanStart);
  std::string().swap(plain);

  ui::ScriptedServices services;
  ui::MemorySettings settings;
  ProgramOptions options{dir, dir, dir.string(), ""};
  Program program(services, settings, options);
  app::wire(program);
  program.opening.LabelFileNameForEditor.setCaption(file.string());

  resetPeak();
  long before = peakKiB();
  auto loadStart = Clock::now();
  fireEvent(program, "Opening", "LabelFileName", EventKind::Click);
  double loadTime = secondsSince(loadStart);
  long peakAfterLoad = peakKiB();

  ui::FormEditor& form = program.formEditor;
  auto gotoStart = Clock::now();
  std::int64_t lines = form.RichTextBox1->lineFromChar(form.RichTextBox1->length()) + 1;
  form.TextLineNum.setText(std::to_string(lines / 2));
  fireEvent(program, "FormEditor", "CommandGotoLineNum", EventKind::Click);
  double gotoTime = secondsSince(gotoStart);

  fireEvent(program, "FormEditor", "PictureReplace", EventKind::Click);
  form.ComboFind.setText(kWord);
  form.TextReplace.setText("Tolvanemark");
  form.RichTextBox1->setSelection(0, 0);
  auto replaceStart = Clock::now();
  fireEvent(program, "FormEditor", "TextReplace", EventKind::Enter);
  double replaceTime = secondsSince(replaceStart);
  form.RichTextBox1->setSelection(0, 0);
  std::int64_t left = form.RichTextBox1->find(kWord, 0, ui::kFindMatchCase);

  std::printf("plain read:        %8.3f s\n", readTime);
  std::printf("load into pane:    %8.3f s  (%.2f x plain read)\n", loadTime, loadTime / readTime);
  std::printf("go to line %lld of %lld: %8.3f s\n", static_cast<long long>(lines / 2),
              static_cast<long long>(lines), gotoTime);
  std::printf("plain scan:        %8.3f s  (%d places)\n", scanTime, count);
  std::printf("replace all:       %8.3f s  (%.2f x plain read + scan), none left: %s\n", replaceTime,
              replaceTime / (readTime + scanTime), left == -1 ? "yes" : "no");
  std::printf("peak memory:       %8.1f MB before the load, %.1f MB after it, %.1f MB at the end (VmHWM)\n",
              before / 1024.0, peakAfterLoad / 1024.0, peakKiB() / 1024.0);
  std::filesystem::remove_all(dir);
  return left == -1 && count == kWordCount ? 0 : 1;
}
