// Start-up, settings and shutdown of the main form: the first-run Poser location, the
// Work folder's scratch clean-up, the recently used list, the notepad and notebook,
// the exit sequence, the About box and the read-only clearing tool.
#pragma once

#include <string>

namespace tolvane {
class Program;

// The form's load and unload.
void OpeningLoad(Program& program);
void OpeningUnload(Program& program);

void AddToMRU(Program& program, const std::string& path);
void SaveMRU(Program& program);
void ListMRUClick(Program& program);

// Appends the notepad's text to a notes file, with the dated heading.
void AppendNotes(Program& program, const std::string& notesFile);

void MenuAboutClick(Program& program);
void MenuAttribClick(Program& program);
}  // namespace tolvane
