// The forms of the library file creators: the pose and material file editor, the MOR
// file editor and the PZ2 welder. Their handlers live in the library subsystem.
#pragma once

#include <string>

#include "ui/form.h"

namespace tolvane::ui {

// "PZ2 Editor": pose mode, or material mode while LabelMAT is visible.
class FormPZ2 : public Form {
 public:
  FormPZ2();
  // Back to pose mode with the material controls hidden, as every close leaves it.
  void hideMaterialControls();
  bool materialMode() const { return LabelMAT.visible(); }

  std::string SourcePath;     // emptied on Cancel and after a pose is saved
  bool ColorsChanged = false;  // set when a colour has been picked
  bool SaveFailed = false;     // the material writer found nothing chosen

  Label LabelMAT{this, "LabelMAT"};
  Label LabelFNamePZ2{this, "LabelFNamePZ2"};
  Label LabelDirections{this, "LabelDirections"};
  ListBox ListActorsPZ2{this, "ListActorsPZ2"};
  ListBox ListActorsWanted{this, "ListActorsWanted"};
  ListBox ListMaterialsMAT{this, "ListMaterialsMAT"};
  ListBox ListMaterialsMATWanted{this, "ListMaterialsMATWanted"};
  ListBox ListMATColors{this, "ListMATColors"};
  CheckBox CheckAllMat{this, "CheckAllMat"};
  CheckBox CheckIncludeMaps{this, "CheckIncludeMaps"};
  CheckBox CheckNoTrans{this, "CheckNoTrans"};
  CheckBox CheckSetToWhite{this, "CheckSetToWhite"};
  Frame Frame1{this, "Frame1"};
  Label LabelPresent{this, "LabelPresent"};
  Label LabelNew{this, "LabelNew"};
  Picture ShapePresentColor{this, "ShapePresentColor"};
  Picture ShapeNewColor{this, "ShapeNewColor"};
  Label LabelChangeColor{this, "LabelChangeColor"};
  Label LabelDonePZ2{this, "LabelDonePZ2"};
  Label LabelCancelPZ2{this, "LabelCancelPZ2"};
};

// "PZ2 Editor -- MOR Files": a value for every morph channel of a figure.
class FormMOR : public Form {
 public:
  FormMOR();
  Label LabelFileName{this, "LabelFileName"};
  ListBox ListMorphs{this, "ListMorphs"};
  ListBox ListValues{this, "ListValues"};
  TextBox TextValue{this, "TextValue"};
  Label LabelValue{this, "LabelValue"};
  Label LabelDone{this, "LabelDone"};
  Label LabelCancel{this, "LabelCancel"};
};

// "PZ2 Welder": the checked morph settings of a second pose file put into a first.
// ListFile2 is a check list: an entry's selection is its check mark.
class FormPZ2Combine : public Form {
 public:
  FormPZ2Combine();
  void clearAll();

  Label LabelFileFirst{this, "LabelFileFirst"};
  Label LabelFileSecond{this, "LabelFileSecond"};
  Label LabelOpenSecond{this, "LabelOpenSecond"};
  ListBox ListFile1{this, "ListFile1"};
  ListBox ListKeyLinesFirst{this, "ListKeyLinesFirst"};
  ListBox ListFile2{this, "ListFile2", true};
  ListBox ListKeyLines{this, "ListKeyLines"};
  ListBox ListActors2{this, "ListActors2"};
  ListBox ListTGVP{this, "ListTGVP"};
  ListBox ListActors1{this, "ListActors1"};
  ListBox ListFoundMorphs{this, "ListFoundMorphs"};
  ListBox ListNotFound{this, "ListNotFound"};
  Label LabelKey1{this, "LabelKey1"};
  Label LabelKey2{this, "LabelKey2"};
  Label LabelDone{this, "LabelDone"};
  Label LabelCancel{this, "LabelCancel"};
};

}  // namespace tolvane::ui
