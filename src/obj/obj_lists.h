// The workbench's group and material lists: the coloured listing, renames and
// deletions kept pending until the form closes, the selection mode for saving, the save
// of the chosen groups or materials to a new OBJ, and the close with its rewrite.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::obj {

enum class ListKind { Groups, Materials };

// CommandListGroups and CommandListMats: show or hide the coloured listing.
void ListCommandClick(Program& program, ListKind kind);
// LabelRichRename: between the coloured listing and the list that renames.
void LabelRichRenameClick(Program& program);
// A double click in ListGroups or ListMaterials starts a rename.
void StartRename(Program& program, ListKind kind);
// Enter in TextGrpRename or TextMatRename ends it; an empty box deletes the name.
void FinishRename(Program& program, ListKind kind);
// CheckSaveGroups and CheckSaveMaterials: enter or leave selection mode.
void SelectionModeClick(Program& program, ListKind kind);
// A click in ListGroupsSave or ListMaterialsSave: "DONE" writes the new OBJ.
void SaveListClick(Program& program, ListKind kind);

// The form's close: the rewrite with the renames, the notes beside the OBJ, the
// scratch files, the reset. False when the close must wait for a list to be closed.
bool CloseOBJ(Program& program);
// A close that waited for an open list goes on once neither list shows; the form hides
// when it is done.
void ResumeClose(Program& program);

}  // namespace tolvane::obj
