// The library files of the demo set around the figure: a pose, a face pose, a scene
// with two figures, a hair file and a prop file with embedded geometry.
#pragma once

#include <filesystem>

#include "figure_plan.h"

namespace tolvane::gen {

void writePose(const std::filesystem::path& path, const Figure& figure, const Pose& pose);
void writeFacePose(const std::filesystem::path& path);
void writeScene(const std::filesystem::path& path, const Figure& figure, const Pose& secondPose);
void writeHair(const std::filesystem::path& path);
void writePropFile(const std::filesystem::path& path);

}  // namespace tolvane::gen
