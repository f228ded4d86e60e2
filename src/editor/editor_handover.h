// How the main form hands a file to the Manual Editor: by the text colours of
// LabelFileName and LabelChannelFileName. PictureEditor asks the user to pick a label
// when the two differ; a click on a label shows the editor with that file; the editor's
// load reads the colours back to learn which path is meant.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void PictureEditorClick(Program& program);
void PictureEditorRightClick(Program& program);
void LabelFileNameClick(Program& program);
void LabelChannelFileNameClick(Program& program);
void MenuEditorClick(Program& program);
// Shows the editor with the destination file: LabelFileName's click without a click.
void ShowEditorWithDestination(Program& program);

// Shows the form; a form not shown yet is loaded first.
void ShowEditor(Program& program);
// The form's load: placement, the path by the label colours, the left pane's file.
void EditorLoad(Program& program);

}  // namespace tolvane::editor
