#include "text/shared_read.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <future>
#include <system_error>
#include <limits>
#include <thread>

#include "text/runtime_error.h"

namespace tolvane::text {

namespace {
constexpr std::uint64_t kLeft = std::numeric_limits<std::uint64_t>::max();
}

struct SharedRead::Block {
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
};

SharedRead::SharedRead(const std::filesystem::path& path, std::size_t block, std::size_t ahead, std::size_t overlap)
    : m_file(path),
      m_blockSize(std::max<std::size_t>(block, 1)),
      m_ahead(std::max<std::size_t>(ahead, 1)),
      m_overlap(overlap),
      m_spare(std::make_shared<std::pair<std::mutex, std::vector<std::unique_ptr<char[]>>>>()) {}

SharedRead::~SharedRead() { m_blocks.clear(); }

std::uint64_t SharedRead::slowest() const {
  std::uint64_t low = kLeft;
  for (const auto& [reader, floor] : m_floors) low = std::min(low, floor);
  return low;
}

void SharedRead::setFloor(int reader, std::uint64_t index) {
  auto [it, added] = m_floors.try_emplace(reader, index);
  if (!added && index <= it->second) return;
  it->second = index;
  if (index == kLeft) m_floors.erase(it);
  // Blocks below every reader's floor are asked for by no one again (a reader that
  // starts late reads them anew).
  std::uint64_t keep = slowest();
  m_blocks.erase(m_blocks.begin(), m_blocks.lower_bound(keep));
  m_changed.notify_all();
}

void SharedRead::leave(int reader) {
  std::lock_guard lock(m_mutex);
  setFloor(reader, kLeft);
}

std::shared_ptr<const SharedRead::Block> SharedRead::readBlock(std::uint64_t index) {
  std::unique_ptr<char[]> bytes;
  {
    std::lock_guard lock(m_spare->first);
    if (!m_spare->second.empty()) {
      bytes = std::move(m_spare->second.back());
      m_spare->second.pop_back();
    }
  }
  if (!bytes) bytes.reset(new char[m_blockSize + m_overlap]);
  auto block = std::make_unique<Block>();
  block->size = m_file.readAt(index * m_blockSize, bytes.get(), m_blockSize + m_overlap);
  block->bytes = std::move(bytes);
  std::uint64_t end = std::min<std::uint64_t>(index * m_blockSize + block->size, length());
  for (std::uint64_t seen = m_read.load(); seen < end && !m_read.compare_exchange_weak(seen, end);) {
  }
  // The buffer goes back to the spares when the last reader lets the block go; the
  // spares outlive this object if a reader holds a block longer.
  return std::shared_ptr<const Block>(block.release(), [spare = m_spare](const Block* b) {
    std::unique_ptr<const Block> owned(b);
    std::lock_guard lock(spare->first);
    spare->second.push_back(std::move(const_cast<Block*>(b)->bytes));
  });
}

std::shared_ptr<const SharedRead::Block> SharedRead::block(std::unique_lock<std::mutex>& lock, int reader,
                                                           std::uint64_t index) {
  for (;;) {
    auto it = m_blocks.find(index);
    if (it != m_blocks.end()) {
      if (it->second.failed) raiseError(kDeviceIOError, m_file.path().string());
      if (it->second.block) return it->second.block;
      m_changed.wait(lock);  // another reader is reading it
      continue;
    }
    // The slowest reader never waits, so that the others always have one to wait for.
    std::uint64_t low = slowest();
    bool isSlowest = m_floors.at(reader) <= low;
    if (!isSlowest && index >= low + m_ahead) {
      m_changed.wait(lock);
      continue;
    }
    m_blocks[index];  // being read: others wait for it
    lock.unlock();
    std::shared_ptr<const Block> read;
    try {
      read = readBlock(index);
    } catch (const RuntimeError&) {
    }
    lock.lock();
    Slot& slot = m_blocks[index];
    slot.failed = !read;
    slot.block = read;
    m_changed.notify_all();
    if (!read) raiseError(kDeviceIOError, m_file.path().string());
    return read;
  }
}

SharedRead::View SharedRead::view(int reader, std::uint64_t floor, std::uint64_t offset) {
  std::unique_lock lock(m_mutex);
  setFloor(reader, floor / m_blockSize);
  std::uint64_t index = offset / m_blockSize;
  View v;
  v.block = block(lock, reader, index);
  std::size_t within = static_cast<std::size_t>(offset - index * m_blockSize);
  v.fileEnds = v.block->size < m_blockSize + m_overlap;
  if (within < v.block->size) {
    v.data = v.block->bytes.get() + within;
    v.size = v.block->size - within;
  }
  return v;
}

std::size_t SharedRead::readAt(int reader, std::uint64_t floor, std::uint64_t offset, char* to, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    View v = view(reader, floor, offset + filled);
    std::size_t n = std::min(size - filled, v.size);
    if (n > 0) std::memcpy(to + filled, v.data, n);
    filled += n;
    if (v.fileEnds && n == v.size) break;
  }
  return filled;
}

std::vector<std::exception_ptr> runTogether(const std::vector<std::function<void()>>& jobs,
                                            const std::function<void()>& idle) {
  std::vector<std::exception_ptr> errors(jobs.size());
  std::vector<std::future<void>> running(jobs.size());
  std::vector<std::size_t> here;  // jobs that got no thread
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    try {
      running[i] = std::async(std::launch::async, jobs[i]);
    } catch (const std::system_error&) {
      here.push_back(i);
    }
  }
  // A job without a thread runs here first, so that no other waits for it in vain.
  for (std::size_t i : here) {
    try {
      jobs[i]();
    } catch (...) {
      errors[i] = std::current_exception();
    }
  }
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    if (!running[i].valid()) continue;
    // Short waits: the idle call paces itself, and the last job's end is seen at once.
    while (idle && running[i].wait_for(std::chrono::milliseconds(20)) != std::future_status::ready) idle();
    try {
      running[i].get();
    } catch (...) {
      errors[i] = std::current_exception();
    }
  }
  return errors;
}

}  // namespace tolvane::text
