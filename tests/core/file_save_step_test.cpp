#include "program/file_save_step.h"

#include <gtest/gtest.h>

#include "core/runtime_error.h"
#include "test_support.h"

namespace tolvane {
namespace {

using test::readFile;
using test::TestProgram;
using test::writeFile;

TEST(FileSaveStep, ReplacesTheCurrentFileOrWritesANewOne) {
  TestProgram t;
  auto current = t.files() / "fig.cr2";
  auto scratch = t.work() / "InsertMorph.txt";
  writeFile(current, "old\r\n");
  writeFile(scratch, "new\r\n");
  t.services.dialog(current.string());
  EXPECT_EQ(FileSaveStep(*t, scratch, current.string(), current.string()), current.string());
  EXPECT_EQ(readFile(current), "new\r\n");
  EXPECT_FALSE(std::filesystem::exists(scratch));
  EXPECT_EQ(t.services.dialogs().at(0).kind, ui::FileDialogRequest::Kind::Save);
  EXPECT_EQ(t.services.dialogs().at(0).fileName, current.string());

  writeFile(scratch, "other\r\n");
  auto copy = t.dir / "elsewhere" / "copy.cr2";
  std::filesystem::create_directories(copy.parent_path());
  t.services.dialog(copy.string());
  FileSaveStep(*t, scratch, current.string(), current.string());
  EXPECT_EQ(readFile(copy), "other\r\n");
  EXPECT_EQ(readFile(current), "new\r\n");
  EXPECT_EQ(t->currentDir, copy.parent_path());
}

TEST(FileSaveStep, CancelLeavesEverything) {
  TestProgram t;
  auto current = t.files() / "fig.cr2";
  auto scratch = t.work() / "RenMorph.txt";
  writeFile(current, "old\r\n");
  writeFile(scratch, "new\r\n");
  t.services.cancelDialog();
  EXPECT_FALSE(FileSaveStep(*t, scratch, current.string(), current.string()));
  EXPECT_EQ(readFile(current), "old\r\n");
  EXPECT_EQ(readFile(scratch), "new\r\n");
}

TEST(FileSaveStep, AMissingScratchFileKeepsOtherFilesButNotTheReplacedOne) {
  TestProgram t;
  auto current = t.files() / "fig.cr2";
  writeFile(current, "old\r\n");
  auto other = t.files() / "other.cr2";
  t.services.dialog(other.string());
  EXPECT_THROW(FileSaveStep(*t, t.work() / "none.txt", current.string(), current.string()), core::RuntimeError);
  EXPECT_EQ(readFile(current), "old\r\n");
}

}  // namespace
}  // namespace tolvane
