// The new OBJ files the group and material lists write: the chosen groups with all the
// vertex data (newobj.obj), the whole mesh with only the chosen materials, and the
// rewrite with the pending renames when the workbench closes (newobj.txt, newobj1.txt).
#pragma once

#include <filesystem>

#include "obj/obj_lists.h"

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// Writes newobj.obj from the loaded OBJ and offers to save it; false when pending
// group renames refuse the save.
bool SaveSelected(Program& program, ListKind kind);

// The rewrite of the OBJ with the pending renames and deletions into newobj.txt, runs of
// one group merged; then the save dialog.
void RewriteWithRenames(Program& program);

// Moves a finished scratch file to the name the save dialog gives; a cancel leaves it
// in the work folder.
void offerSave(Program& program, const std::filesystem::path& scratch);

}  // namespace tolvane::obj
