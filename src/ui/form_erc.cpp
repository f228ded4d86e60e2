#include "ui/form_erc.h"

namespace tolvane::ui {

namespace {
const ErcKindInfo kKinds[kErcKindCount] = {
    {ErcKind::PBM, "OptionPBM", "LabelPBM", "Partial Body Morph", "1.000000"},
    {ErcKind::CM, "OptionCM", "LabelCM", "Conforming Morph", "1.000000"},
    {ErcKind::JCM, "OptionJCM", "LabelJCM", "Joint Controlled Morph", "0.010000"},
    {ErcKind::MCM, "OptionMCM", "LabelMCM", "Morph Controlled Morph", "0.010000"},
    {ErcKind::JCJ, "OptionJCJ", "LabelJCJ", "Joint Controlled Joint", "1.000000"},
    {ErcKind::MCJ, "OptionMCJ", "LabelMCJ", "Morph Controlled Joint", "0.010000"},
    {ErcKind::JCT, "OptionJCT", "LabelJCT", "Joint Controlled Translation", "0.001000"},
    {ErcKind::MCT, "OptionMCT", "LabelMCT", "Morph Controlled Translation", "0.010000"},
    {ErcKind::TCM, "OptionTCM", "LabelTCM", "Translation Controlled Morph", "0.010000"},
    {ErcKind::TCJ, "OptionTCJ", "LabelTCJ", "Translation Controlled Joint", "1.000000"},
};
}  // namespace

const ErcKindInfo& ercKindInfo(ErcKind kind) { return kKinds[static_cast<int>(kind)]; }

FormListEMCs::FormListEMCs() : Form("FormListEMCs") {
  setCaption("Channel Listing");
  Label1.setCaption("Enter a new ratio and hit Enter");
  Label1.setVisible(false);
  Text1.setVisible(false);
}

DialogERC::DialogERC() : Form("DialogERC") {
  setCaption("Extended Remote Control");
  for (const ErcKindInfo& k : kKinds) option(k.kind).setCaption(k.caption);
  LabelDone.setCaption("Ready");
  LabelCancel.setCaption("Cancel");
  OptionPBM.setValue(true);
}

OptionButton& DialogERC::option(ErcKind kind) {
  OptionButton* options[kErcKindCount] = {&OptionPBM, &OptionCM,  &OptionJCM, &OptionMCM, &OptionJCJ,
                                          &OptionMCJ, &OptionJCT, &OptionMCT, &OptionTCM, &OptionTCJ};
  return *options[static_cast<int>(kind)];
}

ErcKind DialogERC::selectedKind() {
  for (const ErcKindInfo& k : kKinds)
    if (option(k.kind).value()) return k.kind;
  return ErcKind::PBM;
}

FormECM::FormECM() : Form("FormECM") {
  setCaption("Extended Remote Control");
  for (const ErcKindInfo& k : kKinds) kindLabel(k.kind).setCaption(k.caption);
  LabelPBM1.setCaption("The  channel that will  be controlled.");
  LabelPBM2.setCaption("The controlling figure.");
  LabelPBM3.setCaption("The controlling  channel.");
  LabelPBM4.setCaption("The controlling body part.");
  LabelMCMaster.setCaption("Double click the channel you wish to be the master.");
  LabelMCControled.setCaption("Double click the  channel you wish to be the slave.");
  LabelListConFigECM.setCaption("Doubleclick the figure you wish to be the controling  figure.");
  LabelListActorsECM.setCaption("Double click a body part to set it as the controling body part.");
  LabelWait.setCaption("Please wait...");
  LabelDone.setCaption("Done");
  LabelCancel.setCaption("Cancel");
  reset();
}

void FormECM::reset() {
  for (const ErcKindInfo& k : kKinds) kindLabel(k.kind).setVisible(false);
  for (TextBox* t : {&TextPBM1, &TextPBM2, &TextPBM3, &TextPBM4, &TextPBMRatio}) t->setText("");
  for (ListBox* l : {&ListControlledMorph, &ListConFigECM, &ListActorsECM, &ListMinMax}) {
    l->clear();
    l->setForeColor(kBlack);
  }
  LabelPBMRatio.setCaption("Enter the desired control ratio");
  for (Control* c : std::initializer_list<Control*>{&LabelMCMaster, &LabelListConFigECM, &LabelListActorsECM,
                                                    &ListConFigECM, &ListActorsECM, &ListMinMax,
                                                    &LabelPBMRatio, &TextPBMRatio, &LabelWait, &LabelDone})
    c->setVisible(false);
  LabelMCControled.setVisible(true);
  ListControlledMorph.setVisible(true);
  ClickCount = 0;
  OwnFigure.clear();
  MasterFigure.clear();
  ControllingKey.clear();
  ControlledKey.clear();
  WorkDone = false;
}

Label& FormECM::kindLabel(ErcKind kind) {
  Label* labels[kErcKindCount] = {&LabelPBM, &LabelCM,  &LabelJCM, &LabelMCM, &LabelJCJ,
                                  &LabelMCJ, &LabelJCT, &LabelMCT, &LabelTCM, &LabelTCJ};
  return *labels[static_cast<int>(kind)];
}

ErcKind FormECM::visibleKind() {
  for (const ErcKindInfo& k : kKinds)
    if (kindLabel(k.kind).visible()) return k.kind;
  return ErcKind::PBM;
}

}  // namespace tolvane::ui
