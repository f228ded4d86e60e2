#include "ui/form_mat_coord.h"

namespace tolvane::ui {

FormMatCoord::FormMatCoord() : Form("FormMatCoord") {
  setCaption("Material Coordinator");
  LabelRemoved.setCaption("Removed from the CR2");
  LabelAdded.setCaption("Added to the CR2");
  CommandClose.setCaption("Close");
}

}  // namespace tolvane::ui
