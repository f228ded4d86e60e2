#include "ui/form_phi.h"

namespace tolvane::ui {

FormPhi::FormPhi() : Form("FormPhi") {
  setCaption("Phi File");
  LabelPhiDone.setCaption("Done");
  LabelPhiSave.setCaption("Save File");
  LabelPhiSave.setVisible(false);
}

FormTree::FormTree() : Form("FormTree") {
  setCaption(kFormTreeCaption);
  CommandGo.setCaption("Go");
}

}  // namespace tolvane::ui
