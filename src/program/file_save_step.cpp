#include "program/file_save_step.h"

#include "core/figure_text.h"
#include "core/scratch_file.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

std::optional<std::string> FileSaveStep(Program& program, const std::filesystem::path& scratch,
                                        const std::string& proposedName, const std::string& currentFile) {
  auto chosen = ui::saveDialog(program.services, program.currentDir, proposedName);
  if (!chosen || chosen->empty()) return std::nullopt;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path target = core::nativePath(*chosen);
  if (*chosen == currentFile) core::killFile(target);
  if (core::fileExists(target)) core::deleteIgnoringErrors(target);
  core::renameFile(scratch, target);
  return chosen;
}

}  // namespace tolvane
