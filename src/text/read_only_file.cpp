#include "text/read_only_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "text/gzip_file.h"
#include "text/runtime_error.h"

namespace tolvane::text {

ReadOnlyFile::ReadOnlyFile(const std::filesystem::path& path, bool asStored) : m_path(path) {
  m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (m_fd < 0) raiseError(errorNumberFromErrno(errno, false), path.string());
  struct stat st {};
  if (::fstat(m_fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    ::close(m_fd);
    m_fd = -1;
    raiseError(kPathFileAccessError, path.string());
  }
  m_length = static_cast<std::uint64_t>(st.st_size);
  // A packed figure is read as the text it holds.
  char head[2];
  if (!asStored && ::pread(m_fd, head, sizeof head, 0) == 2 && gzip::hasMagic(std::string_view(head, 2))) {
    int packed = m_fd;
    m_fd = -1;
    try {
      m_fd = gzip::openUnpacked(packed, path, m_length);
    } catch (...) {
      ::close(packed);
      throw;
    }
    ::close(packed);
  }
}

ReadOnlyFile::~ReadOnlyFile() { close(); }

void ReadOnlyFile::close() {
  if (m_fd >= 0) ::close(m_fd);
  m_fd = -1;
}

std::size_t ReadOnlyFile::readAt(std::uint64_t offset, char* to, std::size_t size) {
  if (m_fd < 0) raiseError(kBadFileNameOrNumber, m_path.string());
  std::size_t filled = 0;
  while (filled < size) {
    ssize_t n = ::pread(m_fd, to + filled, size - filled, static_cast<off_t>(offset + filled));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) raiseError(kDeviceIOError, m_path.string());
    if (n == 0) break;
    filled += static_cast<std::size_t>(n);
  }
  return filled;
}

}  // namespace tolvane::text
