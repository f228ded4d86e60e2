#include "editor/editor_save.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

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

// The pane's text in pieces of a few megabytes, telling how far the save is between
// them, so that a long text neither freezes the window nor doubles in memory.
void writeInPieces(Program& program, text::LineWriter& out, std::string_view text) {
  constexpr std::size_t kPiece = 4 << 20;
  for (std::size_t at = 0; at < text.size(); at += kPiece) {
    out.write(text.substr(at, kPiece));
    program.progress(std::min(at + kPiece, text.size()), text.size());
  }
}

void writePane(Program& program, ui::TextPane& pane, const std::string& chosen) {
  std::filesystem::path scratch = program.workFile(kScratch);
  text::deleteIgnoringErrors(scratch);
  try {
    text::LineWriter out(scratch, text::LineWriter::Mode::Output);
    writeInPieces(program, out, pane->text());
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
