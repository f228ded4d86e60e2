// "Material Coordinator": the materials the tool took out of a figure (left) and the ones
// it added from the OBJ (centre).
#pragma once

#include "ui/form.h"

namespace tolvane::ui {

class FormMatCoord : public Form {
 public:
  FormMatCoord();
  Label LabelRemoved{this, "LabelRemoved"};
  ListBox ListMatRemoved{this, "ListMatRemoved"};
  Label LabelAdded{this, "LabelAdded"};
  ListBox ListMatAdded{this, "ListMatAdded"};
  Label CommandClose{this, "CommandClose"};
};

}  // namespace tolvane::ui
