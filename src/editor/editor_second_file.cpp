#include "editor/editor_second_file.h"

#include "editor/editor_panes.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

void PictureSecFileClick(Program& program) {
  ui::FormEditor& form = program.formEditor;
  ui::Answer answer =
      ui::msgBox(program.services, "Recent files list?", "Note!", ui::Buttons::YesNo, ui::Icon::Question);
  if (answer == ui::Answer::Yes) {
    form.ListMRU.setItems(program.opening.ListMRU.items());
    form.ListMRU.setVisible(true);
    return;
  }
  auto chosen = ui::openDialog(program.services, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  openInPane(program, Side::Right, *chosen);
}

void PictureSecFileRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to open a second file at the same time.", "Info", ui::Buttons::OK,
             ui::Icon::Information);
}

void EditorListMRUClick(Program& program, const EventArgs& args) {
  ui::FormEditor& form = program.formEditor;
  std::string path = form.ListMRU.text();
  if (path.empty()) return;
  form.ListMRU.setVisible(false);
  openInPane(program, (args.shift & 1) != 0 ? Side::Right : Side::Left, path);
}

}  // namespace tolvane::editor
