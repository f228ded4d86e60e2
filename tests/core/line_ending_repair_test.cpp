#include "core/line_ending_repair.h"

#include <gtest/gtest.h>

#include "core/runtime_error.h"
#include "test_support.h"

namespace tolvane {
namespace {

using test::readFile;
using test::TestProgram;
using test::writeFile;

const char* kAsk =
    "Tolvane may not be able to process this file, due to its unconventional construction.  Click OK to backup "
    "and continue, or Cancel.";
const char* kWait =
    "Unconventional line ending! Please wait while it is fixed -- you will only need to do this once, and it will "
    "not affect the file for Poser.";

// Runs the main form's repair on `bytes` with the user agreeing; returns the result.
std::string repaired(const std::string& bytes) {
  TestProgram t;
  auto file = t.files() / "fig.cr2";
  writeFile(file, bytes);
  t.services.expect("Sorry!", kAsk, ui::Answer::OK);
  t.services.expect("Note!", kWait);
  t.services.expect("Success!", file.string() + " converted, original saved as " + (t.files() / "figCR2.bak").string() +
                                    "  Tolvane will now continue.");
  std::string path = file.string();
  RepairLineEndings(*t, path);
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_EQ(readFile(t.files() / "figCR2.bak"), bytes);  // the original is kept
  EXPECT_FALSE(std::filesystem::exists(t.files() / "fig.new"));
  return readFile(file);
}

TEST(LineEndingRepair, ConvertsWithTheBlockRules) {
  struct Case {
    const char* what;
    std::string input;
    std::string output;
  } cases[] = {
      {"bare LF lines get CR LF", "a\nb\nc\n", "a\r\nb\r\nc\r\n"},
      {"blank lines of a bare LF file are dropped", "a\n\nb\n\nc\n", "a\r\nb\r\nc\r\n"},
      {"a last line without an ending is lost", "a\nb\nlast", "a\r\nb\r\n"},
      {"CR-only lines keep their blank lines", "a\r\rb\r", "a\r\n\r\nb\r\n"},
      {"CR LF after the first 200 bytes still converts",
       std::string(250, 'x') + "\n" + "y\r\nz\r\n", std::string(250, 'x') + "\r\ny\r\nz\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(repaired(c.input), c.output);
  }
}

TEST(LineEndingRepair, LongFileIsStreamedAcrossBlocks) {
  std::string in, out;
  for (int i = 0; i < 5000; ++i) {
    std::string line = "\t\td " + std::to_string(i) + " 0.1 0.2 0.3";
    in += line + "\n";
    out += line + "\r\n";
  }
  EXPECT_EQ(repaired(in), out);
}

TEST(LineEndingRepair, GoodFileIsNotTouchedAndASecondRunDoesNothing) {
  TestProgram t;
  auto file = t.files() / "fig.cr2";
  writeFile(file, "{\r\nversion\r\n");
  std::string path = file.string();
  RepairLineEndings(*t, path);  // no prompt is answered: any prompt fails the test
  EXPECT_FALSE(std::filesystem::exists(t.files() / "figCR2.bak"));
  EXPECT_EQ(readFile(file), "{\r\nversion\r\n");
}

TEST(LineEndingRepair, CancelSetsOpenRefusedAndLeavesTheFile) {
  TestProgram t;
  auto file = t.files() / "fig.cr2";
  writeFile(file, "a\nb\n");
  t.services.expect("Sorry!", kAsk, ui::Answer::Cancel);
  std::string path = file.string();
  RepairLineEndings(*t, path);
  EXPECT_EQ(t->opening.OpenRefused, -1);
  EXPECT_EQ(readFile(file), "a\nb\n");
  EXPECT_EQ(t.services.beeps(), 1);
}

TEST(LineEndingRepair, EmptyFileCountsAsUnconventional) {
  EXPECT_EQ(repaired(""), "");
}

TEST(LineEndingRepair, FailuresStopWithRunTimeErrorsAndKeepTheOriginal) {
  struct Case {
    const char* what;
    const char* name;
    std::string input;
  } cases[] = {
      {"three bare line feeds in a row", "fig.cr2", "a\n\n\nb\n"},
      {"a path without a dot", "figure", "a\nb\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TestProgram t;
    auto file = t.files() / c.name;
    writeFile(file, c.input);
    t.services.answer(ui::Answer::OK);
    t.services.answer(ui::Answer::OK);
    std::string path = file.string();
    try {
      RepairLineEndings(*t, path);
      FAIL() << "no error";
    } catch (const core::RuntimeError& e) {
      EXPECT_EQ(e.number(), core::kInvalidProcedureCall);
    }
    EXPECT_EQ(readFile(file), c.input);
  }
}

TEST(LineEndingRepair, ScratchAndBackupNames) {
  EXPECT_EQ(repair::RepairTempName("C:\\x\\fig.cr2"), "C:\\x\\fig.new");
  EXPECT_EQ(repair::BackupName("C:\\x\\fig.cr2"), "C:\\x\\figCR2.bak");
  EXPECT_EQ(repair::RepairTempName("noext"), "new");
  EXPECT_THROW(repair::BackupName("noext"), core::RuntimeError);
  // A dot in a folder name cuts the path there.
  EXPECT_EQ(repair::BackupName("/a.b/fig.pz2"), "/aPZ2.bak");
}

TEST(LineEndingRepair, EditorTwinAsksYesNo) {
  TestProgram t;
  auto file = t.files() / "hair.hr2";
  writeFile(file, "a\nb\n");
  t.services.expect("Note!",
                    "Unconventional line ending! Would you like to have it fixed? You will only need to do this once, "
                    "and it will not affect the file for Poser.",
                    ui::Answer::No);
  EXPECT_FALSE(RepairLineEndingsEditor(*t, file.string()));
  EXPECT_EQ(readFile(file), "a\nb\n");

  t.services.answer(ui::Answer::Yes);
  t.services.expect("Success!", file.string() + " converted, backup saved as " + (t.files() / "hairHR2.bak").string() +
                                    ".  The Editor will now load the file.");
  EXPECT_TRUE(RepairLineEndingsEditor(*t, file.string()));
  EXPECT_EQ(readFile(file), "a\r\nb\r\n");
}

TEST(LineEndingRepair, UnreadableFileIsARunTimeError) {
  TestProgram t;
  std::string path = (t.files() / "gone.cr2").string();
  EXPECT_THROW(RepairLineEndings(*t, path), core::RuntimeError);
}

}  // namespace
}  // namespace tolvane
