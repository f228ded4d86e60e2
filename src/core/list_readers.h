// The workspace list readers: each walks the open file once from its first line and
// fills its lists on the main form. Open runs them in this order: ListPropGeometry (or
// ListPropGeometryPropFile), ListFileMaterials, ListBodyParts, ListAllChannels,
// ListTextureMaps. Tools that change parts or channels run them again to refresh.
#pragma once

#include <string>

namespace tolvane {
class Program;

void ListPropGeometry(Program& program, const std::string& path);
void ListPropGeometryPropFile(Program& program, const std::string& path);
void ListFileMaterials(Program& program, const std::string& path);
void ListBodyParts(Program& program, const std::string& path);
void ListAllChannels(Program& program, const std::string& path);
void ListTextureMaps(Program& program, const std::string& path);

// The display form of a path in the file labels: whole below 43 characters, else
// "..." and its last 45 characters.
std::string displayPath(const std::string& path);
}  // namespace tolvane
