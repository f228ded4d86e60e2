#include "text/line_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "text/disk.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {
constexpr std::size_t kBufferSize = 1 << 20;
std::int64_t g_failAfter = -1;
}  // namespace

void LineWriter::failAfterBytesForTesting(std::int64_t bytes) { g_failAfter = bytes; }

LineWriter::LineWriter(const std::filesystem::path& path, Mode mode) : m_path(path) {
  int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (mode == Mode::Append ? O_APPEND : O_TRUNC);
  m_fd = disk::openForWriting(path, flags, 0666);
  if (m_fd < 0) raiseError(errorNumberFromErrno(errno, true), path.string());
  m_buffer.resize(kBufferSize);
}

LineWriter::~LineWriter() {
  try {
    close();
  } catch (...) {
  }
}

void LineWriter::write(std::string_view bytes) {
  if (m_fd < 0) raiseError(kBadFileNameOrNumber, m_path.string());
  if (bytes.empty()) return;  // an empty view may carry no buffer at all
  if (m_used + bytes.size() > m_buffer.size()) {
    flush();
    if (bytes.size() > m_buffer.size()) m_buffer.resize(bytes.size());
  }
  std::memcpy(m_buffer.data() + m_used, bytes.data(), bytes.size());
  m_used += bytes.size();
}

void LineWriter::WriteLine(std::string_view text) {
  write(text);
  write("\r\n");
}

void LineWriter::flush() {
  std::size_t done = 0;
  while (done < m_used) {
    std::size_t chunk = m_used - done;
    if (g_failAfter >= 0) {
      if (g_failAfter == 0) raiseError(kDiskFull, m_path.string());
      chunk = std::min<std::size_t>(chunk, static_cast<std::size_t>(g_failAfter));
    }
    ssize_t n = disk::write(m_fd, m_buffer.data() + done, chunk);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) raiseError(errorNumberFromErrno(errno, true), m_path.string());
    if (g_failAfter >= 0) g_failAfter -= n;
    done += static_cast<std::size_t>(n);
  }
  m_used = 0;
}

void LineWriter::flushToDevice() {
  if (m_fd < 0) raiseError(kBadFileNameOrNumber, m_path.string());
  flush();
  if (disk::flushToDevice(m_fd) != 0) raiseError(errorNumberFromErrno(errno, true), m_path.string());
}

void LineWriter::close() {
  if (m_fd < 0) return;
  try {
    flush();
  } catch (...) {
    ::close(m_fd);
    m_fd = -1;
    throw;
  }
  int rc = disk::close(m_fd);
  m_fd = -1;
  if (rc != 0) raiseError(errorNumberFromErrno(errno, true), m_path.string());
}

}  // namespace tolvane::text
