#include "text/scratch_move.h"

#include <sys/stat.h>

#include "text/runtime_error.h"
#include "text/scratch_file.h"

namespace tolvane::text {

bool sameFileSystem(const std::filesystem::path& a, const std::filesystem::path& b) {
  struct stat sa {
  }, sb{};
  if (::stat(a.c_str(), &sa) != 0) raiseError(kFileNotFound, a.string());
  if (::stat(b.c_str(), &sb) != 0) raiseError(kPathNotFound, b.string());
  return sa.st_dev == sb.st_dev;
}

void moveScratchInto(const std::filesystem::path& scratch, const std::filesystem::path& target,
                     bool replace) {
  std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
  std::filesystem::path staged = scratch;
  if (!sameFileSystem(scratch, folder)) {
    staged = folder / (".~" + target.filename().string());
    deleteIgnoringErrors(staged);
    std::error_code ec;
    std::filesystem::copy_file(scratch, staged, ec);
    if (ec) {
      deleteIgnoringErrors(staged);
      raiseError(ec == std::errc::no_space_on_device ? kDiskFull : kPathFileAccessError, staged.string());
    }
  }
  try {
    if (replace && fileExists(target)) killFile(target);
    renameFile(staged, target);
  } catch (const RuntimeError&) {
    if (staged != scratch) deleteIgnoringErrors(staged);
    throw;
  }
  if (staged != scratch) deleteIgnoringErrors(scratch);
}

}  // namespace tolvane::text
