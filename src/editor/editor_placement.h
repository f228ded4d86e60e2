// The Manual Editor's remembered placement: position and size of the form, kept in the
// settings store under "Editor" between runs.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void loadPlacement(Program& program);
// A store that cannot be written loses the placement, nothing else.
void savePlacement(Program& program);

}  // namespace tolvane::editor
