// One read of a file for several scanners that walk it at the same time, each on its
// own thread: a block is read from the file once, lent to every scanner that comes to it
// without a copy, and dropped when the last of them has passed it. A scanner that runs
// ahead waits for the slowest, so memory stays flat however large the file is. Blocks
// overlap a little, so that a line across a block's end is whole in the block before.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "text/read_only_file.h"

namespace tolvane::text {

class SharedRead {
 public:
  struct Block;
  // The file's bytes from an offset to the end of the block that holds it.
  struct View {
    std::shared_ptr<const Block> block;  // keeps the bytes alive
    const char* data = nullptr;
    std::size_t size = 0;
    bool fileEnds = false;  // the file ends within these bytes
  };

  // `ahead` is how many blocks the fastest reader may be ahead of the slowest. A reader
  // counts from its first read until it leaves, so one that never starts holds no one up.
  explicit SharedRead(const std::filesystem::path& path, std::size_t block = 4 << 20, std::size_t ahead = 6,
                      std::size_t overlap = 64 << 10);
  ~SharedRead();
  SharedRead(const SharedRead&) = delete;
  SharedRead& operator=(const SharedRead&) = delete;

  std::uint64_t length() const { return m_file.length(); }
  // How many bytes of the file have been read so far, for any thread to show.
  std::uint64_t bytesRead() const { return m_read.load(std::memory_order_relaxed); }
  const std::filesystem::path& path() const { return m_file.path(); }

  // The bytes from `offset` on for `reader`, empty where the file ends. `floor` is the
  // lowest offset the reader will ask for from now on; it never falls. A failed read of
  // the file is run-time error 57.
  View view(int reader, std::uint64_t floor, std::uint64_t offset);
  // Copies up to `size` bytes at `offset`; fewer only where the file ends.
  std::size_t readAt(int reader, std::uint64_t floor, std::uint64_t offset, char* to, std::size_t size);
  // The reader reads no more; the others no longer wait for it.
  void leave(int reader);

 private:
  struct Slot {
    std::shared_ptr<const Block> block;  // null while it is being read
    bool failed = false;
  };

  std::shared_ptr<const Block> block(std::unique_lock<std::mutex>& lock, int reader, std::uint64_t index);
  std::shared_ptr<const Block> readBlock(std::uint64_t index);
  std::uint64_t slowest() const;
  void setFloor(int reader, std::uint64_t index);

  ReadOnlyFile m_file;
  std::size_t m_blockSize;
  std::size_t m_ahead;
  std::size_t m_overlap;
  // Buffers of dropped blocks, kept for the next ones: new memory costs more than the read.
  std::shared_ptr<std::pair<std::mutex, std::vector<std::unique_ptr<char[]>>>> m_spare;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::map<std::uint64_t, Slot> m_blocks;
  std::map<int, std::uint64_t> m_floors;  // each reading reader's lowest block
  std::atomic<std::uint64_t> m_read{0};   // the end of the furthest block read
};

// Runs the jobs at the same time, each on its own thread, and waits for them all,
// calling `idle` every 20 ms or so while it waits (the caller decides there, by its own
// clock, when the event loop runs and the progress is shown). Returns
// each job's exception, or null where the job ended normally.
std::vector<std::exception_ptr> runTogether(const std::vector<std::function<void()>>& jobs,
                                            const std::function<void()>& idle);

}  // namespace tolvane::text
