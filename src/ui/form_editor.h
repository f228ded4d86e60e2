// The Manual Editor's form: two text panes for a destination and a source, their file
// and size labels, the line number box, the find and replace controls, its own copy of
// the recently used list, and the two timers that bring a pane to the front.
#pragma once

#include <cstdint>
#include <string>

#include "ui/form.h"
#include "ui/text_pane.h"

namespace tolvane::ui {

constexpr Colour kPaneAlert = 0x8080FF;  // marks the pane a save question is about
constexpr Colour kRightPane = 0xFF0000;  // line number colour while the right pane is active
constexpr int kPaneShrunkWidth = 600;    // the left pane's width beside an open right pane
constexpr const char* kEditorUnsetCaption = "Label1";
constexpr const char* kEditorSecondCaption = "Second Editing Window";

class FormEditor : public Form {
 public:
  FormEditor();

  // Back to the state of a form not yet shown: empty panes, no file, nothing found.
  void reset();

  // Form-level state.
  std::string LeftPaneFile;
  int LeftPaneChanged = 0;
  int RightPaneChanged = 0;
  std::int32_t FoundPosition = -2;  // -2: no find ran yet; -1: the last find failed

  // The form's placement in pixels, kept in the settings between runs.
  int Left = 60, Top = 40, Width = 1240, Height = 760;

  TextPane RichTextBox1{this, "RichTextBox1"};
  TextPane RichTextBox2{this, "RichTextBox2"};
  Label LabelSecFile{this, "LabelSecFile"};
  Label LabelFileSizeEd1{this, "LabelFileSizeEd1"};
  Label LabelFileSizeEd2{this, "LabelFileSizeEd2"};
  Label LabelLineNum{this, "LabelLineNum"};
  TextBox TextLineNum{this, "TextLineNum"};
  Label CommandGotoLineNum{this, "CommandGotoLineNum"};

  Picture PictureSecFile{this, "PictureSecFile"};
  Picture PictureSave{this, "PictureSave"};
  Picture PicturePrint{this, "PicturePrint"};
  Picture PictureFind{this, "PictureFind"};
  Picture PictureReplace{this, "PictureReplace"};

  Label LabelFind{this, "LabelFind"};
  ComboBox ComboFind{this, "ComboFind"};
  CheckBox CheckWholeWord{this, "CheckWholeWord"};
  CheckBox CheckMatchCase{this, "CheckMatchCase"};
  Label LabelReplace{this, "LabelReplace"};
  TextBox TextReplace{this, "TextReplace"};

  ListBox ListMRU{this, "ListMRU"};
  Timer Timer1{this, "Timer1", 250};
  Timer Timer2{this, "Timer2", 250};

  // The active pane, told by the colour of LabelLineNum: black left, FF0000 right.
  bool rightActive() const { return LabelLineNum.foreColor() == kRightPane; }
  TextPane& activePane() { return rightActive() ? RichTextBox2 : RichTextBox1; }
  // Puts a pane in front of the other.
  void bringToFront(TextPane& pane);
};

}  // namespace tolvane::ui
