// Builds zip files for the install tests with libzip: plain entries, links, encrypted
// entries, and the empty and damaged files a download can turn out to be.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tolvane::test {

struct ZipEntry {
  std::string name;
  std::string bytes;
  enum class Kind { File, Folder, Symlink, Encrypted } kind = Kind::File;
};

void writeZip(const std::filesystem::path& zip, const std::vector<ZipEntry>& entries);
// The 22 bytes of a zip with no entries.
void writeEmptyZip(const std::filesystem::path& zip);

}  // namespace tolvane::test
