#include "program/file_save_step.h"

#include "text/figure_text.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

std::optional<std::string> FileSaveStep(Program& program, const std::filesystem::path& scratch,
                                        const std::string& proposedName, [[maybe_unused]] const std::string& currentFile) {
  auto chosen = ui::saveDialog(program.services, program.currentDir, proposedName);
  if (!chosen || chosen->empty()) return std::nullopt;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path target = text::nativePath(*chosen);
  if (!text::fileExists(scratch)) text::raiseError(text::kFileNotFound, scratch.string());
  // The current file, or any other of the chosen name, goes only once the new text
  // stands complete beside it, even when the Work folder lies on another disk.
  text::moveScratchInto(scratch, target, true);
  return chosen;
}

}  // namespace tolvane
