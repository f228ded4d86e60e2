// The outside files of the demo set: the figure's OBJ with one group per body part,
// its MTL, the small OBJs of props and hair, and the texture pictures (plain BMP).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "figure_plan.h"

namespace tolvane::gen {

void writeFigureObj(const std::filesystem::path& path, const Figure& figure, const std::string& mtlName);
void writeMtl(const std::filesystem::path& path, const std::vector<Material>& materials);
// One group of boxes with one material.
void writeBoxObj(const std::filesystem::path& path, const std::string& group, const std::string& material,
                 const std::vector<std::pair<Vec, Vec>>& boxes);
// A 24-bit BMP of size x size pixels with a pattern made from `seed` in the given
// colour (red, green, blue).
void writeBmp(const std::filesystem::path& path, int size, int seed, int red, int green, int blue);

}  // namespace tolvane::gen
