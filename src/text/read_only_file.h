// A file opened for reading, as every reader of figure text opens it: the run-time error
// numbers of a failed open (a folder named like a file is a path/file access error), the
// length taken at the open, and plain reads at an offset, which a file cut short while it
// is read ends early instead of faulting. A gzip file reads as the text it unpacks to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace tolvane::text {

class ReadOnlyFile {
 public:
  // `asStored` reads a gzip file's own bytes (a byte-for-byte copy of it).
  explicit ReadOnlyFile(const std::filesystem::path& path, bool asStored = false);
  ~ReadOnlyFile();
  ReadOnlyFile(const ReadOnlyFile&) = delete;
  ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

  bool isOpen() const { return m_fd >= 0; }
  // The length when the file was opened (of the unpacked text, for a gzip file).
  std::uint64_t length() const { return m_length; }
  const std::filesystem::path& path() const { return m_path; }

  // Reads up to `size` bytes at `offset`; fewer only where the file ends. A failed read
  // is run-time error 57, a read after close() error 52.
  std::size_t readAt(std::uint64_t offset, char* to, std::size_t size);
  void close();

 private:
  std::filesystem::path m_path;
  int m_fd = -1;
  std::uint64_t m_length = 0;
};

}  // namespace tolvane::text
