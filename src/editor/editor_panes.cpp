#include "editor/editor_panes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "text/figure_text.h"
#include "text/gzip_file.h"
#include "text/progress.h"
#include "text/read_only_file.h"
#include "workspace/line_ending_repair.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "program/program.h"

namespace tolvane::editor {

ui::TextPane& paneOf(ui::FormEditor& form, Side side) {
  return side == Side::Left ? form.RichTextBox1 : form.RichTextBox2;
}

Side activeSide(const ui::FormEditor& form) { return form.rightActive() ? Side::Right : Side::Left; }

int& changedFlag(ui::FormEditor& form, Side side) {
  return side == Side::Left ? form.LeftPaneChanged : form.RightPaneChanged;
}

std::string paneFile(const ui::FormEditor& form, Side side) {
  return side == Side::Left ? form.LeftPaneFile : form.LabelSecFile.caption();
}

std::string sizeCaption(std::uint64_t length) {
  return text::StrInteger(static_cast<long long>(length)) + " bytes";
}

std::uint64_t largestPaneFile() {
  const long pages = ::sysconf(_SC_PHYS_PAGES), pageSize = ::sysconf(_SC_PAGESIZE);
  const std::uint64_t memory = pages > 0 && pageSize > 0 ? std::uint64_t(pages) * std::uint64_t(pageSize) : 0;
  return memory == 0 ? kLargestPaneFile : std::min(kLargestPaneFile, memory / 4);
}

void checkPaneCanHold(const std::string& path, std::uint64_t length) {
  const std::uint64_t most = largestPaneFile();
  if (length <= most) return;
  throw text::RuntimeError(text::kOutOfMemory,
                           "This file is " + std::to_string(length >> 20) +
                               " MB, more than the Manual Editor can hold (" + std::to_string(most >> 20) +
                               " MB). It is left as it was; open it in an editor made for large files, or "
                               "work on it with the channel tools, which read it piece by piece.",
                           path);
}

namespace {
// The file is read in pieces of this size, so that a large one reports how far it is.
constexpr std::size_t kLoadPiece = std::size_t(8) << 20;

// The whole file into one string, read piece by piece: the pane holds the text in
// memory anyway.
std::string readWholeFile(const std::string& path) {
  std::filesystem::path native = text::nativePath(path);
  if (text::gzip::isPacked(native)) {
    // A compressed figure: the pane holds the text it unpacks to.
    text::ReadOnlyFile in(native);
    checkPaneCanHold(path, in.length());
    std::string bytes(static_cast<std::size_t>(in.length()), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
      std::size_t n = in.readAt(done, bytes.data() + done, std::min(kLoadPiece, bytes.size() - done));
      if (n == 0) break;
      done += n;
      text::reportProgress(done, bytes.size());
    }
    bytes.resize(done);
    return bytes;
  }
  int fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0)
    text::raiseError(errno == ENOENT ? text::kFileNotFound : text::errorNumberFromErrno(errno, false), path);
  std::string bytes;
  try {
    struct stat st {};
    if (::fstat(fd, &st) != 0) text::raiseError(text::kDeviceIOError, path);
    // A folder opens like a file and fails only at the read: name it for what it is.
    if (S_ISDIR(st.st_mode)) text::raiseError(text::kPathFileAccessError, path);
    const std::size_t length = static_cast<std::size_t>(st.st_size);
    checkPaneCanHold(path, length);
    bytes.reserve(length + length / 8 + 4096);  // the pane's room for edits
    bytes.resize(length);
    std::size_t done = 0;
    while (done < bytes.size()) {
      ssize_t n = ::read(fd, bytes.data() + done, std::min(kLoadPiece, bytes.size() - done));
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) text::raiseError(text::kDeviceIOError, path);
      if (n == 0) break;
      done += static_cast<std::size_t>(n);
      text::reportProgress(done, bytes.size());
    }
    bytes.resize(done);
  } catch (...) {
    ::close(fd);
    throw;
  }
  ::close(fd);
  return bytes;
}
}  // namespace

std::uint64_t loadPaneFile(ui::TextPane& pane, const std::string& path) {
  std::string bytes = readWholeFile(path);
  auto length = static_cast<std::uint64_t>(bytes.size());
  pane->setText(std::move(bytes));
  pane.textChanged();
  return length;
}

void openInPane(Program& program, Side side, const std::string& path) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, side);
  pane.setVisible(true);
  if (side == Side::Right) {
    form.bringToFront(pane);
    form.RichTextBox1.setWidth(ui::kPaneShrunkWidth);
  } else if (form.RichTextBox2.visible()) {
    form.RichTextBox1.setWidth(ui::kPaneShrunkWidth);
  }
  // A file too large is refused before the repair offers to rewrite it.
  struct stat st {};
  if (::stat(text::nativePath(path).c_str(), &st) == 0 && S_ISREG(st.st_mode))
    checkPaneCanHold(path, st.st_size);
  RepairLineEndingsEditor(program, path);
  program.setBusy(true);
  std::uint64_t length = loadPaneFile(pane, path);
  program.setBusy(false);
  changedFlag(form, side) = 0;
  ui::Label& shown = side == Side::Left ? form.LabelFileSizeEd1 : form.LabelFileSizeEd2;
  ui::Label& hidden = side == Side::Left ? form.LabelFileSizeEd2 : form.LabelFileSizeEd1;
  shown.setCaption(sizeCaption(length));
  shown.setVisible(true);
  hidden.setVisible(false);
  if (side == Side::Left) {
    form.LeftPaneFile = path;
    form.setCaption(path);
  } else {
    form.LabelSecFile.setCaption(path);
  }
}

}  // namespace tolvane::editor
