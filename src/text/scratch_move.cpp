#include "text/scratch_move.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "text/disk.h"
#include "text/gzip_file.h"
#include "text/progress.h"
#include "text/read_only_file.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"

namespace tolvane::text {

namespace {

constexpr std::size_t kCopyBlock = 4 << 20;

std::filesystem::path folderOf(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
}

[[noreturn]] void raiseFromErrno(const std::filesystem::path& path) {
  raiseError(errorNumberFromErrno(errno, true), path.string());
}

// A descriptor that closes itself if the copy stops on the way.
struct Descriptor {
  int fd = -1;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

// Writes every byte of `from` into `fd` and flushes them to the device.
void copyInto(const std::filesystem::path& from, int fd, const std::filesystem::path& shownAs) {
  ReadOnlyFile in(from, true);
  std::unique_ptr<char[]> block(new char[kCopyBlock]);
  for (std::uint64_t at = 0;;) {
    std::size_t n = in.readAt(at, block.get(), kCopyBlock);
    if (n == 0) break;
    for (std::size_t done = 0; done < n;) {
      ssize_t w = disk::write(fd, block.get() + done, n - done);
      if (w < 0 && errno == EINTR) continue;
      if (w < 0) raiseFromErrno(shownAs);
      done += static_cast<std::size_t>(w);
    }
    at += n;
    reportProgress(at, in.length());
  }
  if (disk::flushToDevice(fd) != 0) raiseFromErrno(shownAs);
}

// Flushes a finished scratch file's bytes to the device before it takes a user's name.
void flushFile(const std::filesystem::path& path) {
  Descriptor d;
  d.fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (d.fd < 0) raiseError(kFileNotFound, path.string());
  if (disk::flushToDevice(d.fd) != 0) raiseFromErrno(path);
}

// A complete copy of `scratch` in the target's folder, under a hidden name that is
// given to it only once the copy is whole (an unnamed file linked in at the end, where
// the file system can make one). With `pack` the copy is the gzip stream of the scratch
// text. Returns the hidden name.
std::filesystem::path stageBeside(const std::filesystem::path& scratch, const std::filesystem::path& target,
                                  bool pack) {
  std::filesystem::path folder = folderOf(target);
  std::filesystem::path staged = folder / ("." + target.filename().string() + ".tolvane-new");
  deleteIgnoringErrors(staged);
  Descriptor d;
  d.fd = disk::openUnnamed(folder, 0666);
  bool unnamed = d.fd >= 0;
  if (!unnamed) {
    d.fd = disk::openForWriting(staged, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (d.fd < 0) raiseFromErrno(staged);
  }
  try {
    if (pack)
      gzip::packInto(scratch, d.fd, target);
    else
      copyInto(scratch, d.fd, target);
    if (unnamed && disk::linkOpen(d.fd, staged) != 0) raiseFromErrno(staged);
    int fd = d.fd;
    d.fd = -1;
    if (disk::close(fd) != 0) raiseFromErrno(staged);
  } catch (...) {
    if (!unnamed || std::filesystem::exists(staged)) deleteIgnoringErrors(staged);
    throw;
  }
  return staged;
}

// What deleting the target would refuse: a folder, or a read-only file.
void checkReplaceable(const std::filesystem::path& target) {
  struct stat st {};
  if (::stat(target.c_str(), &st) != 0) return;
  if (S_ISDIR(st.st_mode) || (st.st_mode & S_IWUSR) == 0) raiseError(kPathFileAccessError, target.string());
}

}  // namespace

bool sameFileSystem(const std::filesystem::path& a, const std::filesystem::path& b) {
  struct stat sa {
  }, sb{};
  if (::stat(a.c_str(), &sa) != 0) raiseError(kFileNotFound, a.string());
  if (::stat(b.c_str(), &sb) != 0) raiseError(kPathNotFound, b.string());
  return sa.st_dev == sb.st_dev;
}

void moveScratchInto(const std::filesystem::path& scratch, const std::filesystem::path& target,
                     bool replace) {
  if (!fileExists(scratch)) raiseError(kFileNotFound, scratch.string());
  std::filesystem::path folder = folderOf(target);
  std::error_code ec;
  if (!std::filesystem::is_directory(folder, ec)) raiseError(kPathNotFound, folder.string());
  if (replace)
    checkReplaceable(target);
  else if (std::filesystem::exists(target, ec))
    raiseError(kFileAlreadyExists, target.string());
  replaceAtomically(scratch, target);
}

void replaceAtomically(const std::filesystem::path& scratch, const std::filesystem::path& target) {
  std::filesystem::path folder = folderOf(target);
  // A packed file stays packed: the new text is packed beside it, then takes its name.
  const bool pack = gzip::packsInto(target);
  if (!pack) {
    flushFile(scratch);
    if (disk::rename(scratch, target) == 0) {
      disk::flushFolder(folder);
      return;
    }
    // A bind mount can share the device number and still refuse the rename: the
    // refusal, not the device, decides.
    if (errno != EXDEV) raiseFromErrno(target);
  }
  std::filesystem::path staged = stageBeside(scratch, target, pack);
  if (disk::rename(staged, target) != 0) {
    int saved = errno;
    deleteIgnoringErrors(staged);
    errno = saved;
    raiseFromErrno(target);
  }
  disk::flushFolder(folder);
  deleteIgnoringErrors(scratch);
}

void copyFileSafely(const std::filesystem::path& from, const std::filesystem::path& to) {
  Descriptor d;
  d.fd = disk::openForWriting(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (d.fd < 0) raiseFromErrno(to);
  try {
    copyInto(from, d.fd, to);
    int fd = d.fd;
    d.fd = -1;
    if (disk::close(fd) != 0) raiseFromErrno(to);
  } catch (...) {
    deleteIgnoringErrors(to);
    throw;
  }
}

}  // namespace tolvane::text
