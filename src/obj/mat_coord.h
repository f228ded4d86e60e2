// The Material Coordinator: makes a CR2's materials agree with its OBJ. A material block
// of the figure that the OBJ never uses is taken out, and a material the OBJ uses that
// the figure lacks gets a block with fixed defaults. The result is saved through Save As.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// The material names of a figure's "figure" block, less "Preview", and the figure's
// first geometry reference (the text behind "figureResFile ").
struct FigureMaterials {
  std::vector<std::string> names;
  std::string geometry;
};
FigureMaterials readFigureMaterials(const std::filesystem::path& figure);
// The names of an OBJ's "usemtl" lines, less "Preview", each once, in order.
std::vector<std::string> readObjMaterials(const std::filesystem::path& obj);

// The default block of an added material, each line behind `tabs` tabs (the inner
// lines one more).
std::vector<std::string> defaultMaterialBlock(const std::string& name, const std::string& tabs);

// MenuCoordMat.
void MatCoordinator(Program& program);

}  // namespace tolvane::obj
