// Go to line: the cursor goes to the end of the line typed in TextLineNum. The edit
// control counts lines from 0, so the start of line N it reports is the start of the
// line after the one typed, and the cursor goes one character before it.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

// CommandGotoLineNum, or Enter in TextLineNum (`fromEnter`), where 0 empties the box.
void GotoLine(Program& program, bool fromEnter);

}  // namespace tolvane::editor
