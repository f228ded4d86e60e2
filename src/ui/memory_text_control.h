// The editor pane's text held in memory as bytes: a gap buffer, so that a run of
// replacements moving forward through a large text costs one pass, and a line-start
// index built as far as the line queries need and cut back behind every edit.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/edit_history.h"
#include "ui/text_control.h"

namespace tolvane::ui {

class MemoryTextControl : public TextControl {
 public:
  std::string text() const override;
  // Room the string holds beyond its size becomes the first gap, so that a text read
  // with some spare capacity takes its first edits without being copied.
  void setText(std::string text) override;
  std::int64_t length() const override;
  std::string mid(std::int64_t start, std::int64_t length) const override;

  std::int64_t selStart() const override { return m_selStart; }
  std::int64_t selLength() const override { return m_selLength; }
  void setSelection(std::int64_t start, std::int64_t length) override;
  std::string selectedText() const override;
  Colour selColor() const override { return m_selColor; }
  void setSelColor(Colour colour) override { m_selColor = colour; }
  void replaceSelection(std::string_view text) override;

  std::int64_t find(std::string_view what, std::int64_t start, int options) override;

  std::int64_t lineFromChar(std::int64_t position) const override;
  std::int64_t lineIndex(std::int64_t line) const override;
  std::int64_t lineCount() const override { return m_lineBreaks + 1; }

  bool modified() const override { return m_modified; }
  void setModified(bool modified) override { m_modified = modified; }

  bool undo() override;
  bool redo() override;
  bool canUndo() const override { return m_history.canUndo(); }
  bool canRedo() const override { return m_history.canRedo(); }
  void beginEditGroup() override { m_history.beginGroup(); }
  void endEditGroup() override { m_history.endGroup(); }

 private:
  std::size_t gapLength() const { return m_gapEnd - m_gapStart; }
  char at(std::size_t position) const {
    return position < m_gapStart ? m_buf[position] : m_buf[position + gapLength()];
  }
  void moveGap(std::size_t position);
  void ensureGap(std::size_t bytes);
  // Makes the text from `position` to the end one run of bytes and returns its start.
  const char* contiguousFrom(std::size_t position);
  std::int64_t search(std::string_view what, std::size_t start, int options);
  bool isWholeWord(std::size_t position, std::size_t length) const;
  // Extends the line-start index over the text before `position`.
  void scanLines(std::size_t position) const;
  void cutLineIndex(std::size_t position);
  // Puts `inserted` in place of `removedLength` bytes at `start`, without a record.
  void replaceBytes(std::size_t start, std::size_t removedLength, std::string_view inserted);

  std::string m_buf;  // text before the gap, the gap, text behind the gap
  std::size_t m_gapStart = 0;
  std::size_t m_gapEnd = 0;
  std::int64_t m_selStart = 0;
  std::int64_t m_selLength = 0;
  Colour m_selColor = kBlack;
  bool m_modified = false;
  std::int64_t m_lineBreaks = 0;  // kept up to date by every edit, so a view counts lines at once
  mutable std::vector<std::int64_t> m_lineStarts{0};
  mutable std::size_t m_scannedTo = 0;
  EditHistory m_history;
};

// Case folding of the 8-bit text (ASCII and the Latin-1 letters) and the characters
// that make up a word for the whole-word option.
char foldCase(char c);
bool isWordChar(char c);

}  // namespace tolvane::ui
