// The Dial Renamer: rewrites a figure's GetStringRes name references as the English
// names of Poser's two built-in tables (dials under key 1028, body parts under the
// others) and back. The two directions are not mirror images: each keeps the line
// shapes and oversights its users have always got from it.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::utilities {

// The friendly name of a dial or body part number, or nullptr for a number in no row.
const char* dialName(int number);
const char* bodyPartName(int number);

// One line in each direction. `name` and `number` carry over from line to line, as the
// tool's variables do, and are not cleared when a line finds no row.
std::string toFriendlyLine(const std::string& line, std::string& name);
std::string toGetStringResLine(const std::string& line, std::string& number);

// The form's events.
void RenamerLoad(Program& program);
void RenamerDriveChange(Program& program);
void RenamerDirChange(Program& program);
void RenamerFileClick(Program& program);
void RenamerModeClick(Program& program, int mode);
void RenamerPictureClick(Program& program);
void RenamerDrop(Program& program);
void RenamerHelp(Program& program);
void RenamerAbout(Program& program);

}  // namespace tolvane::utilities
