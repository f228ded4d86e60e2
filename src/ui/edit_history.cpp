#include "ui/edit_history.h"

#include <algorithm>
#include <iterator>

namespace tolvane::ui {

namespace {
const std::vector<Edit> kNoEdits;

// A typed character that may join the run before it: one byte, not a line break. A
// blank ends the run after it, so undo takes typing back a word at a time.
bool isTyping(std::string_view removed, std::string_view inserted) {
  return removed.empty() && inserted.size() == 1 && inserted[0] != '\r' && inserted[0] != '\n';
}
}  // namespace

std::size_t EditHistory::sizeOf(const Step& step) {
  std::size_t bytes = 0;
  for (const Edit& edit : step) bytes += edit.removed.size() + edit.inserted.size() + sizeof(Edit);
  return bytes;
}

void EditHistory::record(std::int64_t position, std::string_view removed, std::string_view inserted) {
  if (removed.empty() && inserted.empty()) return;
  for (const Step& step : m_redo) m_bytes -= sizeOf(step);
  m_redo.clear();
  Edit edit{position, std::string(removed), std::string(inserted)};
  const std::size_t bytes = removed.size() + inserted.size() + sizeof(Edit);
  const bool typing = isTyping(removed, inserted);

  bool joins = false;
  if (m_groupDepth > 0) {
    joins = m_groupStarted;
    m_groupStarted = true;
  } else if (typing && m_runOpen && !m_undo.empty()) {
    const Edit& last = m_undo.back().back();
    joins = last.position + static_cast<std::int64_t>(last.inserted.size()) == position;
  }
  if (joins) {
    m_undo.back().push_back(std::move(edit));
  } else {
    m_undo.push_back(Step{std::move(edit)});
  }
  m_bytes += bytes;
  m_runOpen = m_groupDepth == 0 && typing && inserted[0] != ' ' && inserted[0] != '\t';
  trim();
}

void EditHistory::beginGroup() {
  if (m_groupDepth++ == 0) {
    m_groupStarted = false;
    m_runOpen = false;
  }
}

void EditHistory::endGroup() {
  if (m_groupDepth > 0 && --m_groupDepth == 0) m_groupStarted = false;
}

void EditHistory::clear() {
  m_undo.clear();
  m_redo.clear();
  m_bytes = 0;
  m_runOpen = false;
  m_groupStarted = false;
}

const std::vector<Edit>& EditHistory::moveStep(std::vector<Step>& from, std::vector<Step>& to) {
  m_runOpen = false;
  if (from.empty()) return kNoEdits;
  to.push_back(std::move(from.back()));
  from.pop_back();
  return to.back();
}

void EditHistory::trim() {
  // Drops the oldest undo steps; the newest one stays even when it alone is too big.
  std::size_t drop = 0;
  while (m_bytes > m_limit && drop + 1 < m_undo.size()) m_bytes -= sizeOf(m_undo[drop++]);
  m_undo.erase(m_undo.begin(), std::next(m_undo.begin(), static_cast<std::ptrdiff_t>(drop)));
}

}  // namespace tolvane::ui
