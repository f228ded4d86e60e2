#include "erc/ecm_form.h"

#include <cmath>

#include "erc/ecm_builder.h"
#include "erc/ecm_lists.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "ui/services.h"

namespace tolvane::erc {

using text::InStr;
using text::Left;
using text::Mid;
using ui::ErcKind;

namespace {

std::string destination(Program& program) { return program.opening.LabelFileNameForEditor.caption(); }

bool listsDials(ErcKind kind) {
  return kind != ErcKind::PBM && kind != ErcKind::CM && kind != ErcKind::JCM && kind != ErcKind::MCM;
}
bool listsTranslations(ErcKind kind) { return familyOf(kind) == Family::Translation; }

void show(std::initializer_list<ui::Control*> on, std::initializer_list<ui::Control*> off) {
  for (ui::Control* c : off) c->setVisible(false);
  for (ui::Control* c : on) c->setVisible(true);
}

void fillDials(Program& program, ErcKind kind, bool translation) {
  auto& f = program.formECM;
  DialListing dials = listDials(destination(program), translation, kind, f.OwnFigure);
  f.ListControlledMorph.setItems(std::move(dials.dials));
  f.ListMinMax.setItems(std::move(dials.minMax));
}

void warnAboutFigureName(Program& program, const std::string& name) {
  if (text::contains(name, "Figure "))
    ui::msgBox(
        program.services,
        "You should not use Figure 1, Figure 2 etc for the name of the controlling figure. If the figure is "
        "renamed later, the EMC won't work. Be careful.",
        "Note!");
  if (text::contains(name, "figure "))
    ui::msgBox(
        program.services,
        "You should not use figure 1, figure 2 etc for the name of the controlling figure. If the figure is "
        "renamed later, the ECM won't work.  Be careful.",
        "Note!");
}

void fillFigures(Program& program) {
  program.formECM.ListConFigECM.setItems(listFigureNames(destination(program)));
}

// The first double click: the slave.
void takeSlave(Program& program) {
  auto& f = program.formECM;
  f.TextPBM1.setText(f.ListControlledMorph.text());
  show({&f.LabelListConFigECM, &f.ListConFigECM}, {&f.LabelMCControled, &f.ListControlledMorph});
  fillFigures(program);
  if (f.visibleKind() == ErcKind::PBM) {
    Lines names = listFigureNames(destination(program));
    f.TextPBM2.setText(names.empty() ? std::string() : names.front());
  } else {
    f.TextPBM2.setText(f.ListConFigECM.text());
  }
  warnAboutFigureName(program, f.TextPBM2.text());
}

// The second double click: the master, then the body parts to choose from.
void takeMaster(Program& program) {
  auto& f = program.formECM;
  std::string line = f.ListControlledMorph.text();
  std::size_t colon = InStr(line, ":");
  f.TextPBM3.setText(colon == 0 ? line : Left(line, static_cast<long long>(colon) - 1));
  if (colon > 0) f.MasterFigure = Mid(line, static_cast<long long>(colon) + 1);
  show({&f.LabelListActorsECM, &f.ListActorsECM}, {&f.LabelMCMaster, &f.ListControlledMorph});
  f.ListActorsECM.setItems(listBodyParts(destination(program)));
  if (f.ListActorsECM.listCount() == 0) ui::msgBox(program.services, "No body parts in this file!", "Note!");
}

double limitBehindStar(const std::vector<std::string>& rows, std::size_t index) {
  if (index >= rows.size()) return 1;  // a row past the list reads as empty
  const std::string& row = rows[index];
  double value = text::Val(Mid(row, static_cast<long long>(InStr(row, "*")) + 7));
  // A limit beyond the double range is the run-time's overflow, as reading it gives.
  if (!std::isfinite(value)) text::raiseError(text::kOverflow);
  return value == 0 ? 1 : value;
}

}  // namespace

double jointRatio(const std::vector<std::string>& rows, const std::string& controllingKey,
                  const std::string& controlledKey) {
  double masterLow = 0, masterHigh = 0, slaveLow = 0, slaveHigh = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (text::contains(rows[i], controllingKey)) {
      masterLow = limitBehindStar(rows, i);
      masterHigh = limitBehindStar(rows, i + 1);
    }
    if (text::contains(rows[i], controlledKey)) {
      slaveLow = limitBehindStar(rows, i);
      slaveHigh = limitBehindStar(rows, i + 1);
    }
  }
  double range = masterHigh - masterLow;
  if (range == 0) throw text::RuntimeError(11, "Division by zero", "");
  double ratio = (slaveHigh - slaveLow) / range;
  if (!std::isfinite(ratio)) text::raiseError(text::kOverflow);
  return ratio;
}

void PictureEMCClick(Program& program) {
  auto& o = program.opening;
  for (ui::Picture* p : {&o.PictureTrash, &o.PictureJoints, &o.PictureViewChannels})
    p->setBackColor(ui::kToolRest);
  program.dialogERC.setVisible(true);
}

void PictureEMCRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to work with Extended Remote Control Morphs.", "Information");
}

void DialogERCDone(Program& program) {
  auto& f = program.formECM;
  const ErcKind kind = program.dialogERC.selectedKind();
  f.reset();
  f.setVisible(true);
  const std::string path = destination(program);
  f.OwnFigure = ownFigureNumber(path);
  f.TextPBMRatio.setText(ui::ercKindInfo(kind).defaultRatio);
  f.kindLabel(kind).setVisible(true);
  if (listsDials(kind)) {
    fillDials(program, kind, listsTranslations(kind));
    return;
  }
  f.ListControlledMorph.setItems(listMorphs(path, kind));
  if (kind == ErcKind::CM && f.ListControlledMorph.listCount() == 0)
    ui::msgBox(program.services, "There are no morphs in the other figures for CM to work with!", "Note!");
}

void DialogERCCancel(Program& program) { program.dialogERC.setVisible(false); }

void FormECMClose(Program& program) {
  program.formECM.setVisible(false);
  program.dialogERC.setVisible(true);
}

void ListControlledMorphDblClick(Program& program) {
  auto& f = program.formECM;
  if (f.ListControlledMorph.listIndex() < 0) return;
  if (++f.ClickCount == 1)
    takeSlave(program);
  else
    takeMaster(program);
}

void TextPBM1Enter(Program& program) { fillFigures(program); }

void ListConFigECMDblClick(Program& program) {
  auto& f = program.formECM;
  if (f.ListConFigECM.listIndex() < 0) return;
  f.TextPBM2.setText(f.ListConFigECM.text());
  warnAboutFigureName(program, f.TextPBM2.text());
  show({&f.LabelMCMaster, &f.ListControlledMorph}, {&f.ListConFigECM, &f.LabelListConFigECM});
  if (f.visibleKind() == ErcKind::JCM) fillDials(program, ErcKind::JCM, false);
}

void ListActorsECMDblClick(Program& program) {
  auto& f = program.formECM;
  if (f.ListActorsECM.listIndex() < 0) return;
  std::string line = f.ListActorsECM.text();
  std::size_t colon = InStr(line, ":");
  f.TextPBM4.setText(colon == 0 ? line : Left(line, static_cast<long long>(colon) - 1));
  show({&f.LabelPBMRatio, &f.TextPBMRatio}, {&f.ListActorsECM, &f.LabelListActorsECM});
  f.TextPBMRatio.setFocus();
  const ErcKind kind = f.visibleKind();
  const Family family = familyOf(kind);
  if (family == Family::Joint || family == Family::Translation) {
    if (kind == ErcKind::TCM) {
      f.ControllingKey = f.TextPBM1.text();
      f.ControlledKey = f.TextPBM3.text();
    } else if (kind == ErcKind::MCJ || kind == ErcKind::TCJ) {
      f.ControlledKey = f.TextPBM1.text();
    } else {
      f.ControllingKey = f.TextPBM3.text();
      f.ControlledKey = f.TextPBM1.text();
    }
  }
  if (kind != ErcKind::JCJ) return;
  double ratio = jointRatio(f.ListMinMax.items(), f.ControllingKey, f.ControlledKey);
  f.TextPBMRatio.setText(text::LTrim(text::StrDouble(ratio)));
  f.LabelPBMRatio.setCaption("Changing this ratio is not recommended.");
  f.LabelWait.setVisible(true);
  RunBuilder(program);
}

void TextPBMRatioEnter(Program& program) {
  auto& f = program.formECM;
  f.LabelWait.setVisible(true);
  RunBuilder(program);
  f.LabelDone.setVisible(true);
}

}  // namespace tolvane::erc
