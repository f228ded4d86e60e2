#include "text/record_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "text/runtime_error.h"

namespace tolvane::text {

namespace {
constexpr std::size_t kBufferSize = 1 << 20;
constexpr std::size_t kWriteBufferSize = 1 << 20;
constexpr std::size_t kBuffersInFlight = 2;
}  // namespace

RecordFile::RecordFile(const std::filesystem::path& path, std::size_t width) : m_path(path), m_width(width) {
  if (width == 0) raiseError(kBadFileMode, path.string());
  m_fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (m_fd < 0) raiseError(errorNumberFromErrno(errno, true), path.string());
  struct stat st {};
  if (::fstat(m_fd, &st) == 0) m_fileLength = static_cast<std::uint64_t>(st.st_size);
  m_writeBuffer.reserve(kWriteBufferSize);
}

RecordFile::~RecordFile() {
  try {
    close();
  } catch (...) {
  }
}

void RecordFile::requireOpen() const {
  if (m_fd < 0) raiseError(kBadFileNameOrNumber, m_path.string());
}

void RecordFile::put(std::string_view text) {
  requireOpen();
  if (text.size() > m_width) raiseError(kInvalidProcedureCall, m_path.string());
  std::uint64_t offset = (m_current - 1) * m_width;
  // Consecutive puts fill one buffer; a put elsewhere writes out what came before.
  if (!m_writeBuffer.empty() && offset != m_writeStart + m_writeBuffer.size()) flushWrites();
  if (m_writeBuffer.size() + m_width > kWriteBufferSize) flushWrites(false);
  if (m_writeBuffer.empty()) m_writeStart = offset;
  std::size_t at = m_writeBuffer.size();
  m_writeBuffer.resize(at + m_width);
  std::memcpy(m_writeBuffer.data() + at, text.data(), text.size());
  std::memset(m_writeBuffer.data() + at + text.size(), ' ', m_width - text.size());
  m_fileLength = std::max(m_fileLength, offset + m_width);
  ++m_current;
}

void RecordFile::flushWrites(bool wait) {
  if (m_writeBuffer.empty() && !m_handedOff) return;
  std::unique_lock<std::mutex> lock(m_mutex);
  if (!m_writeBuffer.empty()) {
    if (!m_writer.joinable()) m_writer = std::thread([this] { writeLoop(); });
    m_changed.wait(lock, [this] { return m_pending.size() < kBuffersInFlight; });
    // Cached reads over the range to be written are stale now.
    if (!m_readBuffer.empty() && m_writeStart < m_readStart + m_readBuffer.size() &&
        m_readStart < m_writeStart + m_writeBuffer.size())
      m_readBuffer.clear();
    m_pending.push_back({m_writeStart, std::move(m_writeBuffer)});
    m_handedOff = true;
    m_writeBuffer.clear();
    if (!m_spare.empty()) {
      m_writeBuffer = std::move(m_spare.back());
      m_spare.pop_back();
      m_writeBuffer.clear();
    }
    m_writeBuffer.reserve(kWriteBufferSize);
    m_changed.notify_all();
  }
  if (wait) {
    m_changed.wait(lock, [this] { return m_pending.empty() && !m_writing; });
    m_handedOff = false;
  }
  lock.unlock();
  raisePendingError();
}

void RecordFile::writeLoop() {
  std::unique_lock<std::mutex> lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return m_stop || !m_pending.empty(); });
    if (m_pending.empty()) return;
    Pending job = std::move(m_pending.front());
    m_pending.pop_front();
    m_writing = true;
    bool failed = m_writeErrno != 0;
    lock.unlock();
    int error = 0;
    for (std::size_t done = 0; !failed && done < job.bytes.size();) {
      ssize_t n = ::pwrite(m_fd, job.bytes.data() + done, job.bytes.size() - done,
                           static_cast<off_t>(job.offset + done));
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) {
        error = errno;
        break;
      }
      done += static_cast<std::size_t>(n);
    }
    lock.lock();
    if (error != 0 && m_writeErrno == 0) m_writeErrno = error;
    m_spare.push_back(std::move(job.bytes));
    m_writing = false;
    m_changed.notify_all();
  }
}

void RecordFile::raisePendingError() {
  int error;
  {
    std::lock_guard<std::mutex> lock(m_mutex);
    error = m_writeErrno;
  }
  if (error != 0) raiseError(errorNumberFromErrno(error, true), m_path.string());
}

bool RecordFile::get(std::uint64_t number, std::string& out) {
  requireOpen();
  if (number < 1) raiseError(kBadFileMode, m_path.string());
  flushWrites();
  m_current = number + 1;
  out.clear();
  std::uint64_t offset = (number - 1) * m_width;
  if (offset >= m_fileLength) return false;
  std::string_view record = buffered(offset);
  out.assign(record);
  return !record.empty();
}

std::string_view RecordFile::buffered(std::uint64_t offset) {
  std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(m_width, m_fileLength - offset));
  if (offset < m_readStart || offset + size > m_readStart + m_readBuffer.size()) {
    m_readBuffer.resize(std::max(kBufferSize, m_width));
    ssize_t n;
    do {
      n = ::pread(m_fd, m_readBuffer.data(), m_readBuffer.size(), static_cast<off_t>(offset));
    } while (n < 0 && errno == EINTR);
    if (n < 0) {
      m_readBuffer.clear();
      raiseError(kDeviceIOError, m_path.string());
    }
    m_readBuffer.resize(static_cast<std::size_t>(n));
    m_readStart = offset;
    size = std::min<std::size_t>(size, m_readBuffer.size());
  }
  return std::string_view(m_readBuffer.data() + (offset - m_readStart), size);
}

bool RecordFile::next(std::string& out) { return get(m_current, out); }

bool RecordFile::nextView(std::string_view& out) {
  requireOpen();
  flushWrites();
  std::uint64_t number = m_current;
  std::uint64_t offset = (number - 1) * m_width;
  out = {};
  if (offset >= m_fileLength) return false;
  m_current = number + 1;
  out = buffered(offset);
  return !out.empty();
}

bool RecordFile::atEnd() {
  requireOpen();
  return (m_current - 1) * m_width >= m_fileLength;
}

std::uint64_t RecordFile::count() { return (m_fileLength + m_width - 1) / m_width; }

std::uint64_t RecordFile::length() { return m_fileLength; }

void RecordFile::close() {
  if (m_fd < 0) return;
  auto stopWriter = [this] {
    {
      std::lock_guard<std::mutex> lock(m_mutex);
      m_stop = true;
    }
    m_changed.notify_all();
    if (m_writer.joinable()) m_writer.join();
  };
  try {
    flushWrites();
    raisePendingError();
  } catch (...) {
    stopWriter();
    ::close(m_fd);
    m_fd = -1;
    throw;
  }
  stopWriter();
  int rc = ::close(m_fd);
  m_fd = -1;
  if (rc != 0) raiseError(errorNumberFromErrno(errno, true), m_path.string());
}

}  // namespace tolvane::text
