#include "core/scratch_move.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "core/runtime_error.h"
#include "test_support.h"

namespace tolvane::core {
namespace {

using test::readFile;
using test::TempDir;
using test::writeFile;

int errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& e) {
    return e.number();
  }
  return 0;
}

// The scratch file on another file system (a memory file system where there is one)
// still takes the target's place, and nothing is left beside it.
TEST(ScratchMove, ReplacesAcrossFileSystems) {
  TempDir dir;
  std::filesystem::path shm = "/dev/shm";
  if (!std::filesystem::is_directory(shm) || sameFileSystem(shm, dir.path()))
    GTEST_SKIP() << "one file system only";
  auto scratch = shm / ("tolvane-move-" + std::to_string(::getpid()));
  auto target = dir / "fig.cr2";
  writeFile(target, "old\r\n");
  for (bool replace : {false, true}) {
    SCOPED_TRACE(replace);
    writeFile(scratch, "new\r\n");
    EXPECT_EQ(errorOf([&] { moveScratchInto(scratch, target, replace); }), replace ? 0 : kFileAlreadyExists);
    EXPECT_EQ(readFile(target), replace ? "new\r\n" : "old\r\n");
    EXPECT_EQ(std::filesystem::exists(scratch), !replace);
    EXPECT_FALSE(std::filesystem::exists(dir / ".~fig.cr2"));
  }
}

TEST(ScratchMove, MissingScratchLeavesTheTarget) {
  TempDir dir;
  writeFile(dir / "fig.cr2", "old\r\n");
  EXPECT_EQ(errorOf([&] { moveScratchInto(dir / "none.txt", dir / "fig.cr2", true); }), kFileNotFound);
  EXPECT_EQ(readFile(dir / "fig.cr2"), "old\r\n");
}

}  // namespace
}  // namespace tolvane::core
