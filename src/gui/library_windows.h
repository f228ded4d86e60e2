// The windows of the library file creators' forms: the PZ2 Editor, the MOR file editor
// and the PZ2 Welder.
#pragma once

namespace tolvane::gui {

void registerLibraryWindows();

}  // namespace tolvane::gui
