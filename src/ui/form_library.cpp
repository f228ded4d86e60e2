#include "ui/form_library.h"

#include <initializer_list>

namespace tolvane::ui {

FormPZ2::FormPZ2() : Form("FormPZ2") {
  setCaption("PZ2 Editor");
  LabelMAT.setCaption("MAT File");
  LabelDirections.setCaption(
      "Choose the parts you want to use for your pose by double-clicking them, then click Done.");
  ListMaterialsMAT.setToolTip(
      "Doubleclick to choose materials to include. Be sure to change colors BEFORE choosing the materials to "
      "save to the file.");
  CheckAllMat.setCaption("Include ALL materials");
  CheckIncludeMaps.setCaption("Include Maps");
  CheckNoTrans.setCaption("No Trans Maps");
  CheckNoTrans.setToolTip("When including maps, check this to make hair positioning easier.");
  CheckSetToWhite.setCaption("Set Colors to White");
  LabelPresent.setCaption("Present");
  LabelNew.setCaption("New");
  LabelChangeColor.setCaption("Change Color");
  LabelDonePZ2.setCaption("Done");
  LabelCancelPZ2.setCaption("Cancel");
  ListMATColors.setVisible(false);
  hideMaterialControls();
}

void FormPZ2::hideMaterialControls() {
  for (Control* c : std::initializer_list<Control*>{&LabelMAT, &CheckIncludeMaps, &CheckSetToWhite, &ListMaterialsMAT,
                                                    &CheckAllMat, &CheckNoTrans, &Frame1, &ListMaterialsMATWanted,
                                                    &LabelChangeColor, &ShapePresentColor, &ShapeNewColor,
                                                    &LabelPresent, &LabelNew})
    c->setVisible(false);
  CheckAllMat.setValue(false);
}

FormMOR::FormMOR() : Form("FormMOR") {
  setCaption("PZ2 Editor -- MOR Files");
  LabelValue.setCaption("Value");
  LabelDone.setCaption("Done");
  LabelCancel.setCaption("Cancel");
}

FormPZ2Combine::FormPZ2Combine() : Form("FormPZ2Combine") {
  setCaption("PZ2 Welder");
  LabelOpenSecond.setCaption("Open Second File");
  LabelKey1.setToolTip("This is the setting for the morph you clicked above.");
  LabelKey2.setToolTip("This is the setting for the morph you clicked above.");
  ListFile2.setToolTip("Check off the morph settings you wish to transfer to the file in the left pane.");
  LabelDone.setCaption("Done");
  LabelCancel.setCaption("Cancel");
  for (ListBox* l : {&ListKeyLinesFirst, &ListKeyLines, &ListActors2, &ListTGVP, &ListActors1, &ListFoundMorphs,
                     &ListNotFound})
    l->setVisible(false);
}

void FormPZ2Combine::clearAll() {
  for (ListBox* l : {&ListFile1, &ListKeyLinesFirst, &ListFile2, &ListKeyLines, &ListActors2, &ListTGVP,
                     &ListActors1, &ListFoundMorphs, &ListNotFound})
    l->clear();
  for (Label* l : {&LabelFileFirst, &LabelFileSecond, &LabelKey1, &LabelKey2}) l->setCaption("");
}

}  // namespace tolvane::ui
