// Opening a file into the workspace, the source pane, and the path-box write that
// Save, Save As, Open and exit share.
#pragma once

#include <string>

namespace tolvane {
class Program;

// File, Open. With SkipOpenDialog at -1 the dialog is skipped and OpenFilePath is used.
void OpenFile(Program& program);
// The load for the command line and for files dropped on the window.
void LoadWithoutDialog(Program& program, const std::string& path);
// The click on LabelOpenSource.
void OpenSource(Program& program);

// Takes one leading blank off every line of the file, through Chop.doc in the
// current directory.
void ChopLeadingBlanks(Program& program, const std::string& path);

enum class PathWriteVariant { Save, SaveAs, Open, Exit };
// Writes the red path boxes into the open file through cr2temp.txt.
void WritePathChanges(Program& program, PathWriteVariant variant);

// The path boxes: a click on a label browses, a double click on a box ends a hand edit.
void LabelMainOBJPathClick(Program& program);
void MapLabelClick(Program& program, const std::string& label);
void PathBoxDblClick(Program& program, const std::string& box);
}  // namespace tolvane
