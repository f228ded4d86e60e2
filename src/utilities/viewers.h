// The three viewers of the main form's menu: the screen magnifier, the graph paper and
// the launcher, whose dropped files open in the main form.
#pragma once

#include <string>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::utilities {

void ShowMagnifier(Program& program);
void ShowGraphPaper(Program& program);
void ShowLauncher(Program& program);
// Files dropped on the launcher open in the main form, as files dropped on the main
// window do.
void LauncherDrop(Program& program, const std::vector<std::string>& files);

}  // namespace tolvane::utilities
