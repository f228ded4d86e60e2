// Enter in TextReplace: the first use, or a Yes to "Replace ALL instances on this
// page?", replaces every place from the cursor on; a No shows the first place and
// replaces one after a question. The replace of all places ends at the end of the text,
// or behind a match found at the very first character.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void TextReplaceEnter(Program& program);

}  // namespace tolvane::editor
