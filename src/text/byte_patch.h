// The in-place change of one byte of a file, for the tools that flip a flag digit
// without rewriting the figure. The write goes through the disk seam and is refused
// when the byte at the offset is no longer the one the tool's scan read there.
#pragma once

#include <cstdint>
#include <filesystem>

namespace tolvane::text {

// Writes `replacement` at `offset` when the byte there still equals `expected`, and
// flushes it to the device. A file that changed since it was read (another byte there,
// or shorter than the offset) is run-time error 75 and nothing is written; a file that
// cannot be opened for writing gives its own error number.
void patchByte(const std::filesystem::path& path, std::uint64_t offset, char expected, char replacement);

}  // namespace tolvane::text
