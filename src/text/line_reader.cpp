#include "text/line_reader.h"

#include <bit>
#include <cstring>

#include "text/progress.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {
constexpr std::size_t kBufferSize = 1 << 20;

// The first comma or carriage return in [p, limit), or limit. Eight bytes at a time:
// a byte equal to the one sought becomes zero after the exclusive or, and the
// has-zero-byte test marks it; the lowest mark is exact (higher ones may be false),
// which is the one taken.
const char* findCommaOrCr(const char* p, const char* limit) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ull;
  constexpr std::uint64_t kHighs = 0x8080808080808080ull;
  if constexpr (std::endian::native == std::endian::little) {
    while (limit - p >= 8) {
      std::uint64_t word;
      std::memcpy(&word, p, 8);
      std::uint64_t comma = word ^ (kOnes * ',');
      std::uint64_t cr = word ^ (kOnes * '\r');
      std::uint64_t marks = ((comma - kOnes) & ~comma & kHighs) | ((cr - kOnes) & ~cr & kHighs);
      if (marks != 0) return p + (std::countr_zero(marks) >> 3);
      p += 8;
    }
  }
  while (p < limit && *p != ',' && *p != '\r') ++p;
  return p;
}
}  // namespace

LineReader::LineReader(const std::filesystem::path& path) : m_file(path) { m_buffer.resize(kBufferSize); }

LineReader::~LineReader() { close(); }

void LineReader::close() { m_file.close(); }

bool LineReader::fill() {
  m_bufferStart += m_end;
  m_pos = 0;
  m_end = m_file.readAt(m_bufferStart, m_buffer.data(), m_buffer.size());
  // Once a buffer: every tool that reads a figure line by line tells how far it is.
  reportProgress(m_bufferStart, m_file.length());
  return m_end > 0;
}

int LineReader::peek() {
  if (m_pos == m_end && !fill()) return -1;
  return static_cast<unsigned char>(m_buffer[m_pos]);
}

bool LineReader::atEnd() { return peek() < 0; }

void LineReader::seek(std::uint64_t offset) {
  if (!m_file.isOpen()) raiseError(kBadFileNameOrNumber, m_file.path().string());
  m_bufferStart = offset;
  m_pos = m_end = 0;
}

int LineReader::byteAt(std::uint64_t offset) {
  if (offset >= m_bufferStart && offset < m_bufferStart + m_end)
    return static_cast<unsigned char>(m_buffer[static_cast<std::size_t>(offset - m_bufferStart)]);
  char byte = 0;
  if (m_file.readAt(offset, &byte, 1) != 1) return -1;
  return static_cast<unsigned char>(byte);
}

void LineReader::readLineInto(std::string& out) {
  out.clear();
  for (;;) {
    if (m_pos == m_end && !fill()) return;  // last line without an ending
    const char* start = m_buffer.data() + m_pos;
    const void* cr = std::memchr(start, '\r', m_end - m_pos);
    if (cr == nullptr) {
      out.append(start, m_end - m_pos);
      m_pos = m_end;
      if (out.size() > kLongestLine) raiseLineTooLong(m_file.path().string());
      continue;
    }
    const char* crp = static_cast<const char*>(cr);
    out.append(start, static_cast<std::size_t>(crp - start));
    m_pos += static_cast<std::size_t>(crp - start) + 1;
    if (m_pos < m_end ? m_buffer[m_pos] == '\n' : peek() == '\n') ++m_pos;
    return;
  }
}

bool LineReader::readRawLine(std::string& out) {
  if (m_pos == m_end && atEnd()) return false;
  readLineInto(out);
  return true;
}

std::string LineReader::ReadRawLine() {
  std::string line;
  if (!readRawLine(line)) raiseError(kInputPastEndOfFile, m_file.path().string());
  return line;
}

void LineReader::readFieldInto(std::string& out) {
  out.clear();
  int c = peek();
  while (c == ' ' || c == '\t') {
    ++m_pos;
    c = m_pos < m_end ? static_cast<unsigned char>(m_buffer[m_pos]) : peek();
  }
  if (c == '"') {
    ++m_pos;
    // A quoted field runs to the next double quote; the rest up to the delimiter is dropped.
    std::size_t taken = 0;
    for (c = peek(); c >= 0 && c != '"'; c = peek(), ++taken) {
      if (taken > kLongestLine) raiseLineTooLong(m_file.path().string());
      out.push_back(static_cast<char>(c));
      ++m_pos;
    }
    if (c == '"') ++m_pos;
    for (c = peek(); c >= 0 && c != ',' && c != '\r'; c = peek(), ++taken) {
      if (taken > kLongestLine) raiseLineTooLong(m_file.path().string());
      ++m_pos;
    }
  } else {
    for (;;) {
      if (m_pos == m_end && !fill()) break;
      const char* start = m_buffer.data() + m_pos;
      const char* limit = m_buffer.data() + m_end;
      const char* stop = findCommaOrCr(start, limit);
      out.append(start, static_cast<std::size_t>(stop - start));
      m_pos += static_cast<std::size_t>(stop - start);
      if (stop < limit) break;
      if (out.size() > kLongestLine) raiseLineTooLong(m_file.path().string());
    }
    c = m_pos < m_end ? static_cast<unsigned char>(m_buffer[m_pos]) : peek();
  }
  if (c == ',') {
    ++m_pos;
  } else if (c == '\r') {
    ++m_pos;
    if (m_pos < m_end ? m_buffer[m_pos] == '\n' : peek() == '\n') ++m_pos;
  }
}

bool LineReader::readField(std::string& out) {
  if (m_pos == m_end && atEnd()) return false;
  readFieldInto(out);
  return true;
}

std::string LineReader::ReadField() {
  std::string field;
  if (!readField(field)) raiseError(kInputPastEndOfFile, m_file.path().string());
  return field;
}

}  // namespace tolvane::text
