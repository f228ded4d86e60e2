// Mash: an OBJ made smaller by dropping the lines the figure application does not need,
// the normals of a mesh or all but the vertices of a morph target. The original is kept
// under a backup name; a processed file carries a marker line and is refused again.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

constexpr const char* kProcessedMarker = "# Processed by Tolvane";

void PictureMashClick(Program& program);
void PictureMashRightClick(Program& program);

// Backup name: the path up to and including its first ".", then "bak".
std::string mashBackupName(const std::string& path);

}  // namespace tolvane::obj
