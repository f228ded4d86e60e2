// Embedded geometry: a figure, prop or hair file may carry its mesh inside the text in a
// "geomCustom" block. The extractor writes those meshes out as OBJ files, one per part
// or all in one, and the external-OBJ maker writes a new library file that names one
// OBJ under Runtime\Geometries in place of the embedded data.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// The parts ("actor ..." or "prop ..." lines, read as fields) that own a geomCustom block.
std::vector<std::string> embeddedParts(const std::filesystem::path& file);

// PictureOBJExtract, left and right button; a click on the last row ("DONE") of
// ListOBJExtract; menuNewCR2ExtOBJ.
void OBJExtractor(Program& program);
void OBJExtractRightClick(Program& program);
void OBJExtractListClick(Program& program);
void NewCR2ExtOBJ(Program& program);

}  // namespace tolvane::obj
