#include "install/inventory.h"

#include <cstring>

#include "program/program.h"
#include "text/figure_scan.h"
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

std::vector<std::string> externalFileLines(const std::filesystem::path& figure) {
  std::vector<std::string> lines;
  text::FigureScanner in(figure);
  std::string_view line;
  while (in.rawLine(line)) {
    // A line with two extensions goes in twice, and the neighbour rule makes it one.
    if (knownExtensionCount(line) == 0) continue;
    if (lines.empty() || lines.back() != line) lines.emplace_back(line);
  }
  return lines;
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
