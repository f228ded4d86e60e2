#include "core/figure_scan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

#include "core/runtime_error.h"

namespace tolvane::core {

namespace {
constexpr std::uint64_t kNone = ~0ull;

std::int64_t nowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

std::uint64_t countByte(const char* from, const char* to, char byte) {
  std::uint64_t n = 0;
  while (from < to) {
    const void* hit = std::memchr(from, byte, static_cast<std::size_t>(to - from));
    if (hit == nullptr) break;
    ++n;
    from = static_cast<const char*>(hit) + 1;
  }
  return n;
}
}  // namespace

Needles::Needles(std::initializer_list<std::string_view> words) {
  for (std::string_view w : words) m_words.emplace_back(w);
  m_next.assign(m_words.size(), kNone);
  m_from.assign(m_words.size(), kNone);
}

FigureScanner::FigureScanner(const std::filesystem::path& path, std::size_t window) : m_path(path) {
  m_fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (m_fd < 0) raiseError(errorNumberFromErrno(errno, false), path.string());
  struct stat st {};
  if (::fstat(m_fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    ::close(m_fd);
    m_fd = -1;
    raiseError(kPathFileAccessError, path.string());
  }
  m_length = static_cast<std::uint64_t>(st.st_size);
  m_buf.resize(std::max<std::size_t>(window, 2));
  m_lastYield = nowMs();
}

FigureScanner::~FigureScanner() { close(); }

void FigureScanner::close() {
  if (m_fd >= 0) ::close(m_fd);
  m_fd = -1;
}

void FigureScanner::setYield(std::function<void()> yield) { m_yield = std::move(yield); }

bool FigureScanner::refill() {
  if (m_eof) return false;
  if (m_fd < 0) raiseError(kBadFileNameOrNumber, m_path.string());
  std::size_t shift = m_keep;
  if (shift > 0) {
    std::memmove(m_buf.data(), m_buf.data() + shift, m_end - shift);
    m_base += shift;
    m_pos -= shift;
    m_end -= shift;
    m_keep = 0;
  }
  if (m_end == m_buf.size()) m_buf.resize(m_buf.size() * 2);  // one line longer than the window
  ++m_generation;
  if (m_yield && nowMs() - m_lastYield >= 100) {
    m_yield();
    m_lastYield = nowMs();
  }
  for (;;) {
    ssize_t n = ::read(m_fd, m_buf.data() + m_end, m_buf.size() - m_end);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) raiseError(kDeviceIOError, m_path.string());
    if (n == 0) {
      m_eof = true;
      return false;
    }
    m_end += static_cast<std::size_t>(n);
    return true;
  }
}

void FigureScanner::settleLineFeed() {
  if (!m_pendingLineFeed) return;
  m_pendingLineFeed = false;
  if (m_pos == m_end) {
    m_keep = m_pos;
    if (!refill()) return;
  }
  if (m_buf[m_pos] == '\n') ++m_pos;
}

bool FigureScanner::atEnd() {
  settleLineFeed();
  if (m_pos < m_end) return false;
  m_keep = m_pos;
  return !refill();
}

bool FigureScanner::rawLine(std::string_view& out) {
  if (atEnd()) return false;
  std::size_t start = m_pos;
  std::size_t scan = m_pos;
  for (;;) {
    const void* cr = std::memchr(m_buf.data() + scan, '\r', m_end - scan);
    if (cr != nullptr) {
      std::size_t at = static_cast<std::size_t>(static_cast<const char*>(cr) - m_buf.data());
      out = std::string_view(m_buf.data() + start, at - start);
      m_pos = at + 1;
      if (m_pos < m_end) {
        if (m_buf[m_pos] == '\n') ++m_pos;
      } else {
        m_pendingLineFeed = true;
      }
      break;
    }
    std::size_t before = m_base;
    scan = m_end;
    m_keep = start;
    if (!refill()) {
      start -= static_cast<std::size_t>(m_base - before);
      out = std::string_view(m_buf.data() + start, m_end - start);
      m_pos = m_end;
      break;
    }
    start -= static_cast<std::size_t>(m_base - before);
    scan -= static_cast<std::size_t>(m_base - before);
  }
  m_atLineStart = true;
  return true;
}

bool FigureScanner::field(std::string_view& out) {
  if (atEnd()) return false;
  for (;;) {
    if (m_pos == m_end) {
      m_keep = m_pos;
      if (!refill()) break;
    }
    char c = m_buf[m_pos];
    if (c != ' ' && c != '\t') break;
    ++m_pos;
  }
  bool quoted = m_pos < m_end && m_buf[m_pos] == '"';
  if (quoted) ++m_pos;
  std::size_t start = m_pos;
  std::size_t stop = std::string::npos;  // end of the field's text
  for (;;) {
    if (m_pos < m_end) {
      const char* from = m_buf.data() + m_pos;
      std::size_t left = m_end - m_pos;
      const char* hit;
      if (quoted && stop == std::string::npos) {
        hit = static_cast<const char*>(std::memchr(from, '"', left));
      } else {
        const char* cr = static_cast<const char*>(std::memchr(from, '\r', left));
        std::size_t span = cr ? static_cast<std::size_t>(cr - from) : left;
        const char* comma = static_cast<const char*>(std::memchr(from, ',', span));
        hit = comma ? comma : cr;
      }
      if (hit != nullptr) {
        std::size_t at = static_cast<std::size_t>(hit - m_buf.data());
        if (quoted && stop == std::string::npos) {
          stop = at;
          m_pos = at + 1;  // the rest up to the delimiter is dropped
          continue;
        }
        if (stop == std::string::npos) stop = at;
        m_pos = at;
        break;
      }
      m_pos = m_end;
    }
    std::size_t before = m_base;
    m_keep = start;
    bool more = refill();
    std::size_t shift = static_cast<std::size_t>(m_base - before);
    start -= shift;
    if (stop != std::string::npos) stop -= shift;
    if (!more) break;
  }
  if (stop == std::string::npos) stop = m_pos;
  out = std::string_view(m_buf.data() + start, stop - start);
  m_atLineStart = true;
  if (m_pos < m_end) {
    if (m_buf[m_pos] == ',') {
      ++m_pos;
      m_atLineStart = false;
    } else if (m_buf[m_pos] == '\r') {
      ++m_pos;
      if (m_pos < m_end) {
        if (m_buf[m_pos] == '\n') ++m_pos;
      } else {
        m_pendingLineFeed = true;
      }
    }
  }
  return true;
}

std::string_view FigureScanner::ReadRawLine() {
  std::string_view line;
  if (!rawLine(line)) raiseError(kInputPastEndOfFile, m_path.string());
  return line;
}

std::string_view FigureScanner::ReadField() {
  std::string_view f;
  if (!field(f)) raiseError(kInputPastEndOfFile, m_path.string());
  return f;
}

std::uint64_t FigureScanner::findNeedle(Needles& needles) {
  std::uint64_t at = m_base + m_pos;
  if (needles.m_generation != m_generation) {
    needles.m_generation = m_generation;
    std::fill(needles.m_from.begin(), needles.m_from.end(), kNone);
  }
  std::uint64_t best = kNone;
  for (std::size_t i = 0; i < needles.m_words.size(); ++i) {
    bool cached = needles.m_from[i] != kNone && needles.m_from[i] <= at &&
                  (needles.m_next[i] == kNone || needles.m_next[i] >= at);
    if (!cached) {
      const std::string& w = needles.m_words[i];
      const void* hit = ::memmem(m_buf.data() + m_pos, m_end - m_pos, w.data(), w.size());
      needles.m_next[i] = hit ? m_base + static_cast<std::uint64_t>(static_cast<const char*>(hit) - m_buf.data())
                              : kNone;
      needles.m_from[i] = at;
    }
    if (needles.m_next[i] < best) best = needles.m_next[i];
  }
  return best;
}

std::uint64_t FigureScanner::skipRegion(std::size_t end, bool countFields) {
  const char* from = m_buf.data() + m_pos;
  const char* to = m_buf.data() + end;
  std::uint64_t n = countByte(from, to, '\r');
  if (countFields) n += countByte(from, to, ',');
  m_pos = end;
  return n;
}

std::uint64_t FigureScanner::skipLines(Needles& needles, bool countFields) {
  if (!m_atLineStart) return 0;
  std::uint64_t total = 0;
  for (;;) {
    settleLineFeed();
    if (m_pos == m_end) {
      m_keep = m_pos;
      if (!refill()) return total;
    }
    std::uint64_t hit = findNeedle(needles);
    std::size_t stop;
    bool found = hit != kNone;
    if (found) {
      std::size_t h = static_cast<std::size_t>(hit - m_base);
      const void* r = ::memrchr(m_buf.data() + m_pos, '\r', h - m_pos);
      if (r == nullptr) return total;  // the keyword stands in the line at hand
      stop = static_cast<std::size_t>(static_cast<const char*>(r) - m_buf.data()) + 1;
      if (stop < h && m_buf[stop] == '\n') ++stop;
    } else {
      const void* r = m_end - m_pos > 1 ? ::memrchr(m_buf.data() + m_pos, '\r', m_end - 1 - m_pos) : nullptr;
      if (r == nullptr) {
        m_keep = m_pos;
        if (refill()) continue;
        stop = m_end;  // the last lines of the file
      } else {
        stop = static_cast<std::size_t>(static_cast<const char*>(r) - m_buf.data()) + 1;
        if (m_buf[stop] == '\n') ++stop;
      }
    }
    if (countFields) {
      // A field that opens with a double quote may run over line ends: such lines are
      // left to the field reader.
      const void* q = std::memchr(m_buf.data() + m_pos, '"', stop - m_pos);
      if (q != nullptr) {
        std::size_t qa = static_cast<std::size_t>(static_cast<const char*>(q) - m_buf.data());
        const void* r = ::memrchr(m_buf.data() + m_pos, '\r', qa - m_pos);
        if (r == nullptr) return total;
        stop = static_cast<std::size_t>(static_cast<const char*>(r) - m_buf.data()) + 1;
        if (stop < qa && m_buf[stop] == '\n') ++stop;
        found = true;
      }
    }
    bool last = stop == m_end && m_eof;
    if (last) {
      // The tail after the last line end is one more line; a comma as the very last
      // byte of the file opens no further field.
      const void* r = stop > m_pos ? ::memrchr(m_buf.data() + m_pos, '\r', stop - m_pos) : nullptr;
      std::size_t tail = r ? static_cast<std::size_t>(static_cast<const char*>(r) - m_buf.data()) + 1 : m_pos;
      if (tail < stop && m_buf[tail] == '\n' && r != nullptr) ++tail;
      if (tail < stop) {
        ++total;
        if (countFields && m_buf[stop - 1] == ',') --total;
      }
    }
    total += skipRegion(stop, countFields);
    if (found || last) return total;
  }
}

}  // namespace tolvane::core
