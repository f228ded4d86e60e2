#include "editor/editor_save.h"

#include <filesystem>

#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
constexpr const char* kScratch = "\\EditorSave.tmp";

void writePane(Program& program, ui::TextPane& pane, const std::string& chosen) {
  std::filesystem::path scratch = program.workFile(kScratch);
  text::deleteIgnoringErrors(scratch);
  try {
    text::LineWriter out(scratch, text::LineWriter::Mode::Output);
    out.write(pane->text());
    out.close();
    // The pane's own file goes, and so does any other file of the chosen name.
    text::moveScratchInto(scratch, text::nativePath(chosen), true);
  } catch (...) {
    text::deleteIgnoringErrors(scratch);
    throw;
  }
}
}  // namespace

void SavePane(Program& program, Side side) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& pane = paneOf(form, side);
  std::string current = paneFile(form, side);
  auto chosen = ui::saveDialog(program.services, program.currentDir, current);
  if (chosen && !chosen->empty()) {
    program.setCurrentDirFromFile(*chosen);
    program.setBusy(true);
    writePane(program, pane, *chosen);
    program.setBusy(false);
    pane->setModified(false);
  }
  pane.setBackColor(ui::kWhite);
  changedFlag(form, side) = 0;
}

void PictureSaveClick(Program& program) {
  ui::FormEditor& form = program.formEditor;
  ui::TextPane& active = paneOf(form, activeSide(form));
  active.setBackColor(ui::kPaneAlert);
  active.setFocus();
  SavePane(program, form.RichTextBox1.backColor() == ui::kPaneAlert ? Side::Left : Side::Right);
}

void PictureSaveRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to save the file at any point.", "Info", ui::Buttons::OK,
             ui::Icon::Information);
}

}  // namespace tolvane::editor
