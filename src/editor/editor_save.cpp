#include "editor/editor_save.h"

#include <filesystem>

#include "core/figure_text.h"
#include "core/line_writer.h"
#include "core/runtime_error.h"
#include "core/scratch_file.h"
#include "core/scratch_move.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
constexpr const char* kScratch = "\\EditorSave.tmp";

void writePane(Program& program, ui::TextPane& pane, const std::string& chosen) {
  std::filesystem::path scratch = program.workFile(kScratch);
  core::deleteIgnoringErrors(scratch);
  try {
    core::LineWriter out(scratch, core::LineWriter::Mode::Output);
    out.write(pane->text());
    out.close();
    // The pane's own file goes, and so does any other file of the chosen name.
    core::moveScratchInto(scratch, core::nativePath(chosen), true);
  } catch (...) {
    core::deleteIgnoringErrors(scratch);
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
