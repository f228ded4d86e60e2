// The last move of a rewrite: the scratch file takes the place of the user's file, and
// at no moment is the user's file missing or partly written. The new text is flushed to
// the device first, then renamed over the target in one step, and the folder is flushed.
// When the scratch file lies on another file system (a second disk, a bind mount), a
// complete copy is first made in the target's folder, unnamed or under a hidden name,
// and that copy is renamed over the target; the user's file never goes first.
#pragma once

#include <filesystem>

namespace tolvane::text {

// Moves `scratch` to `target`. With `replace` an existing target is replaced (a
// read-only target or a folder is run-time error 75, as deleting it would give);
// without it an existing target is run-time error 58, as a plain rename gives.
void moveScratchInto(const std::filesystem::path& scratch, const std::filesystem::path& target, bool replace);

// The last step alone: `scratch` replaces `target` (or takes its name) in one rename,
// flushed, staged in the target's folder first when it lies on another file system.
void replaceAtomically(const std::filesystem::path& scratch, const std::filesystem::path& target);

// Copies `from` to a new file `to` (error 58 when it exists), flushed to the device.
void copyFileSafely(const std::filesystem::path& from, const std::filesystem::path& to);

bool sameFileSystem(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace tolvane::text
