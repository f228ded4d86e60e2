#include "text/disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>

namespace tolvane::text::disk {

namespace {
std::atomic<std::uint64_t> g_count{0};
std::atomic<std::uint64_t> g_failAt{0};  // the operation number that fails; 0: none
std::atomic<int> g_error{0};
std::atomic<bool> g_acrossFolders{false};  // renames between folders fail with EXDEV

// Counts the operation; true (with errno set) when it is the one to fail.
bool injected() {
  std::uint64_t n = ++g_count;
  std::uint64_t at = g_failAt.load();
  if (at == 0 || n != at) return false;
  g_failAt = 0;
  errno = g_error.load();
  return true;
}
}  // namespace

void failOperation(std::uint64_t n, int error) {
  g_error = error;
  g_failAt = n == 0 ? 0 : g_count.load() + n;
}

std::uint64_t operationCount() { return g_count.load(); }

void refuseRenamesAcrossFolders(bool on) { g_acrossFolders = on; }

int openForWriting(const std::filesystem::path& path, int flags, mode_t mode) {
  if (injected()) return -1;
  return ::open(path.c_str(), flags, mode);
}

int openUnnamed(const std::filesystem::path& folder, mode_t mode) {
#ifdef O_TMPFILE
  if (injected()) return -1;
  return ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
#else
  (void)folder;
  (void)mode;
  errno = EOPNOTSUPP;
  return -1;
#endif
}

int linkOpen(int fd, const std::filesystem::path& path) {
  if (injected()) return -1;
  // The /proc form links an unnamed file without the privilege that AT_EMPTY_PATH needs.
  std::string self = "/proc/self/fd/" + std::to_string(fd);
  return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW);
}

ssize_t write(int fd, const char* bytes, std::size_t size) {
  if (injected()) return -1;
  return ::write(fd, bytes, size);
}

ssize_t writeAt(int fd, const char* bytes, std::size_t size, off_t offset) {
  if (injected()) return -1;
  return ::pwrite(fd, bytes, size, offset);
}

int flushToDevice(int fd) {
  if (injected()) return -1;
  return ::fdatasync(fd);
}

int close(int fd) {
  if (injected()) {
    int saved = errno;
    ::close(fd);  // the descriptor goes all the same, as after a real failed close
    errno = saved;
    return -1;
  }
  return ::close(fd);
}

int rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (injected()) return -1;
  if (g_acrossFolders) {
    auto folder = [](const std::filesystem::path& p) {
      return std::filesystem::absolute(p).lexically_normal().parent_path();
    };
    if (folder(from) != folder(to)) {
      errno = EXDEV;
      return -1;
    }
  }
  return ::rename(from.c_str(), to.c_str());
}

int link(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (injected()) return -1;
  return ::link(from.c_str(), to.c_str());
}

int unlink(const std::filesystem::path& path) {
  if (injected()) return -1;
  return ::unlink(path.c_str());
}

int chmod(const std::filesystem::path& path, mode_t mode) {
  if (injected()) return -1;
  return ::chmod(path.c_str(), mode);
}

void flushFolder(const std::filesystem::path& folder) {
  int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

}  // namespace tolvane::text::disk
