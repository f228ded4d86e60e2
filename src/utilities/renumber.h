// Renumbering a file sequence: 1.bmp, 2.bmp, ... become 001.bmp, 002.bmp, ..., so that
// the files sort in order. Two oversights are part of the tool: the OBJ choice searches
// for names with a double quote in them and so renames nothing, and a two-digit number
// gets a blank where its leading zero should be.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::utilities {

void RenumberLoad(Program& program);
void RenumberDriveChange(Program& program);
void RenumberDirChange(Program& program);
void RenumberOptionClick(Program& program, bool obj);
// CommandGo.
void RenumberFiles(Program& program);

}  // namespace tolvane::utilities
