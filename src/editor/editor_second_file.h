// Opening a second file beside the first: PictureSecFile offers the recently used list
// or the open dialog; a click in the editor's list opens the entry in the left pane, a
// shift click in the right one.
#pragma once

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::editor {

void PictureSecFileClick(Program& program);
void PictureSecFileRightClick(Program& program);
void EditorListMRUClick(Program& program, const EventArgs& args);

}  // namespace tolvane::editor
