#include "editor/editor_close.h"

#include "editor/editor_panes.h"
#include "editor/editor_placement.h"
#include "editor/editor_save.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
// Asks about one changed pane; false when the user said No and the form closes now.
bool askAndSave(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  if (changedFlag(form, side) != 1) return true;
  ui::TextPane& pane = paneOf(form, side);
  form.bringToFront(pane);
  pane.setBackColor(ui::kPaneAlert);
  ui::Answer answer =
      ui::msgBox(program.services, "Save changes?", "Note!", ui::Buttons::YesNo, ui::Icon::Question);
  if (answer != ui::Answer::Yes) return false;
  SavePane(program, side);
  return true;
}
}  // namespace

void EditorUnload(Program& program) {
  if (askAndSave(program, Side::Left)) askAndSave(program, Side::Right);
  savePlacement(program);
  program.formEditor.reset();
}

}  // namespace tolvane::editor
