#include "editor/editor_find.h"

#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
void showFindControls(ui::FormEditor& form, bool find, bool replace) {
  for (ui::Control* c : std::initializer_list<ui::Control*>{&form.LabelFind, &form.CheckWholeWord,
                                                            &form.CheckMatchCase, &form.ComboFind})
    c->setVisible(find);
  form.LabelReplace.setVisible(replace);
  form.TextReplace.setVisible(replace);
}
}  // namespace

int findOptions(const ui::FormEditor& form) {
  return (form.CheckWholeWord.value() ? ui::kFindWholeWord : 0) |
         (form.CheckMatchCase.value() ? ui::kFindMatchCase : 0);
}

std::int64_t runFind(ui::FormEditor& form, ui::TextPane& pane, int options) {
  std::int64_t found = pane->find(form.ComboFind.text(), pane->selStart() + 1, options);
  form.FoundPosition = static_cast<std::int32_t>(found);
  pane.textChanged();
  return found;
}

void PictureFindClick(Program& program) {
  ui::FormEditor& form = program.formEditor;
  if (form.ComboFind.visible()) {
    showFindControls(form, false, false);
    return;
  }
  showFindControls(form, true, false);
  form.ComboFind.setFocus();
}

void PictureFindRightClick(Program& program) {
  ui::msgBox(program.services, "Use this to find text, F3 to find again.", "Info", ui::Buttons::OK,
             ui::Icon::Information);
}

void PictureReplaceClick(Program& program) {
  ui::FormEditor& form = program.formEditor;
  if (form.TextReplace.visible()) {
    showFindControls(form, false, false);
    return;
  }
  form.TextReplace.setText("");
  showFindControls(form, true, true);
  form.ComboFind.setFocus();
}

void PictureReplaceRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to find and replace text.", "Information", ui::Buttons::OK,
             ui::Icon::Information);
}

void ComboFindEnter(Program& program) {
  ui::FormEditor& form = program.formEditor;
  if (form.TextReplace.visible()) {
    // In replace mode the search text is only kept; Enter in TextReplace does the work.
    form.TextReplace.setFocus();
    return;
  }
  form.ComboFind.addItem(form.ComboFind.text());
  ui::TextPane& pane = paneOf(form, activeSide(form));
  runFind(form, pane, findOptions(form));
  pane.setFocus();
}

void FindAgain(Program& program) {
  ui::FormEditor& form = program.formEditor;
  Side side = activeSide(form);
  ui::TextPane& pane = paneOf(form, side);
  runFind(form, pane, findOptions(form));
  if (form.TextReplace.visible()) {
    pane->setSelColor(ui::kRed);
    pane.textChanged();
    ui::Answer answer =
        ui::msgBox(program.services, "Replace?", "Note", ui::Buttons::YesNoCancel, ui::Icon::Question);
    if (answer == ui::Answer::Cancel) {
      pane->setSelColor(ui::kBlack);
      pane.textChanged();
      return;
    }
    if (answer == ui::Answer::Yes) {
      pane->replaceSelection(form.TextReplace.text());
      changedFlag(form, side) = 1;
    }
  }
  pane->setSelColor(ui::kBlack);
  pane.textChanged();
  pane.setFocus();
}

}  // namespace tolvane::editor
