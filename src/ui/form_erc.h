// The forms of the remote-control morph tools: the channel listing that changes one
// control ratio (FormListEMCs), the dialog that chooses the kind of controlled morph
// (DialogERC), and the step-by-step builder of the control block (FormECM).
#pragma once

#include <string>
#include <vector>

#include "ui/form.h"

namespace tolvane::ui {

// "Channel Listing": every morph and control block of the destination, and the box
// that takes a new ratio for the chosen block.
class FormListEMCs : public Form {
 public:
  FormListEMCs();

  Label LabelTitle{this, "LabelTitle"};
  ListBox ListEMCs{this, "ListEMCs"};
  Label Label1{this, "Label1"};
  TextBox Text1{this, "Text1"};

  // One entry per ratio line, at the list index of that line plus one: the whole line
  // of the file, "#", and its line number. Other entries are empty.
  std::vector<std::string> RatioTable;
};

// The ten kinds of controlled morph, in the order the dialog offers them.
enum class ErcKind { PBM, CM, JCM, MCM, JCJ, MCJ, JCT, MCT, TCM, TCJ };
inline constexpr int kErcKindCount = 10;

// What each kind is called and starts with.
struct ErcKindInfo {
  ErcKind kind;
  const char* option;  // the option of DialogERC
  const char* label;   // the label of FormECM that tells the kind
  const char* caption;
  const char* defaultRatio;
};
const ErcKindInfo& ercKindInfo(ErcKind kind);

// "Extended Remote Control": one option per kind, Ready and Cancel.
class DialogERC : public Form {
 public:
  DialogERC();

  OptionButton OptionPBM{this, "OptionPBM"};
  OptionButton OptionCM{this, "OptionCM"};
  OptionButton OptionJCM{this, "OptionJCM"};
  OptionButton OptionMCM{this, "OptionMCM"};
  OptionButton OptionJCJ{this, "OptionJCJ"};
  OptionButton OptionMCJ{this, "OptionMCJ"};
  OptionButton OptionJCT{this, "OptionJCT"};
  OptionButton OptionMCT{this, "OptionMCT"};
  OptionButton OptionTCM{this, "OptionTCM"};
  OptionButton OptionTCJ{this, "OptionTCJ"};
  Label LabelDone{this, "LabelDone"};
  Label LabelCancel{this, "LabelCancel"};

  OptionButton& option(ErcKind kind);
  // The kind whose option is on; PBM when none is.
  ErcKind selectedKind();
};

// The builder: the kind's label, the four chosen names and the ratio, the lists the
// user double-clicks in, and the prompts over them.
class FormECM : public Form {
 public:
  FormECM();

  // Back to the state of a form just shown.
  void reset();
  Label& kindLabel(ErcKind kind);
  // The kind told by the visible kind label; PBM when none is visible.
  ErcKind visibleKind();

  Label LabelPBM{this, "LabelPBM"};
  Label LabelCM{this, "LabelCM"};
  Label LabelJCM{this, "LabelJCM"};
  Label LabelMCM{this, "LabelMCM"};
  Label LabelJCJ{this, "LabelJCJ"};
  Label LabelMCJ{this, "LabelMCJ"};
  Label LabelJCT{this, "LabelJCT"};
  Label LabelMCT{this, "LabelMCT"};
  Label LabelTCM{this, "LabelTCM"};
  Label LabelTCJ{this, "LabelTCJ"};

  Label LabelPBM1{this, "LabelPBM1"};
  TextBox TextPBM1{this, "TextPBM1"};
  Label LabelPBM2{this, "LabelPBM2"};
  TextBox TextPBM2{this, "TextPBM2"};
  Label LabelPBM3{this, "LabelPBM3"};
  TextBox TextPBM3{this, "TextPBM3"};
  Label LabelPBM4{this, "LabelPBM4"};
  TextBox TextPBM4{this, "TextPBM4"};
  Label LabelPBMRatio{this, "LabelPBMRatio"};
  TextBox TextPBMRatio{this, "TextPBMRatio"};

  Label LabelMCControled{this, "LabelMCControled"};
  Label LabelMCMaster{this, "LabelMCMaster"};
  Label LabelListConFigECM{this, "LabelListConFigECM"};
  Label LabelListActorsECM{this, "LabelListActorsECM"};
  ListBox ListControlledMorph{this, "ListControlledMorph"};
  ListBox ListConFigECM{this, "ListConFigECM"};
  ListBox ListActorsECM{this, "ListActorsECM"};
  ListBox ListMinMax{this, "ListMinMax"};

  Label LabelWait{this, "LabelWait"};
  Label LabelDone{this, "LabelDone"};
  Label LabelCancel{this, "LabelCancel"};

  // Form-level state: the double clicks in ListControlledMorph so far (first the slave,
  // then the master), the figure numbers, the keys of the dials, and whether a block
  // was saved.
  int ClickCount = 0;
  std::string OwnFigure;
  std::string MasterFigure;
  std::string ControllingKey;
  std::string ControlledKey;
  bool WorkDone = false;
};

}  // namespace tolvane::ui
