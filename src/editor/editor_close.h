// Closing the Manual Editor: a changed left pane is asked about first, and a No there
// closes the form at once, so a changed right pane is then lost without a question.
// The placement is kept and the form goes back to its unset state.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void EditorUnload(Program& program);

}  // namespace tolvane::editor
