#include "workspace/line_ending_repair.h"

#include <gtest/gtest.h>

#include "text/runtime_error.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

const char* kAsk =
    "Tolvane may not be able to process this file, due to its unconventional construction.  Click OK to "
    "backup and continue, or Cancel.";
const char* kWait =
    "Unconventional line ending! Please wait while it is fixed -- you will only need to do this once, and it "
    "will not affect the file for Poser.";

// Runs the main form's repair on `bytes` with the user agreeing; returns the result.
// A second run on a result with CR LF in its first 200 bytes asks nothing (a prompt
// would fail the test) and leaves it as it is.
std::string repaired(const std::string& bytes) {
  TestProgram t;
  auto file = t.files() / "fig.cr2";
  writeFile(file, bytes);
  t.services.expect("Sorry!", kAsk, ui::Answer::OK);
  t.services.expect("Note!", kWait);
  t.services.expect("Success!", file.string() + " converted, original saved as " +
                                    (t.files() / "figCR2.bak").string() + "  Tolvane will now continue.");
  std::string path = file.string();
  RepairLineEndings(*t, path);
  std::string result = readFile(file);
  if (result.substr(0, 200).find("\r\n") != std::string::npos) RepairLineEndings(*t, path);
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_EQ(readFile(t.files() / "figCR2.bak"), bytes);  // the original is kept
  EXPECT_FALSE(std::filesystem::exists(t.files() / "fig.new"));
  EXPECT_EQ(readFile(file), result);
  return result;
}

TEST(LineEndingRepair, ConvertsWithTheBlockRules) {
  // A long file is streamed across several blocks.
  std::string longIn, longOut;
  for (int i = 0; i < 5000; ++i) {
    std::string line = "\t\td " + std::to_string(i) + " 0.1 0.2 0.3";
    longIn += line + "\n";
    longOut += line + "\r\n";
  }
  const struct {
    const char* what;
    std::string input;
    std::string output;
  } cases[] = {
      {"bare LF lines get CR LF", "a\nb\nc\n", "a\r\nb\r\nc\r\n"},
      {"blank lines of a bare LF file are dropped", "a\n\nb\n\nc\n", "a\r\nb\r\nc\r\n"},
      {"a last line without an ending is lost", "a\nb\nlast", "a\r\nb\r\n"},
      {"CR-only lines keep their blank lines", "a\r\rb\r", "a\r\n\r\nb\r\n"},
      {"CR LF after the first 200 bytes still converts", std::string(250, 'x') + "\n" + "y\r\nz\r\n",
       std::string(250, 'x') + "\r\ny\r\nz\r\n"},
      {"an empty file counts as unconventional", "", ""},
      {"a long file", longIn, longOut},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(repaired(c.input), c.output);
  }
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

TEST(LineEndingRepair, FailuresStopWithRunTimeErrorsAndKeepTheOriginal) {
  const struct {
    const char* what;
    const char* name;
    const char* input;  // nullptr: no file
    int error;
  } cases[] = {
      {"three bare line feeds in a row", "fig.cr2", "a\n\n\nb\n", text::kInvalidProcedureCall},
      {"a path without a dot", "figure", "a\nb\n", text::kInvalidProcedureCall},
      {"a missing file", "gone.cr2", nullptr, text::kFileNotFound},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TestProgram t;
    std::string path = (t.files() / c.name).string();
    if (c.input) writeFile(path, c.input);
    t.services.answer(ui::Answer::OK);
    t.services.answer(ui::Answer::OK);
    EXPECT_EQ(runTimeErrorOf([&] { RepairLineEndings(*t, path); }), c.error);
    EXPECT_EQ(readFile(path), c.input ? c.input : "");
  }
}

TEST(LineEndingRepair, ScratchAndBackupNames) {
  EXPECT_EQ(repair::RepairTempName("C:\\x\\fig.cr2"), "C:\\x\\fig.new");
  EXPECT_EQ(repair::BackupName("C:\\x\\fig.cr2"), "C:\\x\\figCR2.bak");
  EXPECT_EQ(repair::RepairTempName("noext"), "new");
  EXPECT_THROW(repair::BackupName("noext"), text::RuntimeError);
  // A dot in a folder name cuts the path there.
  EXPECT_EQ(repair::BackupName("/a.b/fig.pz2"), "/aPZ2.bak");
}

TEST(LineEndingRepair, EditorTwinAsksYesNo) {
  TestProgram t;
  auto file = t.files() / "hair.hr2";
  writeFile(file, "a\nb\n");
  t.services.expect(
      "Note!",
      "Unconventional line ending! Would you like to have it fixed? You will only need to do this once, "
      "and it will not affect the file for Poser.",
      ui::Answer::No);
  EXPECT_FALSE(RepairLineEndingsEditor(*t, file.string()));
  EXPECT_EQ(readFile(file), "a\nb\n");

  t.services.answer(ui::Answer::Yes);
  t.services.expect("Success!", file.string() + " converted, backup saved as " +
                                    (t.files() / "hairHR2.bak").string() +
                                    ".  The Editor will now load the file.");
  EXPECT_TRUE(RepairLineEndingsEditor(*t, file.string()));
  EXPECT_EQ(readFile(file), "a\r\nb\r\n");
}

}  // namespace
}  // namespace tolvane::test
