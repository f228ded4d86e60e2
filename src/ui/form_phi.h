// The two forms of the Phi tools: FormPhi shows a Phi file for reading, editing line by
// line and printing; FormTree lists a figure's body parts by depth, and CommandGo writes
// the figure's OBJ without the chosen part and every part below it (Lop.txt).
#pragma once

#include <string>

#include "ui/form.h"

namespace tolvane::ui {

constexpr const char* kFormTreeCaption = "Remove Parts by Phi Listing";

class FormPhi : public Form {
 public:
  FormPhi();

  ListBox ListPhi{this, "ListPhi"};
  TextBox TextPhiEdit{this, "TextPhiEdit"};
  Label LabelPhiDone{this, "LabelPhiDone"};
  Label LabelPhiSave{this, "LabelPhiSave"};
  Label LabelPhiFileName{this, "LabelPhiFileName"};
  MenuItem MenuPrint{this, "MenuPrint", "Print"};
  MenuItem MenuPhiHelp{this, "MenuPhiHelp", "Help"};
};

class FormTree : public Form {
 public:
  FormTree();

  // The form that showed this one and learns of its return ("FormOBJ" for the mesh
  // tools' Phi lopper), and the OBJ it works on; both empty when shown otherwise.
  std::string returnTo;
  std::string objPath;

  ListBox ListPhi{this, "ListPhi"};
  Label CommandGo{this, "CommandGo"};
};

}  // namespace tolvane::ui
