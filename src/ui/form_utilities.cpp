#include "ui/form_utilities.h"

namespace tolvane::ui {

Renamer::Renamer() : Form("Renamer") {
  setCaption("Dial Renamer");
  LabelFriendly.setCaption("Change to Friendly");
  LabelGetSR.setCaption("Revert");
  Picture1.setBackColor(kWhite);
}

FormRenumber::FormRenumber() : Form("FormRenumber") {
  setCaption("Renumber File Sequence");
  OptionBMP.setCaption("BMP");
  OptionOBJ.setCaption("OBJ");
  OptionBMP.setValue(true);
  CommandGo.setCaption("GO");
  LabelDirection.setCaption(
      "Navigate to the folder with your file sequence and click GO.  Files numbered 1 etc will be renamed as 001 "
      "etc, for correct alphabetical listing.");
}

FormViewer::FormViewer() : Form("FormViewer") {
  setCaption("Map Viewer");
  vsc.setVisible(false);
  HScroll1.setVisible(false);
}

Magnifier::Magnifier() : Form("Magnifier") {
  setCaption("Magnifier");
  SliderZoom.setValue(3);
}

FormScale::FormScale() : Form("FormScale") {
  setCaption("Graph Paper");
  OptionMM.setCaption("mm");
  OptionPixels.setCaption("pixels");
  OptionMM.setValue(true);
  CheckTransparent.setCaption("See through");
}

FormLaunch::FormLaunch() : Form("FormLaunch") {
  setCaption("Launcher");
  LabelDrop.setCaption("Drop files here");
}

}  // namespace tolvane::ui
