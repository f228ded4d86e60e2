#include "text/byte_patch.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "text/disk.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {

// Closes the descriptor and raises the error of the step that failed.
[[noreturn]] void fail(int fd, int number, const std::string& text, const std::filesystem::path& path) {
  disk::close(fd);
  if (text.empty()) raiseError(number, path.string());
  throw RuntimeError(number, text, path.string());
}

}  // namespace

void patchByte(const std::filesystem::path& path, std::uint64_t offset, char expected, char replacement) {
  int fd = disk::openForWriting(path, O_RDWR | O_CLOEXEC, 0);
  if (fd < 0) raiseError(errorNumberFromErrno(errno, true), path.string());
  char found = 0;
  if (::pread(fd, &found, 1, static_cast<off_t>(offset)) != 1 || found != expected)
    fail(fd, kPathFileAccessError,
         "The file changed on disk after it was read: the byte at offset " + std::to_string(offset) +
             " is no longer the one that was read there. Nothing was changed.",
         path);
  if (disk::writeAt(fd, &replacement, 1, static_cast<off_t>(offset)) != 1 || disk::flushToDevice(fd) != 0)
    fail(fd, errorNumberFromErrno(errno, true), {}, path);
  if (disk::close(fd) != 0) raiseError(errorNumberFromErrno(errno, true), path.string());
}

}  // namespace tolvane::text
