#include "editor/editor_goto_line.h"

#include "text/run_time_number.h"
#include "editor/editor_panes.h"
#include "program/program.h"

namespace tolvane::editor {

void GotoLine(Program& program, bool fromEnter) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, activeSide(form));
  pane.setFocus();
  auto line = static_cast<std::int64_t>(text::Val(form.TextLineNum.text()));
  if (fromEnter && line == 0) {
    form.TextLineNum.setText("");
    return;
  }
  pane->setSelection(line, 0);
  std::int64_t start = pane->lineIndex(line);
  if (start > -1) pane->setSelection(start - 1, 0);
  pane.textChanged();
}

}  // namespace tolvane::editor
