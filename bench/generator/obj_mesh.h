// Large OBJ meshes for the workbench's benchmarks: a grid of quads wound round a
// figure-high cylinder, split into triangles, with texture vertices, one normal, and a
// group and material every few thousand faces.
#pragma once

#include <cstdint>
#include <filesystem>

namespace tolvane::gen {

struct MeshSize {
  std::uint64_t vertices = 0, triangles = 0, bytes = 0;
};

// Writes a mesh of about `triangles` triangles; `withTexture` adds "vt" lines and the
// v/vt corner form.
MeshSize writeGridObj(const std::filesystem::path& path, std::uint64_t triangles, bool withTexture = true);

}  // namespace tolvane::gen
