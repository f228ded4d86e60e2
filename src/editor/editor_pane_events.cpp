#include "editor/editor_pane_events.h"

#include "editor/editor_find.h"
#include "program/events.h"
#include "program/program.h"

namespace tolvane::editor {

bool keyMarksChange(int keyCode) {
  return (keyCode >= 65 && keyCode <= 111) || keyCode == 13 || keyCode == 32 || keyCode == 46 ||
         keyCode == 8 || keyCode == 9;
}

void ShowLineNumber(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, side);
  std::int64_t line = pane->lineFromChar(pane->selStart()) + 1;
  form.TextLineNum.setText(std::to_string(line));
  ui::Colour colour = side == Side::Left ? ui::kBlack : ui::kRightPane;
  form.LabelLineNum.setForeColor(colour);
  form.TextLineNum.setForeColor(colour);
  form.LabelFileSizeEd1.setVisible(side == Side::Left);
  form.LabelFileSizeEd2.setVisible(side == Side::Right);
}

void PaneKeyDown(Program& program, Side side, const EventArgs& args) {
  ui::FormEditor& form = program.formEditor;
  if (keyMarksChange(args.keyCode)) changedFlag(form, side) = 1;
  ShowLineNumber(program, side);
  if (args.keyCode == kKeyF3) FindAgain(program);
}

void PaneClick(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  form.setCaption(paneFile(form, side));
  ShowLineNumber(program, side);
  (side == Side::Left ? form.Timer1 : form.Timer2).setEnabled(true);
}

void PaneTimer(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  ui::Timer& timer = side == Side::Left ? form.Timer1 : form.Timer2;
  if (form.ComboFind.visible()) {
    timer.setEnabled(false);
    return;
  }
  // The left pane waits while the recently used list lies over it.
  if (side == Side::Left && form.ListMRU.visible()) return;
  form.bringToFront(paneOf(form, side));
  timer.setEnabled(false);
}

}  // namespace tolvane::editor
