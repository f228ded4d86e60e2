// The reading rules of figure text in their plainest form, over text held in memory:
// the fuzz targets check the buffered readers against it. A line ends at CR LF or at a
// lone CR (a lone LF belongs to the line); a field drops leading blanks and tabs and
// ends at a comma or a line end, and a field that opens with a double quote runs to
// the next double quote, dropping the rest up to its delimiter.
#pragma once

#include <cstddef>
#include <string_view>

namespace tolvane::fuzz {

class TextModel {
 public:
  explicit TextModel(std::string_view text) : m_text(text) {}

  bool atEnd() const { return m_pos >= m_text.size(); }
  std::size_t position() const { return m_pos; }
  void seek(std::size_t pos) { m_pos = pos < m_text.size() ? pos : m_text.size(); }
  std::string_view text() const { return m_text; }
  // The last read was a field that ended at a comma: the reader stands inside a line.
  bool midLine() const { return m_midLine; }

  std::string_view rawLine() {
    std::size_t cr = m_text.find('\r', m_pos);
    std::size_t stop = cr == std::string_view::npos ? m_text.size() : cr;
    std::string_view line = m_text.substr(m_pos, stop - m_pos);
    m_pos = stop;
    endLine();
    m_midLine = false;
    return line;
  }

  std::string_view field() {
    while (m_pos < m_text.size() && (m_text[m_pos] == ' ' || m_text[m_pos] == '\t')) ++m_pos;
    std::string_view out;
    if (m_pos < m_text.size() && m_text[m_pos] == '"') {
      std::size_t close = m_text.find('"', m_pos + 1);
      std::size_t stop = close == std::string_view::npos ? m_text.size() : close;
      out = m_text.substr(m_pos + 1, stop - m_pos - 1);
      m_pos = stop == m_text.size() ? stop : stop + 1;
      m_pos = delimiter(m_pos);
    } else {
      std::size_t stop = delimiter(m_pos);
      out = m_text.substr(m_pos, stop - m_pos);
      m_pos = stop;
    }
    m_midLine = m_pos < m_text.size() && m_text[m_pos] == ',';
    if (m_midLine)
      ++m_pos;
    else
      endLine();
    return out;
  }

 private:
  std::size_t delimiter(std::size_t from) const {
    std::size_t stop = m_text.find_first_of(",\r", from);
    return stop == std::string_view::npos ? m_text.size() : stop;
  }
  // At a CR: passes it and one LF behind it.
  void endLine() {
    if (m_pos >= m_text.size() || m_text[m_pos] != '\r') return;
    ++m_pos;
    if (m_pos < m_text.size() && m_text[m_pos] == '\n') ++m_pos;
  }

  std::string_view m_text;
  std::size_t m_pos = 0;
  bool m_midLine = false;
};

}  // namespace tolvane::fuzz
