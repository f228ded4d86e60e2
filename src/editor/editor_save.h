// Saving a pane: the pane meant is painted in the alert colour, the save dialog
// proposes its file, and the pane's text goes to the chosen file byte for byte through
// a scratch copy in the Work folder. The pane turns white and counts as unchanged
// afterwards, even when the dialog was cancelled.
#pragma once

#include "editor/editor_panes.h"

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void PictureSaveClick(Program& program);
void PictureSaveRightClick(Program& program);
// The save dialog and write for one pane, then white and unchanged.
void SavePane(Program& program, Side side);

}  // namespace tolvane::editor
