// The windows of the Phi tools: FormPhi (the file's lines, the edit box, Done, Save File,
// the path, and the Print and Help menu) and FormTree (the part list and CommandGo).
#pragma once

namespace tolvane::gui {

// Registers the windows' factories under "FormPhi" and "FormTree".
void registerPhiWindows();

}  // namespace tolvane::gui
