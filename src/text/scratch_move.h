// The last move of a rewrite: the scratch file takes the place of the user's file.
// When the two lie on different file systems a rename cannot do it, so the scratch
// copy is first copied beside the target; the user's file is deleted only once the
// new text stands complete in its folder.
#pragma once

#include <filesystem>

namespace tolvane::text {

// Moves `scratch` to `target`. With `replace` an existing target is deleted first;
// without it an existing target is run-time error 58, as a plain rename gives.
void moveScratchInto(const std::filesystem::path& scratch, const std::filesystem::path& target, bool replace);

bool sameFileSystem(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace tolvane::text
