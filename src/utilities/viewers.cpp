#include "utilities/viewers.h"

#include "program/program.h"
#include "workspace/workspace.h"

namespace tolvane::utilities {

void ShowMagnifier(Program& program) { program.magnifier.setVisible(true); }

void ShowGraphPaper(Program& program) { program.formScale.setVisible(true); }

void ShowLauncher(Program& program) { program.formLaunch.setVisible(true); }

void LauncherDrop(Program& program, const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    program.opening.OpenFilePath = file;
    LoadWithoutDialog(program, file);
  }
}

}  // namespace tolvane::utilities
