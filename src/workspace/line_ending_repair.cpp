#include "workspace/line_ending_repair.h"

#include <algorithm>
#include <memory>

#include "text/disk.h"
#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/progress.h"
#include "text/read_only_file.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace repair {

namespace {
constexpr std::size_t kTestWindow = 200;
constexpr std::size_t kBlockSize = 2048;
constexpr std::size_t kReadSize = 1 << 20;

// The conversion's text rules over blocks of 2,048 bytes. The text not yet written
// starts at `m_start`; up to `m_clean` it is known to hold no line end, so every byte
// is searched once and the work stays linear however long a line is.
class Converter {
 public:
  Converter(text::LineWriter& out, const std::filesystem::path& source, std::size_t longestLine)
      : m_out(out), m_source(source), m_longest(longestLine) {}

  void block(std::string_view bytes) {
    m_buffer.append(bytes);
    while (m_buffer.size() - m_start > 1) {
      std::size_t lf = m_buffer.find('\n', std::max(m_clean, m_start));
      if (lf == std::string::npos) {
        splitAtCarriageReturns();
        break;
      }
      // The character before the line feed decides whether a carriage return goes too;
      // a line feed in first place has no character before it, which is an error.
      if (lf == m_start) text::raiseError(text::kInvalidProcedureCall, m_source.string());
      std::size_t end = m_buffer[lf - 1] == '\r' ? lf - 1 : lf;
      m_out.WriteLine(std::string_view(m_buffer).substr(m_start, end - m_start));
      std::size_t cut = lf + 1;
      if (cut < m_buffer.size() && m_buffer[cut] == '\n') ++cut;
      m_start = m_clean = cut;
    }
    compact();
  }

 private:
  // No line feed in the text left: every carriage return ends a line.
  void splitAtCarriageReturns() {
    for (std::size_t cr = m_buffer.find('\r', std::max(m_clean, m_start)); cr != std::string::npos;
         cr = m_buffer.find('\r', m_start)) {
      m_out.WriteLine(std::string_view(m_buffer).substr(m_start, cr - m_start));
      m_start = cr + 1;
    }
    m_clean = m_buffer.size();
  }

  void compact() {
    if (m_start > kReadSize || m_start * 2 > m_buffer.size()) {
      m_buffer.erase(0, m_start);
      m_clean -= m_start;
      m_start = 0;
    }
    if (m_buffer.size() - m_start > m_longest)
      throw text::RuntimeError(text::kInvalidProcedureCall,
                               "A line of this file is longer than " + std::to_string(m_longest >> 20) +
                                   " MB: it cannot be repaired, and the file is left as it was.",
                               m_source.string());
  }

  text::LineWriter& m_out;
  std::filesystem::path m_source;
  std::size_t m_longest;
  std::string m_buffer;
  std::size_t m_start = 0;
  std::size_t m_clean = 0;
};
}  // namespace

bool headHasCrLf(const std::filesystem::path& path) {
  text::ReadOnlyFile in(path);
  std::string head(kTestWindow, '\0');
  head.resize(in.readAt(0, head.data(), kTestWindow));
  return head.find("\r\n") != std::string::npos;
}

std::string RepairTempName(const std::string& path) {
  return text::Left(path, static_cast<long long>(text::InStr(path, "."))) + "new";
}

std::string BackupName(const std::string& path) {
  return text::Left(path, static_cast<long long>(text::InStr(path, ".")) - 1) + text::UCase(text::Right(path, 3)) +
         ".bak";
}

void convertLineEndings(const std::filesystem::path& source, const std::filesystem::path& scratch,
                        std::size_t longestLine) {
  text::ReadOnlyFile in(source);
  text::LineWriter out(scratch, text::LineWriter::Mode::Append);
  Converter convert(out, source, longestLine);
  std::unique_ptr<char[]> chunk(new char[kReadSize]);
  for (std::uint64_t at = 0;;) {
    std::size_t n = in.readAt(at, chunk.get(), kReadSize);
    if (n == 0) break;
    at += n;
    for (std::size_t i = 0; i < n; i += kBlockSize)
      convert.block(std::string_view(chunk.get() + i, std::min(kBlockSize, n - i)));
    text::reportProgress(at, in.length());
  }
  out.close();
}

std::filesystem::path keepOlderBackup(const std::filesystem::path& backup) {
  std::string name = backup.filename().string();
  std::string stem = name.size() > 4 ? name.substr(0, name.size() - 4) : name;
  for (int n = 1;; ++n) {
    std::filesystem::path older = backup.parent_path() / (stem + "." + std::to_string(n) + ".bak");
    std::error_code ec;
    if (!std::filesystem::exists(std::filesystem::symlink_status(older, ec))) {
      text::renameFile(backup, older);
      return older;
    }
  }
}

}  // namespace repair

namespace {

// Steps shared by both versions once the user agreed: convert into the scratch name
// beside the file, keep a copy of the original under the backup name (an older backup of that
// name moves to a numbered name), then the converted text replaces the file in one step.
// A failure on the way leaves the file as it was and no scratch file. Returns the
// backup name.
std::string convertAndSwap(Program& program, const std::string& path, const std::string& temp) {
  std::filesystem::path tempPath = text::nativePath(temp);
  if (tempPath.is_relative()) tempPath = program.currentDir / tempPath;
  std::filesystem::path file = text::nativePath(path);
  std::string backup = repair::BackupName(path);
  std::filesystem::path backupPath = text::nativePath(backup);
  text::deleteIgnoringErrors(tempPath);
  program.setBusy(true);
  std::filesystem::path older;
  try {
    repair::convertLineEndings(file, tempPath);
    if (std::filesystem::exists(std::filesystem::symlink_status(backupPath)))
      older = repair::keepOlderBackup(backupPath);
    // A copy, not a second name of the same file: a tool that later patches the figure
    // in place must not change its backup.
    text::copyFileSafely(file, backupPath);
    text::replaceAtomically(tempPath, file);
  } catch (...) {
    text::deleteIgnoringErrors(tempPath);
    // No new backup came: the older one takes its name back.
    if (!older.empty() && !text::fileExists(backupPath))
      text::ignoreErrors([&] { text::renameFile(older, backupPath); });
    throw;
  }
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
