#include "install/inventory.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "program/program.h"
#include "text/runtime_error.h"
#include "text/figure_text.h"
#include "ui/services.h"
#include "workspace/line_ending_repair.h"

namespace tolvane::install {

namespace {

constexpr std::string_view kExtensions[] = {".obj", ".bmp", ".png", ".gif", ".bum", ".tif", ".jpg", ".pict"};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool containsLower(std::string_view line, std::string_view ext) {
  // Every extension starts with its dot, so only the dots of the line are tried.
  for (std::size_t at = line.find('.'); at != std::string_view::npos; at = line.find('.', at + 1)) {
    if (line.size() - at < ext.size()) return false;
    std::size_t i = 1;
    while (i < ext.size() && lower(line[at + i]) == ext[i]) ++i;
    if (i == ext.size()) return true;
  }
  return false;
}

}  // namespace

int knownExtensionCount(std::string_view line) {
  if (std::memchr(line.data(), '.', line.size()) == nullptr) return 0;
  int count = 0;
  for (std::string_view ext : kExtensions)
    if (containsLower(line, ext)) ++count;
  return count;
}

namespace {

// Whether the byte behind a dot may begin a known extension.
bool extensionLead(char c) {
  switch (lower(c)) {
    case 'o': case 'b': case 'p': case 'g': case 't': case 'j':
      return true;
    default:
      return false;
  }
}

// The next dot at or after `i` (before `end - 1`) that a letter follows, or `end`.
// Figure text is dense with the dots of numbers, so eight bytes are tested at a time:
// a word goes on only when one of its bytes is a dot and the byte behind it has the
// bit that letters have and digits lack.
std::size_t nextCandidate(const char* data, std::size_t i, std::size_t end) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ull, kHigh = 0x8080808080808080ull;
  while (i + 9 <= end) {
    std::uint64_t word, next;
    std::memcpy(&word, data + i, 8);
    std::memcpy(&next, data + i + 1, 8);
    std::uint64_t x = word ^ (kOnes * '.');
    std::uint64_t dots = (x - kOnes) & ~x & kHigh;
    std::uint64_t letters = (next & (kOnes * 0x40)) << 1;
    if ((dots & letters) != 0)
      for (std::size_t k = i; k < i + 8; ++k)
        if (data[k] == '.' && (data[k + 1] & 0x40) != 0) return k;
    i += 8;
  }
  for (; i + 1 < end; ++i)
    if (data[i] == '.' && (data[i + 1] & 0x40) != 0) return i;
  return end;
}

// Scans whole lines of `data` from `from` to `end` (which lies on a line end or at the
// end of the file). Only the dots followed by a letter an extension can begin with are
// looked at; the line around such a dot is cut out and tested whole.
void scanBlock(const char* data, std::size_t from, std::size_t end, std::vector<std::string>& lines) {
  std::size_t i = from;
  while (i + 1 < end) {
    std::size_t dot = nextCandidate(data, i, end);
    if (dot == end) return;
    if (!extensionLead(data[dot + 1])) {
      i = dot + 1;
      continue;
    }
    std::size_t start = dot;
    while (start > from && data[start - 1] != '\r') --start;
    if (start > from && data[start] == '\n' && data[start - 1] == '\r') ++start;
    const void* cr = std::memchr(data + dot, '\r', end - dot);
    std::size_t stop = cr ? static_cast<std::size_t>(static_cast<const char*>(cr) - data) : end;
    std::string_view line(data + start, stop - start);
    if (knownExtensionCount(line) > 0 && (lines.empty() || lines.back() != line)) lines.emplace_back(line);
    i = stop;
  }
}

}  // namespace

std::vector<std::string> externalFileLines(const std::filesystem::path& figure) {
  // Lines end at CR LF or a lone CR, as the line reader has them; a line with two
  // extensions would go in twice in a row, and the neighbour rule makes it one.
  std::vector<std::string> lines;
  int fd = ::open(figure.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) text::raiseError(text::errorNumberFromErrno(errno, false), figure.string());
  struct Closer {
    int fd;
    ~Closer() { ::close(fd); }
  } closer{fd};
  constexpr std::size_t kBlock = 4 << 20;
  std::vector<char> data(kBlock);
  std::size_t held = 0;  // bytes of an unfinished line carried from the block before
  bool skipLf = false;   // the block before ended on a CR, so a first LF belongs to it
  for (;;) {
    if (data.size() < held + kBlock) data.resize(held + kBlock);
    ssize_t got = ::read(fd, data.data() + held, kBlock);
    if (got < 0) {
      if (errno == EINTR) continue;
      text::raiseError(text::errorNumberFromErrno(errno, false), figure.string());
    }
    std::size_t size = held + static_cast<std::size_t>(got);
    std::size_t from = skipLf && size > 0 && data[0] == '\n' ? 1 : 0;
    if (got == 0) {
      scanBlock(data.data(), from, size, lines);
      return lines;
    }
    // The whole lines of what is held: up to the last CR.
    std::size_t end = size;
    while (end > from && data[end - 1] != '\r') --end;
    if (end == from) {
      if (size > text::kLongestLine) text::raiseLineTooLong(figure.string());
      held = size;
      continue;
    }
    scanBlock(data.data(), from, end, lines);
    held = size - end;
    std::memmove(data.data(), data.data() + end, held);
    skipLf = true;
  }
}

void ListCR2Files(Program& program, std::string cr2) {
  ui::Opening& f = program.opening;
  RepairLineEndings(program, cr2);
  f.ListboxListCR2Files.setItems(externalFileLines(text::nativePath(cr2)));
  f.ListboxListCR2Files.setVisible(true);
  for (ui::Picture* p : {&f.PicturePrintCR2Files, &f.PictureInstallCR2, &f.PictureCR2InstallCancel})
    p->setVisible(true);
  if (f.ListboxListCR2Files.listCount() == 0)
    ui::msgBox(program.services,
               "No external files called in this CR2, but you can still install the CR2 itself.", "Note!");
}

void PrintCR2Files(Program& program) {
  ui::Opening& f = program.opening;
  ui::PrintJob job;
  job.title = "Files Used";
  job.text = "   Files Used in  -- " + f.LabelOBJFileName.caption() + "\r\n";
  for (const std::string& entry : f.ListboxListCR2Files.items()) job.text += entry + "\r\n";
  program.services.print(job);
}

}  // namespace tolvane::install
