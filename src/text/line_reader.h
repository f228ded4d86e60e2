// The two line operations every tool reads figure text with: ReadRawLine keeps the
// line whole, ReadField drops leading blanks and tabs and stops at a comma. A line ends
// at CR LF or at a lone CR; a lone LF belongs to the line. Reading past the end throws
// run-time error 62. The file is read through one large buffer, so memory stays flat.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "text/read_only_file.h"

namespace tolvane::text {

class LineReader {
 public:
  explicit LineReader(const std::filesystem::path& path);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // True when no byte is left: the end-of-file test the scanning loops make at their head.
  bool atEnd();

  std::string ReadRawLine();
  std::string ReadField();

  // Allocation-free forms for long scans: fill `out` and return false at the end of
  // the file instead of throwing.
  bool readRawLine(std::string& out);
  bool readField(std::string& out);

  // Byte offset (0-based) of the next byte to be read, for the byte-patching tools.
  std::uint64_t position() const { return m_bufferStart + m_pos; }
  std::uint64_t length() const { return m_file.length(); }
  void seek(std::uint64_t offset);
  // The byte at `offset` as this reader sees the file (from its buffer where it holds
  // it), or -1 outside the file: what a byte-patching tool checks before it writes.
  int byteAt(std::uint64_t offset);

  const std::filesystem::path& path() const { return m_file.path(); }
  void close();

 private:
  bool fill();  // false at the end of the file
  int peek();   // next byte or -1, without consuming it
  void readLineInto(std::string& out);
  void readFieldInto(std::string& out);

  ReadOnlyFile m_file;
  std::vector<char> m_buffer;
  std::size_t m_pos = 0;
  std::size_t m_end = 0;
  std::uint64_t m_bufferStart = 0;
};

}  // namespace tolvane::text
