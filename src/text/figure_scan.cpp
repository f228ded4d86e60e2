#include "text/figure_scan.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

#include "text/progress.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {
constexpr std::uint64_t kNone = ~0ull;

std::int64_t nowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// Line ends (and commas) in a run of text: one read per line, one more per comma.
std::uint64_t countReadsPlain(const char* from, const char* to, bool commas) {
  std::uint64_t n = 0;
  for (; from < to; ++from) n += *from == '\r' || (commas && *from == ',');
  return n;
}

#if defined(__x86_64__) && defined(__GNUC__)
// The same with 32 bytes at a time. Each byte lane counts its hits down from zero; the
// lanes are summed before any of them could wrap.
__attribute__((target("avx2"))) std::uint64_t countReadsAvx2(const char* from, const char* to, bool commas) {
  std::uint64_t n = 0;
  const __m256i cr = _mm256_set1_epi8('\r');
  const __m256i comma = _mm256_set1_epi8(commas ? ',' : '\r');
  const __m256i zero = _mm256_setzero_si256();
  while (to - from >= 32) {
    __m256i lanes = zero;
    for (int i = 0; i < 127 && to - from >= 32; ++i, from += 32) {
      __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
      lanes = _mm256_sub_epi8(lanes, _mm256_cmpeq_epi8(v, cr));
      if (commas) lanes = _mm256_sub_epi8(lanes, _mm256_cmpeq_epi8(v, comma));
    }
    __m256i sums = _mm256_sad_epu8(lanes, zero);
    n += static_cast<std::uint64_t>(_mm256_extract_epi64(sums, 0)) +
         static_cast<std::uint64_t>(_mm256_extract_epi64(sums, 1)) +
         static_cast<std::uint64_t>(_mm256_extract_epi64(sums, 2)) +
         static_cast<std::uint64_t>(_mm256_extract_epi64(sums, 3));
  }
  return n + countReadsPlain(from, to, commas);
}
#endif

// The one entry of the counting: the widest vector code this processor runs, else the
// plain loop.
std::uint64_t countReads(const char* from, const char* to, bool commas) {
#if defined(__x86_64__) && defined(__GNUC__)
  static const bool avx2 = __builtin_cpu_supports("avx2");
  if (avx2) return countReadsAvx2(from, to, commas);
#endif
  return countReadsPlain(from, to, commas);
}

// Characters that fill the delta lines and braces of a figure: a poor first probe.
bool common(char c) { return std::strchr("0123456789 \t\r\n.-+dk{}", c) != nullptr && c != '\0'; }

const char* findWord(const char* from, const char* to, const std::string& word, std::size_t probe) {
  const char* p = from;
  while (to - p >= static_cast<std::ptrdiff_t>(word.size())) {
    const void* q = std::memchr(p + probe, word[probe], static_cast<std::size_t>(to - p) - probe);
    if (q == nullptr) return nullptr;
    const char* start = static_cast<const char*>(q) - probe;
    if (to - start >= static_cast<std::ptrdiff_t>(word.size()) &&
        std::memcmp(start, word.data(), word.size()) == 0)
      return start;
    p = start + 1;
  }
  return nullptr;
}
}  // namespace

Needles::Needles(std::initializer_list<std::string_view> words) {
  for (std::string_view w : words) {
    m_words.emplace_back(w);
    std::size_t probe = 0;
    while (probe + 1 < w.size() && common(w[probe])) ++probe;
    m_probe.push_back(common(w[probe]) ? 0 : probe);
  }
  m_next.assign(m_words.size(), kNone);
  m_from.assign(m_words.size(), kNone);
}

FigureScanner::FigureScanner(const std::filesystem::path& path, std::size_t window)
    : m_path(path), m_file(std::make_unique<ReadOnlyFile>(path)) {
  m_length = m_file->length();
  m_window = std::max<std::size_t>(window, 2);
  m_lastYield = nowMs();
}

FigureScanner::FigureScanner(std::shared_ptr<SharedRead> shared, int reader, std::size_t window)
    : m_path(shared->path()), m_shared(std::move(shared)), m_reader(reader) {
  m_length = m_shared->length();
  m_window = std::max<std::size_t>(window, 2);
  m_lastYield = nowMs();
}

FigureScanner::~FigureScanner() { close(); }

void FigureScanner::close() {
  release();
  if (m_file) m_file->close();
  if (m_shared && !m_closed) m_shared->leave(m_reader);
  m_closed = true;
}

std::size_t FigureScanner::readAt(std::uint64_t keep, std::uint64_t offset, char* to, std::size_t size) {
  return m_shared ? m_shared->readAt(m_reader, keep, offset, to, size) : m_file->readAt(offset, to, size);
}

void FigureScanner::setYield(std::function<void()> yield) { m_yield = std::move(yield); }

bool FigureScanner::refill() {
  if (m_eof) return false;
  if (m_closed) raiseError(kBadFileNameOrNumber, m_path.string());
  std::uint64_t keep = m_base + m_keep;
  std::uint64_t have = m_base + m_end;
  if (have >= m_length) {
    m_eof = true;
    return false;
  }
  if (m_yield) {
    if (nowMs() - m_lastYield >= 100) {
      m_yield();
      m_lastYield = nowMs();
    }
  } else {
    // The thread's pace, if it has one, yields and shows how far the scan is.
    reportProgress(have, m_length);
  }
  // The next window starts with the text still in use; it is at least twice that text,
  // so one line longer than a window still fits. Plain reads into one buffer: on
  // virtual machines they run several times faster than mapping the file, and a file
  // cut short while it is read ends the text instead of faulting.
  std::size_t kept = static_cast<std::size_t>(have - keep);
  if (kept > kLongestLine) raiseLineTooLong(m_path.string());
  if (m_shared && lendWindow(keep, kept)) return true;
  std::size_t size = static_cast<std::size_t>(
      std::min<std::uint64_t>(std::max<std::uint64_t>(m_window, std::uint64_t{kept} * 2), m_length - keep));
  if (size > m_capacity) {
    std::unique_ptr<char[]> grown(new char[size]);
    if (kept > 0) std::memcpy(grown.get(), m_data + m_keep, kept);
    m_buffer = std::move(grown);
    m_capacity = size;
  } else if (kept > 0) {
    std::memmove(m_buffer.get(), m_data + m_keep, kept);
  }
  std::size_t filled = kept + readAt(keep, keep + kept, m_buffer.get() + kept, size - kept);
  m_lent.reset();
  m_data = m_buffer.get();
  m_pos = static_cast<std::size_t>(m_base + m_pos - keep);
  m_keep = 0;
  m_end = filled;
  m_base = keep;
  ++m_generation;
  if (filled < size) m_length = keep + filled;  // cut short while it was read
  if (filled == kept) {  // the file is shorter than it was: its text ends here
    m_eof = true;
    return false;
  }
  return true;
}

bool FigureScanner::lendWindow(std::uint64_t keep, std::size_t kept) {
  SharedRead::View v = m_shared->view(m_reader, keep, keep);
  // A line longer than what the block holds past it, or a file cut short: the copying
  // read takes it.
  if (v.size <= kept) return false;
  m_lent = std::move(v.block);
  m_data = v.data;
  m_pos = static_cast<std::size_t>(m_base + m_pos - keep);
  m_keep = 0;
  m_end = v.size;
  m_base = keep;
  ++m_generation;
  if (v.fileEnds) m_length = keep + v.size;
  return true;
}

void FigureScanner::release() {
  m_lent.reset();
  m_buffer.reset();
  m_capacity = 0;
  m_data = nullptr;
}

void FigureScanner::settleLineFeed() {
  if (!m_pendingLineFeed) return;
  m_pendingLineFeed = false;
  if (m_pos == m_end) {
    m_keep = m_pos;
    if (!refill()) return;
  }
  if (m_data[m_pos] == '\n') ++m_pos;
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
    const void* cr = std::memchr(m_data + scan, '\r', m_end - scan);
    if (cr != nullptr) {
      std::size_t at = static_cast<std::size_t>(static_cast<const char*>(cr) - m_data);
      out = std::string_view(m_data + start, at - start);
      m_pos = at + 1;
      if (m_pos < m_end) {
        if (m_data[m_pos] == '\n') ++m_pos;
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
      out = std::string_view(m_data + start, m_end - start);
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
    char c = m_data[m_pos];
    if (c != ' ' && c != '\t') break;
    ++m_pos;
  }
  bool quoted = m_pos < m_end && m_data[m_pos] == '"';
  if (quoted) ++m_pos;
  std::size_t start = m_pos;
  std::size_t stop = std::string::npos;  // end of the field's text
  for (;;) {
    if (m_pos < m_end) {
      const char* from = m_data + m_pos;
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
        std::size_t at = static_cast<std::size_t>(hit - m_data);
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
  out = std::string_view(m_data + start, stop - start);
  m_atLineStart = true;
  if (m_pos < m_end) {
    if (m_data[m_pos] == ',') {
      ++m_pos;
      m_atLineStart = false;
    } else if (m_data[m_pos] == '\r') {
      ++m_pos;
      if (m_pos < m_end) {
        if (m_data[m_pos] == '\n') ++m_pos;
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
      const char* hit = findWord(m_data + m_pos, m_data + m_end, w, needles.m_probe[i]);
      needles.m_next[i] = hit ? m_base + static_cast<std::uint64_t>(hit - m_data) : kNone;
      needles.m_from[i] = at;
    }
    if (needles.m_next[i] < best) best = needles.m_next[i];
  }
  return best;
}

std::uint64_t FigureScanner::skipRegion(std::size_t end, bool fields, bool count) {
  std::uint64_t n = count ? countReads(m_data + m_pos, m_data + end, fields) : end - m_pos;
  m_pos = end;
  return n;
}

const void* FigureScanner::lastLineEnd(std::size_t to) const {
  return to > m_pos ? ::memrchr(m_data + m_pos, '\r', to - m_pos) : nullptr;
}

std::size_t FigureScanner::afterLineEnd(const void* cr) const {
  std::size_t at = static_cast<std::size_t>(static_cast<const char*>(cr) - m_data) + 1;
  return at < m_end && m_data[at] == '\n' ? at + 1 : at;
}

std::uint64_t FigureScanner::tailReads(std::size_t stop, bool fields) const {
  const void* cr = lastLineEnd(stop);
  std::size_t tail = cr ? afterLineEnd(cr) : m_pos;
  if (tail >= stop) return 0;
  return fields && m_data[stop - 1] == ',' ? 0 : 1;
}

std::uint64_t FigureScanner::skipLines(Needles& needles, bool fields, bool count) {
  if (!m_atLineStart) return 0;
  std::uint64_t total = 0;
  for (;;) {
    settleLineFeed();
    if (m_pos == m_end) {
      m_keep = m_pos;
      if (!refill()) return total;
    }
    std::uint64_t hit = findNeedle(needles);
    bool found = hit != kNone;
    // Up to the line that holds the keyword, or over the window's whole lines; the
    // last line end of a window is left for the next, which holds its line feed.
    const void* cr = lastLineEnd(found ? static_cast<std::size_t>(hit - m_base) : m_end - 1);
    if (found && cr == nullptr) return total;  // the keyword stands in the line at hand
    if (!found && cr == nullptr) {
      m_keep = m_pos;
      if (refill()) continue;
    }
    std::size_t stop = cr ? afterLineEnd(cr) : m_end;  // no line end left: the file's last line
    if (fields) {
      // A field that opens with a double quote may run over line ends: such lines are
      // left to the field reader.
      if (const void* q = std::memchr(m_data + m_pos, '"', stop - m_pos)) {
        cr = lastLineEnd(static_cast<std::size_t>(static_cast<const char*>(q) - m_data));
        if (cr == nullptr) return total;
        stop = afterLineEnd(cr);
        found = true;
      }
    }
    bool last = stop == m_end && m_eof;
    if (last && count) total += tailReads(stop, fields);
    total += skipRegion(stop, fields, count);
    if (found || last) return total;
  }
}

}  // namespace tolvane::text
