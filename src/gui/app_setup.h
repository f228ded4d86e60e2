// Where the desktop program keeps its files and what it was started with: the Work
// folder (the program's own folder when it can be written, else the per-user data
// folder, TOLVANE_WORKDIR overriding both), the current directory, the program folder
// and the command line as one path.
#pragma once

#include <QStringList>
#include <filesystem>

#include "program/program.h"

namespace tolvane::gui {

std::filesystem::path workFolder();
// `arguments` without the program's own name.
ProgramOptions programOptions(const QStringList& arguments);

}  // namespace tolvane::gui
