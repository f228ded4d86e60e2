// What the Manual Editor's tools share about its two panes: which pane is meant, its
// changed flag and file name, the size caption, and the load of a file into a pane as
// plain text.
#pragma once

#include <cstdint>
#include <string>

#include "ui/form_editor.h"

namespace tolvane {
class Program;
}

namespace tolvane::editor {

enum class Side { Left, Right };

ui::TextPane& paneOf(ui::FormEditor& form, Side side);
// The active pane, told by the colour of LabelLineNum.
Side activeSide(const ui::FormEditor& form);
int& changedFlag(ui::FormEditor& form, Side side);
// The file the pane holds: LeftPaneFile or LabelSecFile.
std::string paneFile(const ui::FormEditor& form, Side side);

// The size label's text: the length as the run-time writes numbers, and " bytes".
std::string sizeCaption(std::uint64_t length);

// The largest file a pane takes: the pane holds the whole text with room for edits, and
// the window's view of it needs several times as much again. At most 1 GB, and a
// quarter of the machine's memory where that is less.
inline constexpr std::uint64_t kLargestPaneFile = 1ull << 30;
std::uint64_t largestPaneFile();
// A file longer than that is run-time error 7 with a message that says what the user
// can do instead; nothing is read.
void checkPaneCanHold(const std::string& path, std::uint64_t length);

// Reads the whole file into the pane as it stands; returns the file's length.
std::uint64_t loadPaneFile(ui::TextPane& pane, const std::string& path);

// Opens a file in the left pane or the right pane, with the editor's line-ending
// repair first: the pane is shown, filled, and its file and size labels are set.
void openInPane(Program& program, Side side, const std::string& path);

}  // namespace tolvane::editor
