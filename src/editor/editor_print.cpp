#include "editor/editor_print.h"

#include "editor/editor_panes.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

void PicturePrintClick(Program& program) {
  ui::FormEditor& form = program.formEditor;
  Side side = activeSide(form);
  ui::TextPane& pane = paneOf(form, side);
  bool selection = pane->selLength() > 0;
  if (!selection) {
    ui::Answer answer = ui::msgBox(
        program.services, "There is no text selected.  Do you really want to print ALL of this file?",
        "ALERT!", ui::Buttons::YesNo, ui::Icon::Exclamation);
    if (answer != ui::Answer::Yes) return;
  }
  ui::PrintJob job;
  job.title = paneFile(form, side);
  job.text = selection ? pane->selectedText() : pane->text();
  program.services.print(job);
}

}  // namespace tolvane::editor
