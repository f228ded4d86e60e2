#include "ui/form_install.h"

namespace tolvane::ui {

FormCR2Install::FormCR2Install() : Form("FormCR2Install") {
  setCaption("CR2 Installer");
  LabelNewDir.setCaption("Make New Folder");
  LabelRemoveDir.setCaption("Remove Folder");
  LabelDirection.setCaption("Open a folder to place the CR2 file and hit enter");
  TextNewDir.setVisible(false);
  ListCR2Install.setVisible(false);
}

}  // namespace tolvane::ui
