#include "utilities/renumber.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/scratch_file.h"
#include "ui/folder_pickers.h"
#include "ui/services.h"

namespace tolvane::utilities {

namespace {

// The platform's file search for one exact name: the name as the folder spells it, or
// empty. A name with a double quote in it is never found.
std::string findFile(const std::string& folder, const std::string& name) {
  if (text::contains(name, "\"")) return {};
  std::filesystem::path spelled = text::nativePath(folder) / name;
  std::filesystem::path found = text::resolveCaseInsensitive(spelled);
  return text::fileExists(found) ? found.filename().string() : std::string();
}

}  // namespace

void RenumberLoad(Program& program) {
  ui::FormRenumber& r = program.formRenumber;
  r.Drive1.clear();
  for (const std::string& d : ui::driveList()) r.Drive1.addItem(d);
  r.Drive1.setText("/");
  ui::showFolder(r.Dir1, program.currentDir);
  ui::showFiles(r.File1, program.currentDir, r.Pattern);
}

void RenumberDriveChange(Program& program) {
  program.formRenumber.Dir1.setText(program.formRenumber.Drive1.text());
  RenumberDirChange(program);
}

void RenumberDirChange(Program& program) {
  ui::FormRenumber& r = program.formRenumber;
  std::filesystem::path folder = text::nativePath(r.Dir1.text());
  ui::showFolder(r.Dir1, folder);
  ui::showFiles(r.File1, folder, r.Pattern);
}

void RenumberOptionClick(Program& program, bool obj) {
  ui::FormRenumber& r = program.formRenumber;
  r.Pattern = obj ? "*.obj" : "*.bmp";
  ui::showFiles(r.File1, text::nativePath(r.Dir1.text()), r.Pattern);
}

void RenumberFiles(Program& program) {
  ui::FormRenumber& r = program.formRenumber;
  std::string folder = r.Dir1.text();
  bool obj = r.OptionOBJ.value();
  std::string first = obj ? "1.obj" : "1.bmp";
  std::string ext = obj ? ".obj\"" : ".bmp";
  if (findFile(folder, first).empty()) {
    ui::msgBox(program.services, "No #1 file in this folder!", "Error!");
    return;
  }
  std::string found, newName;
  for (int counter = 1;; ++counter) {
    std::string digits = std::to_string(counter);
    found = findFile(folder, digits + ext);
    if (found.empty()) break;
    if (found.size() == 5) newName = folder + "\\00" + digits + ext;
    else if (found.size() == 6) newName = folder + "\\ 0" + digits + ext;
    // Any other length keeps the name of the pass before, so the rename fails.
    text::renameFile(text::nativePath(folder) / found, text::nativePath(newName));
  }
  ui::msgBox(program.services, "Finished, files numbered 001 to " + text::Left(found, 3), "Done!");
}

}  // namespace tolvane::utilities
