// The forms of the small utilities: the Dial Renamer, the file renumbering, the map
// viewer, and the three viewers (magnifier, graph paper, launcher).
#pragma once

#include <string>

#include "ui/form.h"

namespace tolvane::ui {

// "Dial Renamer": pick a file, drag its label onto the picture.
class Renamer : public Form {
 public:
  Renamer();
  ComboBox Drive1{this, "Drive1"};
  ComboBox Dir1{this, "Dir1"};
  ListBox File1{this, "File1"};
  Label Label1{this, "Label1"};
  Picture Picture1{this, "Picture1"};
  Label LabelFriendly{this, "LabelFriendly"};
  Label LabelGetSR{this, "LabelGetSR"};
  MenuItem mnuHelp{this, "mnuHelp", "&Help"};
  MenuItem mnuAbout{this, "mnuAbout", "&About"};
  // 0 none, 1 Change to Friendly, 2 Revert.
  int Mode = 0;
};

// "Renumber File Sequence".
class FormRenumber : public Form {
 public:
  FormRenumber();
  ComboBox Drive1{this, "Drive1"};
  ComboBox Dir1{this, "Dir1"};
  ListBox File1{this, "File1"};
  Frame Frame1{this, "Frame1"};
  OptionButton OptionBMP{this, "OptionBMP", &Frame1};
  OptionButton OptionOBJ{this, "OptionOBJ", &Frame1};
  Label CommandGo{this, "CommandGo"};
  Label LabelDirection{this, "LabelDirection"};
  // The pattern of File1, set by the two options.
  std::string Pattern = "*.bmp";
};

// "Map Viewer": a picture in a frame with scroll bars.
class FormViewer : public Form {
 public:
  FormViewer();
  Frame picParent{this, "picParent"};
  Image picChild{this, "picChild"};
  Slider vsc{this, "vsc", 0, 0};
  Slider HScroll1{this, "HScroll1", 0, 0};
  // The file name of the form's map dialog: the one hand-over from the main form.
  std::string MapFileName;
  // The loaded picture's size; 0 when no picture is held.
  int PictureWidth = 0;
  int PictureHeight = 0;
};

// The screen magnifier: the screen around the pointer, enlarged.
class Magnifier : public Form {
 public:
  Magnifier();
  Slider SliderZoom{this, "SliderZoom", 2, 8};
  Image PictureZoom{this, "PictureZoom"};
};

// Graph paper: a grid in millimetres or pixels over a white or see-through background.
class FormScale : public Form {
 public:
  FormScale();
  OptionButton OptionMM{this, "OptionMM"};
  OptionButton OptionPixels{this, "OptionPixels"};
  CheckBox CheckTransparent{this, "CheckTransparent"};
  Image PictureGrid{this, "PictureGrid"};
};

// The launcher: a small window on top of the others; files dropped on it open in the
// main form.
class FormLaunch : public Form {
 public:
  FormLaunch();
  Label LabelDrop{this, "LabelDrop"};
};

}  // namespace tolvane::ui
