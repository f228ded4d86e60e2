#include "editor/editor_replace.h"

#include <chrono>

#include "editor/editor_find.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
constexpr auto kYieldEvery = std::chrono::milliseconds(100);

void replaceAll(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, side);
  const int options = findOptions(form);
  const std::string replacement = form.TextReplace.text();
  auto lastYield = std::chrono::steady_clock::now();
  program.setBusy(true);
  ui::EditGroup oneUndoStep(pane.text());
  // A found position of 0 ends the loop as surely as -1 does.
  std::int64_t position = 1;
  while (position >= 1) {
    std::int64_t found = pane->find(form.ComboFind.text(), pane->selStart() + 1, options);
    form.FoundPosition = static_cast<std::int32_t>(found);
    if (found != -1) pane->replaceSelection(replacement);
    position = found;
    if (std::chrono::steady_clock::now() - lastYield >= kYieldEvery) {
      program.services.yield();
      lastYield = std::chrono::steady_clock::now();
    }
  }
  program.setBusy(false);
  pane.textChanged();
  form.TextReplace.setText("");
  form.TextReplace.setVisible(false);
  form.ComboFind.setVisible(false);
  changedFlag(form, side) = 1;
}

void replaceOne(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, side);
  pane->find(form.ComboFind.text(), 0, ui::kFindNoOptions);  // shows the first place
  pane.textChanged();
  ui::Answer answer =
      ui::msgBox(program.services, "Replace?", "Note!", ui::Buttons::YesNoCancel, ui::Icon::Question);
  pane.setFocus();
  if (answer != ui::Answer::Yes) return;
  runFind(form, pane, findOptions(form));
  pane->replaceSelection(form.TextReplace.text());
  pane.textChanged();
  changedFlag(form, side) = 1;
}
}  // namespace

void TextReplaceEnter(Program& program) {
  ui::FormEditor& form = program.formEditor;
  Side side = activeSide(form);
  if (form.FoundPosition != -2) {
    ui::Answer answer = ui::msgBox(program.services, "Replace ALL instances on this page?", "Note!",
                                   ui::Buttons::YesNo, ui::Icon::Question);
    if (answer != ui::Answer::Yes) {
      replaceOne(program, side);
      return;
    }
  }
  replaceAll(program, side);
}

}  // namespace tolvane::editor
