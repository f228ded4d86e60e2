// OBJ scaling: every vertex of the workspace's OBJ, or of every OBJ in the current
// folder, multiplied or divided by a whole number, written back in place through obj.txt.
// The numbers are padded with zeros to the field widths of Poser's parser.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

void PictureScaleObjClick(Program& program);
void PictureScaleObjRightClick(Program& program);
// The slider's value copied to the box as it changes.
void SliderOBJScaleChange(Program& program);
// Enter in TextOBJScale.
void ObjScaler(Program& program);

// One field: the value of `text` scaled (a negative scale divides) and written in the
// run-time's number text, padded to 11 characters (12 for a negative value).
std::string scaledField(std::string_view text, double scale);
// One vertex line as the scaler writes it.
std::string scaledVertexLine(std::string_view line, double scale);
// The rewrite of one file through `scratch`.
void scaleFile(const std::filesystem::path& file, const std::filesystem::path& scratch, double scale);

}  // namespace tolvane::obj
