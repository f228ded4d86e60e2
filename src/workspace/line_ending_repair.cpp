#include "workspace/line_ending_repair.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace repair {

namespace {
constexpr std::size_t kTestWindow = 200;
constexpr std::size_t kBlockSize = 2048;

// A read-only file handle that closes itself.
class InputFile {
 public:
  explicit InputFile(const std::filesystem::path& path) : m_path(path) {
    m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_fd < 0) text::raiseError(text::errorNumberFromErrno(errno, false), path.string());
  }
  ~InputFile() { ::close(m_fd); }
  std::size_t read(char* into, std::size_t size) {
    for (;;) {
      ssize_t n = ::read(m_fd, into, size);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) text::raiseError(text::kDeviceIOError, m_path.string());
      return static_cast<std::size_t>(n);
    }
  }

 private:
  std::filesystem::path m_path;
  int m_fd;
};
}  // namespace

bool headHasCrLf(const std::filesystem::path& path) {
  InputFile in(path);
  std::string head(kTestWindow, '\0');
  std::size_t got = 0;
  while (got < kTestWindow) {
    std::size_t n = in.read(head.data() + got, kTestWindow - got);
    if (n == 0) break;
    got += n;
  }
  head.resize(got);
  return head.find("\r\n") != std::string::npos;
}

std::string RepairTempName(const std::string& path) {
  return text::Left(path, static_cast<long long>(text::InStr(path, "."))) + "new";
}

std::string BackupName(const std::string& path) {
  return text::Left(path, static_cast<long long>(text::InStr(path, ".")) - 1) + text::UCase(text::Right(path, 3)) +
         ".bak";
}

void convertLineEndings(const std::filesystem::path& source, const std::filesystem::path& scratch) {
  InputFile in(source);
  text::LineWriter out(scratch, text::LineWriter::Mode::Append);
  std::string buffer;
  std::vector<char> block(kBlockSize);
  // The buffer's head up to `clean` is known to hold no line feed; only what a new
  // block brought is searched, so a file without line feeds stays linear.
  std::size_t clean = 0;
  for (;;) {
    std::size_t n = in.read(block.data(), kBlockSize);
    if (n == 0) break;
    buffer.append(block.data(), n);
    while (1 < buffer.size()) {
      std::size_t lf = buffer.find('\n', clean);
      if (lf == std::string::npos) {
        // No line feed: every carriage return ends a line.
        std::size_t start = 0;
        for (std::size_t cr = buffer.find('\r'); cr != std::string::npos; cr = buffer.find('\r', start)) {
          out.WriteLine(std::string_view(buffer).substr(start, cr - start));
          start = cr + 1;
        }
        buffer.erase(0, start);
        clean = buffer.size();
        break;
      }
      // The character before the line feed decides whether a carriage return goes too;
      // a line feed in first place has no character before it, which is an error.
      if (lf == 0) text::raiseError(text::kInvalidProcedureCall, source.string());
      std::size_t end = buffer[lf - 1] == '\r' ? lf - 1 : lf;
      out.WriteLine(std::string_view(buffer).substr(0, end));
      std::size_t cut = lf + 1;
      if (cut < buffer.size() && buffer[cut] == '\n') ++cut;
      buffer.erase(0, cut);
      clean = 0;
    }
  }
  out.close();
}

}  // namespace repair

namespace {

// Steps shared by both versions once the user agreed: convert into the scratch name,
// then swap the files with errors ignored. Returns the backup name.
std::string convertAndSwap(Program& program, const std::string& path, const std::string& temp) {
  std::filesystem::path tempPath = text::nativePath(temp);
  if (tempPath.is_relative()) tempPath = program.currentDir / tempPath;
  text::deleteIgnoringErrors(tempPath);
  program.setBusy(true);
  repair::convertLineEndings(text::nativePath(path), tempPath);
  std::string backup = repair::BackupName(path);
  std::filesystem::path file = text::nativePath(path);
  std::filesystem::path backupPath = text::nativePath(backup);
  text::ignoreErrors([&] { text::killFile(backupPath); });
  text::ignoreErrors([&] { text::renameFile(file, backupPath); });
  text::ignoreErrors([&] { text::renameFile(tempPath, file); });
  program.setBusy(false);
  return backup;
}

}  // namespace

void RepairLineEndings(Program& program, std::string& path) {
  if (path.empty()) path = program.opening.LabelFileName.caption();
  if (repair::headHasCrLf(text::nativePath(path))) return;
  program.services.beep();
  ui::Answer answer = ui::msgBox(program.services,
                                 "Tolvane may not be able to process this file, due to its unconventional "
                                 "construction.  Click OK to backup and continue, or Cancel.",
                                 "Sorry!", ui::Buttons::OKCancel, ui::Icon::Exclamation);
  if (answer == ui::Answer::Cancel) {
    program.opening.OpenRefused = -1;
    return;
  }
  ui::msgBox(program.services,
             "Unconventional line ending! Please wait while it is fixed -- you will only need to do this once, "
             "and it will not affect the file for Poser.",
             "Note!", ui::Buttons::OK, ui::Icon::Information);
  std::string backup = convertAndSwap(program, path, repair::RepairTempName(path));
  ui::msgBox(program.services, path + " converted, original saved as " + backup + "  Tolvane will now continue.",
             "Success!", ui::Buttons::OK, ui::Icon::Information);
}

bool RepairLineEndingsEditor(Program& program, const std::string& path) {
  if (repair::headHasCrLf(text::nativePath(path))) return false;
  ui::Answer answer = ui::msgBox(program.services,
                                 "Unconventional line ending! Would you like to have it fixed? You will only need "
                                 "to do this once, and it will not affect the file for Poser.",
                                 "Note!", ui::Buttons::YesNo, ui::Icon::Question);
  if (answer != ui::Answer::Yes) return false;
  std::string backup = convertAndSwap(program, path, repair::RepairTempName(path));
  ui::msgBox(program.services,
             path + " converted, backup saved as " + backup + ".  The Editor will now load the file.", "Success!",
             ui::Buttons::OK, ui::Icon::Information);
  return true;
}

}  // namespace tolvane
