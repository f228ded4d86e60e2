// Printing a pane: the selection when there is one, else the whole file after a
// question, in the printer's fixed font.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void PicturePrintClick(Program& program);

}  // namespace tolvane::editor
