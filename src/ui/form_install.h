// The figure installer's folder form ("CR2 Installer"): the drive and folder pickers the
// user chooses the library folder with, the list of files left over, and the labels that
// make or remove a folder.
#pragma once

#include "ui/form.h"

namespace tolvane::ui {

class FormCR2Install : public Form {
 public:
  FormCR2Install();

  ComboBox DriveCR2Install{this, "DriveCR2Install"};
  // The text is the chosen folder's path; the entries are its sub-folders.
  ComboBox DirCR2Install{this, "DirCR2Install"};
  ListBox ListCR2Install{this, "ListCR2Install"};
  Label LabelNewDir{this, "LabelNewDir"};
  TextBox TextNewDir{this, "TextNewDir"};
  Label LabelRemoveDir{this, "LabelRemoveDir"};
  Label LabelDirection{this, "LabelDirection"};
};

}  // namespace tolvane::ui
