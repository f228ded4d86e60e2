// The Phi viewer (FormPhi) and the part tree (FormTree).
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::phi {

// Shows FormPhi with the file's lines.
void ShowPhiFile(Program& program, const std::string& path);
// MenuViewPhi: a Phi file chosen in a dialog.
void MenuViewPhiClick(Program& program);
void ListPhiDblClick(Program& program);
void TextPhiEditDblClick(Program& program);
void LabelPhiSaveClick(Program& program);
void LabelPhiDoneClick(Program& program);
void MenuPrintClick(Program& program);
void MenuPhiHelpClick(Program& program);

// FormTree's load: the figure's parts by depth.
void FormTreeLoad(Program& program);
// CommandGo: the OBJ without the chosen part and the parts below it.
void CommandGoClick(Program& program);
// Closes FormTree and tells the form that showed it.
void CloseTree(Program& program);

}  // namespace tolvane::phi
