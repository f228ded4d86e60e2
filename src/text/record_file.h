// A file of fixed-width records, each padded with blanks to the width: the random-access
// scratch arrays of the OBJ workbench (FArray.txt, VArray.txt, VTArray.txt and their
// kin). Records are put one after another at the current record, or got back by number
// or in order up to the end of the file. Reads go through one large buffer; full write
// buffers go to the file on a thread of their own, so that writing overlaps the work
// that fills the next buffer (the OBJ load writes some 400 bytes for each face).
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tolvane::text {

class RecordFile {
 public:
  // Opens (creating) the file for reading and writing with records of `width` bytes;
  // the current record is the first. A failed open is the platform's run-time error.
  RecordFile(const std::filesystem::path& path, std::size_t width);
  ~RecordFile();  // closes; errors at this point are lost, so callers close() explicitly
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;

  std::size_t width() const { return m_width; }
  const std::filesystem::path& path() const { return m_path; }
  bool isOpen() const { return m_fd >= 0; }

  // Writes `text` blank-padded to the width at the current record, then moves on. A
  // text longer than the width leaves nothing to pad with: run-time error 5, and the
  // record is not written.
  void put(std::string_view text);

  // Reads the record at 1-based `number` into `out` (padding kept) and makes the next
  // one current. Past the end `out` is empty and false comes back.
  bool get(std::uint64_t number, std::string& out);
  // Reads the current record and moves on; false at the end of the file.
  bool next(std::string& out);
  // The same without a copy: `out` views the read buffer until the next call.
  bool nextView(std::string_view& out);
  // True when no whole or partial record is left from the current one on.
  bool atEnd();

  std::uint64_t current() const { return m_current; }  // 1-based
  void seek(std::uint64_t number) { m_current = number; }
  // Records in the file, a partial last one included.
  std::uint64_t count();
  std::uint64_t length();  // in bytes

  void close();

 private:
  // The record at `offset` (below the file's length) from the read buffer, refilled from
  // there when it does not hold the whole record; shorter at the end of the file.
  std::string_view buffered(std::uint64_t offset);
  // Hands the write buffer to the writing thread; with `wait`, until all is written.
  void flushWrites(bool wait = true);
  void writeLoop();
  void raisePendingError();
  void requireOpen() const;

  std::filesystem::path m_path;
  std::size_t m_width;
  int m_fd = -1;
  std::uint64_t m_current = 1;
  // Pending writes: bytes for the file from m_writeStart on.
  std::vector<char> m_writeBuffer;
  std::uint64_t m_writeStart = 0;
  // Buffers handed to the writing thread, and the first failure it met (an errno).
  struct Pending {
    std::uint64_t offset;
    std::vector<char> bytes;
  };
  std::thread m_writer;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<Pending> m_pending;
  bool m_writing = false;
  // Whether buffers went to the writing thread since it was last waited for; without
  // them a read need not take the lock.
  bool m_handedOff = false;
  bool m_stop = false;
  int m_writeErrno = 0;
  std::vector<std::vector<char>> m_spare;  // written buffers for reuse
  // Read cache: the bytes of the file from m_readStart on.
  std::vector<char> m_readBuffer;
  std::uint64_t m_readStart = 0;
  std::uint64_t m_fileLength = 0;
};

}  // namespace tolvane::text
