// What happens in a pane itself: the line number display and its colour on every key
// and mouse event, the changed flag by key code, a click that puts the pane's file in
// the form's caption, and the two timers that bring a pane to the front.
#pragma once

#include "editor/editor_panes.h"

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::editor {

constexpr int kKeyF3 = 114;

// Key codes that count as an edit: letters and the keypad (65 to 111), Enter, Space,
// Delete, Backspace and Tab. Function keys, arrows and the mouse do not.
bool keyMarksChange(int keyCode);

// Shows the cursor's line (1-based) in TextLineNum, the pane's colour and size label.
void ShowLineNumber(Program& program, Side side);
void PaneKeyDown(Program& program, Side side, const EventArgs& args);
void PaneClick(Program& program, Side side);
// Timer1 (left pane) and Timer2 (right pane).
void PaneTimer(Program& program, Side side);

}  // namespace tolvane::editor
