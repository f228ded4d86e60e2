// The library files of the demo set around the figure: a pose, a face pose, a scene
// with two figures, a hair file and a prop file with embedded geometry.
#pragma once

#include <cstdint>
#include <filesystem>

#include "figure_plan.h"

namespace tolvane::gen {

void writePose(const std::filesystem::path& path, const Figure& figure, const Pose& pose);
void writeFacePose(const std::filesystem::path& path);
void writeScene(const std::filesystem::path& path, const Figure& figure, const Pose& secondPose);
// A scene around one large figure whose morphs the budget sizes. Returns its bytes.
struct DeltaBudget;
std::uint64_t writeLargeSceneFile(const std::filesystem::path& path, const Figure& figure, DeltaBudget& budget);
void writeHair(const std::filesystem::path& path);
void writePropFile(const std::filesystem::path& path);

}  // namespace tolvane::gen
