// Unpacks a downloaded figure's zip into the install folder with the zip's own folders:
// a file the zip keeps in a folder lands in that folder under the install folder, out of
// reach of the search for the figure there, as an unzip with folders leaves it. Before
// anything is written the whole zip is checked, and it is refused when an entry would leave the
// folder (a "../" part, an absolute path, a symbolic or hard link), is encrypted, or says
// it expands past the size limit; while unpacking, an entry that grows past the limit or
// far past its packed size (a zip bomb) stops the job. A refused or failed job removes
// what it had written, so the folder is left as it was.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tolvane::install {

struct ZipLimits {
  std::uint64_t maxEntryBytes = std::uint64_t{4} << 30;  // 4 GB
  std::uint64_t maxRatio = 1000;                         // unpacked to packed
  std::uint64_t ratioFloor = std::uint64_t{1} << 20;     // the ratio counts above 1 MB
};

// How a refusal of a zip that cannot be read begins (a damaged file, or no zip at all).
inline constexpr const char* kDamagedZip = "the zip file is damaged or is no zip file";

struct ZipResult {
  // Empty when the zip was unpacked; else why it was refused, in the user's words.
  std::string refusal;
  // The files written, in the zip's order, each by its place under the folder ("a/b.jpg").
  std::vector<std::string> files;
};

// Unpacks `zip` into `folder`. A refusal comes back in the result with nothing written;
// a failure of the disk (full, read-only) is a run-time error, thrown after the files and
// folders of this job are removed again.
ZipResult extractZip(const std::filesystem::path& zip, const std::filesystem::path& folder,
                     const ZipLimits& limits = {});

// Why an entry name is refused, or empty when it stays inside the folder.
std::string unsafeEntryName(const std::string& name);

}  // namespace tolvane::install
