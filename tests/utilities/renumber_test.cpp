#include "utilities/renumber.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> names(const fs::path& folder) {
  std::vector<std::string> all;
  for (const auto& e : fs::directory_iterator(folder)) all.push_back(e.path().filename().string());
  std::sort(all.begin(), all.end());
  return all;
}

TEST(Renumber, SequencesWithTheToolsOwnRules) {
  struct Case {
    const char* what;
    std::vector<std::string> files;
    bool obj;
    std::vector<std::string> after;
    std::string message;  // "Done!" message, or the error
    int runTimeError;
  };
  const std::string done = "Finished, files numbered 001 to ";
  const Case cases[] = {
      {"three bitmaps", {"1.bmp", "2.bmp", "3.bmp"}, false, {"001.bmp", "002.bmp", "003.bmp"}, done, 0},
      {"a gap stops the run", {"1.bmp", "2.bmp", "4.bmp"}, false, {"001.bmp", "002.bmp", "4.bmp"}, done, 0},
      {"two digits get a blank", {"1.bmp", "10.bmp", "2.bmp", "3.bmp", "4.bmp", "5.bmp", "6.bmp", "7.bmp", "8.bmp",
                                  "9.bmp"},
       false,
       {" 010.bmp", "001.bmp", "002.bmp", "003.bmp", "004.bmp", "005.bmp", "006.bmp", "007.bmp", "008.bmp",
        "009.bmp"},
       done, 0},
      {"an OBJ sequence stays", {"1.obj", "2.obj"}, true, {"1.obj", "2.obj"}, done, 0},
      {"no first file", {"001.bmp", "2.bmp"}, false, {"001.bmp", "2.bmp"}, "No #1 file in this folder!", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TestProgram t;
    fs::path folder = t.files() / "seq";
    fs::create_directories(folder);
    for (const std::string& f : c.files) writeFile(folder / f, f);
    fireEvent(*t, "Opening", "menuRenumberFiles", EventKind::Click);
    EXPECT_TRUE(t->formRenumber.visible());
    t->formRenumber.Dir1.setText(folder.string());
    fireEvent(*t, "FormRenumber", "Dir1", EventKind::Change);
    if (c.obj) {
      t->formRenumber.OptionOBJ.setValue(true);
      fireEvent(*t, "FormRenumber", "OptionOBJ", EventKind::Click);
    }
    EXPECT_EQ(t->formRenumber.File1.items().size(), c.files.size());
    t.services.expect(c.message == done ? "Done!" : "Error!", c.message);
    fireEvent(*t, "FormRenumber", "CommandGo", EventKind::Click);
    EXPECT_EQ(t.services.pending(), 0u);
    EXPECT_EQ(names(folder), c.after);
  }
}

TEST(Renumber, AHundredFilesEndWithTheFileSystemsMessage) {
  TestProgram t;
  fs::path folder = t.files() / "seq";
  fs::create_directories(folder);
  for (int i = 1; i <= 100; ++i) writeFile(folder / (std::to_string(i) + ".bmp"), "x");
  fireEvent(*t, "Opening", "menuRenumberFiles", EventKind::Click);
  t->formRenumber.Dir1.setText(folder.string());
  t.services.answerRunTimeErrors(true);
  fireEvent(*t, "FormRenumber", "CommandGo", EventKind::Click);
  EXPECT_EQ(t.services.runTimeErrorReports(), 1);
  ASSERT_FALSE(t.services.messages().empty());
  EXPECT_EQ(t.services.messages().back().text.substr(0, 20), "Run-time error '58':");
  EXPECT_TRUE(fs::exists(folder / "100.bmp"));
  EXPECT_TRUE(fs::exists(folder / " 099.bmp"));
}

}  // namespace
}  // namespace tolvane::test
