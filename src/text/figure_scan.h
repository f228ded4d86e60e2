// A fast reader of figure text for the workspace readers: the same ReadRawLine and
// ReadField rules as LineReader, but lines and fields come back as views into one
// sliding window read from the file, and whole runs of lines that hold none of a reader's keywords (the
// morph deltas that make up most of a figure) are passed over in bulk and counted.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "text/read_only_file.h"
#include "text/shared_read.h"

namespace tolvane::text {

// The keywords a loop reacts to, with the next place each was found, so that a long
// run of loops keeps every search linear.
class Needles {
 public:
  Needles(std::initializer_list<std::string_view> words);

 private:
  friend class FigureScanner;
  std::vector<std::string> m_words;
  std::vector<std::size_t> m_probe;   // the word's least common character, searched first
  std::vector<std::uint64_t> m_next;  // absolute offset of the next hit, or kNone
  std::vector<std::uint64_t> m_from;  // where the search that found it started
  std::uint64_t m_generation = ~0ull;
};

class FigureScanner {
 public:
  // `window` is the reading block; tests make it tiny to reach its edges.
  explicit FigureScanner(const std::filesystem::path& path, std::size_t window = 4 << 20);
  // A scanner that reads through a read shared with other scanners on other threads.
  FigureScanner(std::shared_ptr<SharedRead> shared, int reader, std::size_t window = 4 << 20);
  ~FigureScanner();
  FigureScanner(const FigureScanner&) = delete;
  FigureScanner& operator=(const FigureScanner&) = delete;

  bool atEnd();
  // A view that stays valid until the next call on the scanner; false at the end.
  bool rawLine(std::string_view& out);
  bool field(std::string_view& out);
  // As above, but reading past the end is run-time error 62.
  std::string_view ReadRawLine();
  std::string_view ReadField();

  // From the start of a line, passes over every whole line that holds none of the
  // needles and stops at the start of the first one that does (or at the end). For a
  // loop of field reads (`fields`), a line with a double quote stops it too, since a
  // quoted field may run over line ends. Returns how many reads were passed over
  // (lines, or fields: a comma makes one more), or with `count` false the number of
  // bytes. Does nothing in the middle of a line.
  std::uint64_t skipLines(Needles& needles, bool fields, bool count);

  std::uint64_t length() const { return m_length; }
  // Byte offset of the next byte to be read: how far the scan is.
  std::uint64_t position() const { return m_base + m_pos; }
  // Called about every 100 ms of reading, so that the event loop can run. Without it the
  // scanner reports its progress to the calling thread's pace (text/progress.h).
  void setYield(std::function<void()> yield);
  void close();

 private:
  bool refill();  // keeps [m_keep, m_end), reads more; false at the end of the file
  void release();
  void settleLineFeed();
  std::uint64_t findNeedle(Needles& needles);
  std::uint64_t skipRegion(std::size_t end, bool fields, bool count);
  const void* lastLineEnd(std::size_t to) const;   // the last CR in [m_pos, to)
  std::size_t afterLineEnd(const void* cr) const;  // where the line after that CR starts
  // The reads of the file's last line when it has no line end: one, or none for a
  // lone comma as the very last byte.
  std::uint64_t tailReads(std::size_t stop, bool fields) const;

  // With a shared read: makes the window a block's bytes from `keep` on, lent without a
  // copy; false when the block holds no more than the `kept` bytes.
  bool lendWindow(std::uint64_t keep, std::size_t kept);
  // Reads the file at `offset`; `keep` is the lowest offset still wanted.
  std::size_t readAt(std::uint64_t keep, std::uint64_t offset, char* to, std::size_t size);

  std::filesystem::path m_path;
  std::unique_ptr<ReadOnlyFile> m_file;
  std::shared_ptr<SharedRead> m_shared;
  int m_reader = 0;
  std::shared_ptr<const SharedRead::Block> m_lent;  // the block the window lies in, if lent
  bool m_closed = false;
  std::unique_ptr<char[]> m_buffer;
  std::size_t m_capacity = 0;
  const char* m_data = nullptr;  // the window: the file from m_base on
  std::size_t m_window = 0;
  std::size_t m_pos = 0, m_end = 0, m_keep = 0;
  std::uint64_t m_base = 0;  // file offset of m_data[0]
  std::uint64_t m_length = 0;
  std::uint64_t m_generation = 0;
  bool m_eof = false;
  bool m_pendingLineFeed = false;  // a CR ended the window: one LF after it belongs to it
  bool m_atLineStart = true;
  std::function<void()> m_yield;
  std::int64_t m_lastYield = 0;
};

}  // namespace tolvane::text
