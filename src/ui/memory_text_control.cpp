#include "ui/memory_text_control.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tolvane::ui {

namespace {
std::array<char, 256> makeFoldTable() {
  std::array<char, 256> table{};
  for (int i = 0; i < 256; ++i) {
    int c = i;
    if (c >= 'A' && c <= 'Z')
      c += 32;
    else if (c >= 0xC0 && c <= 0xDE && c != 0xD7)
      c += 32;  // Latin-1 capitals
    table[static_cast<std::size_t>(i)] = static_cast<char>(c);
  }
  return table;
}
const std::array<char, 256> kFold = makeFoldTable();
}  // namespace

char foldCase(char c) { return kFold[static_cast<unsigned char>(c)]; }

bool isWordChar(char c) {
  auto u = static_cast<unsigned char>(c);
  return (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || u == '_' ||
         (u >= 0xC0 && u != 0xD7 && u != 0xF7);
}

std::string MemoryTextControl::text() const {
  std::string out;
  out.reserve(static_cast<std::size_t>(length()));
  out.append(m_buf, 0, m_gapStart);
  out.append(m_buf, m_gapEnd, std::string::npos);
  return out;
}

void MemoryTextControl::setText(std::string text) {
  m_buf = std::move(text);
  m_gapStart = m_gapEnd = m_buf.size();
  m_selStart = m_selLength = 0;
  m_selColor = kBlack;
  m_modified = false;
  m_lineStarts.assign(1, 0);
  m_scannedTo = 0;
  m_lineBreaks = std::count(m_buf.begin(), m_buf.end(), '\n');
  m_history.clear();
}

std::int64_t MemoryTextControl::length() const {
  return static_cast<std::int64_t>(m_buf.size() - gapLength());
}

void MemoryTextControl::setSelection(std::int64_t start, std::int64_t length) {
  m_selStart = std::clamp<std::int64_t>(start, 0, this->length());
  m_selLength = std::clamp<std::int64_t>(length, 0, this->length() - m_selStart);
}

std::string MemoryTextControl::mid(std::int64_t start, std::int64_t length) const {
  start = std::clamp<std::int64_t>(start, 0, this->length());
  length = std::clamp<std::int64_t>(length, 0, this->length() - start);
  auto from = static_cast<std::size_t>(start);
  auto to = static_cast<std::size_t>(start + length);
  std::string out;
  out.reserve(to - from);
  if (from < m_gapStart) out.append(m_buf, from, std::min(to, m_gapStart) - from);
  std::size_t behind = std::max(from, m_gapStart);
  if (behind < to) out.append(m_buf, behind + gapLength(), to - behind);
  return out;
}

std::string MemoryTextControl::selectedText() const { return mid(m_selStart, m_selLength); }

void MemoryTextControl::moveGap(std::size_t position) {
  if (position < m_gapStart) {
    std::size_t n = m_gapStart - position;
    std::memmove(&m_buf[m_gapEnd - n], &m_buf[position], n);
    m_gapStart -= n;
    m_gapEnd -= n;
  } else if (position > m_gapStart) {
    std::size_t n = position - m_gapStart;
    std::memmove(&m_buf[m_gapStart], &m_buf[m_gapEnd], n);
    m_gapStart += n;
    m_gapEnd += n;
  }
}

void MemoryTextControl::ensureGap(std::size_t bytes) {
  if (gapLength() >= bytes) return;
  std::size_t behind = m_buf.size() - m_gapEnd;
  std::size_t gap = std::max<std::size_t>({bytes, m_buf.size() / 8, 4096});
  if (m_buf.capacity() >= m_buf.size() + gap) {
    // Room reserved when the text came in: grow in place, without a second copy.
    m_buf.resize(m_buf.size() + gap);
    std::memmove(&m_buf[m_gapEnd + gap], &m_buf[m_gapEnd], behind);
    m_gapEnd += gap;
    return;
  }
  std::string grown;
  grown.reserve(m_gapStart + gap + behind);
  grown.append(m_buf, 0, m_gapStart);
  grown.append(gap, '\0');
  grown.append(m_buf, m_gapEnd, std::string::npos);
  m_buf = std::move(grown);
  m_gapEnd = m_gapStart + gap;
}

void MemoryTextControl::replaceSelection(std::string_view text) {
  auto start = static_cast<std::size_t>(m_selStart);
  auto removedLength = static_cast<std::size_t>(m_selLength);
  moveGap(start);
  m_history.record(m_selStart, std::string_view(m_buf.data() + m_gapEnd, removedLength), text);
  replaceBytes(start, removedLength, text);
}

void MemoryTextControl::replaceBytes(std::size_t start, std::size_t removedLength,
                                     std::string_view inserted) {
  moveGap(start);
  const char* removed = m_buf.data() + m_gapEnd;
  m_lineBreaks -= std::count(removed, removed + removedLength, '\n');
  m_lineBreaks += std::count(inserted.begin(), inserted.end(), '\n');
  m_gapEnd += removedLength;
  ensureGap(inserted.size());
  std::memcpy(&m_buf[m_gapStart], inserted.data(), inserted.size());
  m_gapStart += inserted.size();
  cutLineIndex(start);
  m_selStart = static_cast<std::int64_t>(start + inserted.size());
  m_selLength = 0;
  m_modified = true;
}

bool MemoryTextControl::undo() {
  const std::vector<Edit>& step = m_history.takeUndo();
  if (step.empty()) return false;
  for (auto edit = step.rbegin(); edit != step.rend(); ++edit)
    replaceBytes(static_cast<std::size_t>(edit->position), edit->inserted.size(), edit->removed);
  // One edit: what came back is selected; a run or a group: the cursor where it began.
  const Edit& first = step.front();
  setSelection(first.position, step.size() == 1 ? static_cast<std::int64_t>(first.removed.size()) : 0);
  return true;
}

bool MemoryTextControl::redo() {
  const std::vector<Edit>& step = m_history.takeRedo();
  if (step.empty()) return false;
  for (const Edit& edit : step)
    replaceBytes(static_cast<std::size_t>(edit.position), edit.removed.size(), edit.inserted);
  // One edit: what it put in is selected; a run or a group: the cursor behind its end.
  const Edit& last = step.back();
  const auto inserted = static_cast<std::int64_t>(last.inserted.size());
  if (step.size() == 1)
    setSelection(last.position, inserted);
  else
    setSelection(last.position + inserted, 0);
  return true;
}

const char* MemoryTextControl::contiguousFrom(std::size_t position) {
  if (position < m_gapStart) {
    // Move the gap out of the way, to whichever side costs fewer bytes.
    std::size_t toStart = m_gapStart - position;
    std::size_t toEnd = m_buf.size() - m_gapEnd;
    moveGap(toStart <= toEnd ? position : static_cast<std::size_t>(length()));
  }
  return position < m_gapStart ? m_buf.data() + position : m_buf.data() + position + gapLength();
}

bool MemoryTextControl::isWholeWord(std::size_t position, std::size_t length) const {
  if (position > 0 && isWordChar(at(position - 1))) return false;
  std::size_t end = position + length;
  return end >= static_cast<std::size_t>(this->length()) || !isWordChar(at(end));
}

std::int64_t MemoryTextControl::search(std::string_view what, std::size_t start, int options) {
  const std::size_t total = static_cast<std::size_t>(length());
  const char* base = contiguousFrom(start);
  std::string_view hay(base, total - start);
  const bool matchCase = (options & kFindMatchCase) != 0;
  const bool wholeWord = (options & kFindWholeWord) != 0;
  std::string folded;
  if (!matchCase) std::transform(what.begin(), what.end(), std::back_inserter(folded), foldCase);
  std::size_t from = 0;
  while (from + what.size() <= hay.size()) {
    std::size_t hit;
    if (matchCase) {
      hit = hay.find(what, from);
    } else {
      hit = std::string_view::npos;
      for (std::size_t i = from; i + folded.size() <= hay.size(); ++i) {
        if (foldCase(hay[i]) != folded[0]) continue;
        std::size_t k = 1;
        while (k < folded.size() && foldCase(hay[i + k]) == folded[k]) ++k;
        if (k == folded.size()) {
          hit = i;
          break;
        }
      }
    }
    if (hit == std::string_view::npos) return -1;
    if (!wholeWord || isWholeWord(start + hit, what.size())) return static_cast<std::int64_t>(start + hit);
    from = hit + 1;
  }
  return -1;
}

std::int64_t MemoryTextControl::find(std::string_view what, std::int64_t start, int options) {
  if (what.empty()) return -1;
  start = std::max<std::int64_t>(start, 0);
  if (start >= length()) return -1;
  std::int64_t found = search(what, static_cast<std::size_t>(start), options);
  if (found >= 0) {
    m_selStart = found;
    m_selLength = static_cast<std::int64_t>(what.size());
  }
  return found;
}

void MemoryTextControl::scanLines(std::size_t position) const {
  position = std::min(position, static_cast<std::size_t>(length()));
  auto scanRun = [&](const char* run, std::size_t runStart, std::size_t from, std::size_t to) {
    const char* p = run + (from - runStart);
    const char* end = run + (to - runStart);
    while (p < end) {
      const void* lf = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
      if (lf == nullptr) break;
      p = static_cast<const char*>(lf) + 1;
      m_lineStarts.push_back(static_cast<std::int64_t>(runStart + static_cast<std::size_t>(p - run)));
    }
  };
  if (m_scannedTo < position && m_scannedTo < m_gapStart)
    scanRun(m_buf.data(), 0, m_scannedTo, std::min(position, m_gapStart));
  std::size_t from = std::max(m_scannedTo, m_gapStart);
  if (from < position) scanRun(m_buf.data() + gapLength(), 0, from, position);
  m_scannedTo = std::max(m_scannedTo, position);
}

void MemoryTextControl::cutLineIndex(std::size_t position) {
  auto keep = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), static_cast<std::int64_t>(position));
  m_lineStarts.erase(keep, m_lineStarts.end());
  m_scannedTo = std::min(m_scannedTo, position);
}

std::int64_t MemoryTextControl::lineFromChar(std::int64_t position) const {
  position = std::clamp<std::int64_t>(position, 0, length());
  scanLines(static_cast<std::size_t>(position));
  auto it = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), position);
  return static_cast<std::int64_t>(it - m_lineStarts.begin()) - 1;
}

std::int64_t MemoryTextControl::lineIndex(std::int64_t line) const {
  if (line < 0) return -1;
  const auto total = static_cast<std::size_t>(length());
  // Scan in growing steps until the line is known or the text is exhausted.
  std::size_t step = 1 << 16;
  while (static_cast<std::int64_t>(m_lineStarts.size()) <= line && m_scannedTo < total) {
    scanLines(m_scannedTo + step);
    step *= 2;
  }
  return line < static_cast<std::int64_t>(m_lineStarts.size()) ? m_lineStarts[static_cast<std::size_t>(line)]
                                                               : -1;
}

}  // namespace tolvane::ui
