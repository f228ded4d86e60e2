#include "editor/editor_handover.h"

#include "editor/editor_panes.h"
#include "editor/editor_placement.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::editor {

namespace {
constexpr ui::Colour kHandOverDone = 0xFF0000;

void showWithHourglass(Program& program) {
  program.setBusy(true);
  ShowEditor(program);
  program.setBusy(false);
}
}  // namespace

void PictureEditorClick(Program& program) {
  ui::Opening& main = program.opening;
  if (main.LabelFileName.caption() != main.LabelChannelFileName.caption()) {
    // Two different files are open: the user clicks the label of the one to edit.
    main.LabelFileName.setForeColor(ui::kRed);
    main.LabelChannelFileName.setForeColor(ui::kRed);
    return;
  }
  ShowEditor(program);
}

void PictureEditorRightClick(Program& program) {
  ui::msgBox(program.services, "Click this for the Manual Editor", "Information", ui::Buttons::OK,
             ui::Icon::Information);
}

void LabelChannelFileNameClick(Program& program) {
  if (program.opening.LabelChannelFileName.foreColor() == kHandOverDone) return;
  showWithHourglass(program);
}

void LabelFileNameClick(Program& program) {
  program.opening.LabelChannelFileName.setForeColor(kHandOverDone);
  showWithHourglass(program);
}

void ShowEditorWithDestination(Program& program) { LabelFileNameClick(program); }

void MenuEditorClick(Program& program) { ShowEditor(program); }

void ShowEditor(Program& program) {
  ui::FormEditor& form = program.formEditor;
  if (!form.visible()) EditorLoad(program);
  form.setVisible(true);
}

void EditorLoad(Program& program) {
  ui::FormEditor& form = program.formEditor;
  ui::Opening& main = program.opening;
  loadPlacement(program);
  form.setCaption(ui::kEditorUnsetCaption);

  // A red source label means the source was picked; otherwise the destination is meant.
  const std::string& path = main.LabelChannelFileName.foreColor() == ui::kRed
                                ? main.LabelChannelFileNameForEditor.caption()
                                : main.LabelFileNameForEditor.caption();
  if (!path.empty()) form.setCaption(path);
  main.LabelFileName.setForeColor(kHandOverDone);
  main.LabelChannelFileName.setForeColor(kHandOverDone);

  if (form.caption() == ui::kEditorUnsetCaption) {
    form.setCaption(ui::kEditorSecondCaption);
    return;
  }
  std::uint64_t length = loadPaneFile(form.RichTextBox1, form.caption());
  form.LabelFileSizeEd2.setVisible(false);
  form.LabelFileSizeEd1.setCaption(sizeCaption(length));
  form.LabelFileSizeEd1.setVisible(true);
  form.LeftPaneFile = form.caption();
}

}  // namespace tolvane::editor
