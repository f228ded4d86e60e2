// Putting a tool's finished scratch file in place: the move itself, and the save step
// that asks where the result goes.
#include "program/file_save_step.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "text/runtime_error.h"
#include "text/scratch_move.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

// The scratch file on another file system (a memory file system where there is one)
// still takes the target's place, and nothing is left beside it.
TEST(ScratchMove, ReplacesAcrossFileSystems) {
  TempDir dir;
  std::filesystem::path shm = "/dev/shm";
  if (!std::filesystem::is_directory(shm) || text::sameFileSystem(shm, dir.path()))
    GTEST_SKIP() << "one file system only";
  auto scratch = shm / ("tolvane-move-" + std::to_string(::getpid()));
  auto target = dir / "fig.cr2";
  writeFile(target, "old\r\n");
  for (bool replace : {false, true}) {
    SCOPED_TRACE(replace);
    writeFile(scratch, "new\r\n");
    EXPECT_EQ(runTimeErrorOf([&] { text::moveScratchInto(scratch, target, replace); }),
              replace ? 0 : text::kFileAlreadyExists);
    EXPECT_EQ(readFile(target), replace ? "new\r\n" : "old\r\n");
    EXPECT_EQ(std::filesystem::exists(scratch), !replace);
    EXPECT_FALSE(std::filesystem::exists(dir / ".~fig.cr2"));
  }
}

TEST(ScratchMove, MissingScratchLeavesTheTarget) {
  TempDir dir;
  writeFile(dir / "fig.cr2", "old\r\n");
  EXPECT_EQ(runTimeErrorOf([&] { text::moveScratchInto(dir / "none.txt", dir / "fig.cr2", true); }),
            text::kFileNotFound);
  EXPECT_EQ(readFile(dir / "fig.cr2"), "old\r\n");
}

// The file open in a tool and the tool's finished scratch file.
struct SaveStep {
  SaveStep() {
    writeFile(current, "old\r\n");
    writeFile(scratch, "new\r\n");
  }
  std::optional<std::string> run() { return FileSaveStep(*t, scratch, current.string(), current.string()); }
  TestProgram t;
  std::filesystem::path current = t.files() / "fig.cr2", scratch = t.work() / "InsertMorph.txt";
};

TEST(FileSaveStep, ReplacesTheCurrentFileOrWritesANewOne) {
  SaveStep s;
  s.t.services.dialog(s.current.string());
  EXPECT_EQ(s.run(), s.current.string());
  EXPECT_EQ(readFile(s.current), "new\r\n");
  EXPECT_FALSE(std::filesystem::exists(s.scratch));
  EXPECT_EQ(s.t.services.dialogs().at(0).kind, ui::FileDialogRequest::Kind::Save);
  EXPECT_EQ(s.t.services.dialogs().at(0).fileName, s.current.string());

  writeFile(s.scratch, "other\r\n");
  auto copy = s.t.dir / "elsewhere" / "copy.cr2";
  std::filesystem::create_directories(copy.parent_path());
  s.t.services.dialog(copy.string());
  EXPECT_EQ(s.run(), copy.string());
  EXPECT_EQ(readFile(copy), "other\r\n");
  EXPECT_EQ(readFile(s.current), "new\r\n");
  EXPECT_EQ(s.t->currentDir, copy.parent_path());
}

TEST(FileSaveStep, CancelOrAMissingScratchFileLeavesTheCurrentFile) {
  SaveStep s;
  s.t.services.cancelDialog();
  EXPECT_FALSE(s.run());
  EXPECT_EQ(readFile(s.current), "old\r\n");
  EXPECT_EQ(readFile(s.scratch), "new\r\n");

  std::filesystem::remove(s.scratch);
  s.t.services.dialog((s.t.files() / "other.cr2").string());
  EXPECT_EQ(runTimeErrorOf([&] { s.run(); }), text::kFileNotFound);
  EXPECT_EQ(readFile(s.current), "old\r\n");
}

}  // namespace
}  // namespace tolvane::test
