#include "utilities/dial_renamer.h"

#include <gtest/gtest.h>

#include "program/events.h"
#include "test_support.h"
#include "text/line_writer.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using utilities::toFriendlyLine;
using utilities::toGetStringResLine;

TEST(DialRenamer, FriendlyLinesByTableAndForm) {
  // Each row runs on its own, starting from the name the row before left.
  struct Case {
    const char* line;
    const char* carried;
    const char* expected;
  };
  const Case cases[] = {
      {"\t\t\tname GetStringRes(1028,5)", "", "\t\t\tname Scale"},
      {"\t\t\tname GetStringRes(1028,53)", "", "\t\t\tname Up-Down"},
      {"\t\t\tname GetStringRes(1028,51)", "", "\t\t\tname Curve"},
      {"\t\t\tname GetStringRes(1028,52)", "", "\t\t\tname curve"},
      {"\t\t\tname GetStringRes(1028,54)", "Twist", "\t\t\tname Twist"},  // in no row: the name before
      {"\tname    GetStringRes(1024,3)", "", "\tname    Neck"},
      {"\tname    GetStringRes(1024,15)", "", "\tname    Left Hand"},
      {"\tname    GetStringRes(1029,105)", "", "\tname    nullMatSphere"},
      {"\tname    GetStringRes(1029,100)", "", "\tname    Body 5"},
      {"\tname    GetStringRes(1024,106)", "Hip", "\tname    Hip"},
      {"\tname   GetStringRes(1024,2)", "", "\t\t\tname Head"},  // reverted once: GetStringRes at 9
      {"GetStringRes(1028,5)", "", "GetStringRes(1028,5)"},       // in the first column: left alone
      {"\tactor hip", "", "\tactor hip"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    std::string carried = c.carried;
    EXPECT_EQ(toFriendlyLine(c.line, carried), c.expected);
  }
}

TEST(DialRenamer, RevertedLinesWithTheirAsymmetries) {
  struct Case {
    const char* line;
    const char* carried;
    const char* expected;
  };
  const Case cases[] = {
      {"\t\t\tname Scale", "", "\t\t\tname GetStringRes(1028,5)"},
      {"\t\t\tname Neck", "", "\t\t\tname GetStringRes(1028,3)"},  // the body table, written with the dial key
      {"\tname    Neck", "", "\tname   GetStringRes(1024,3)"},
      {"\tname    Left Hand", "7)", "\tname   GetStringRes(1024,7)"},  // never matches: the number before
      {"\tname    hip", "", "\tname   GetStringRes(1024,"},            // in neither table, nothing before
      {"\tname    Curve", "", "\tname   GetStringRes(1024,51)"},
      {"\tname    curve", "", "\tname   GetStringRes(1024,52)"},
      {"name Scale", "", "name Scale"},
      {"\tactor hip", "", "\tactor hip"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    std::string carried = c.carried;
    EXPECT_EQ(toGetStringResLine(c.line, carried), c.expected);
  }
}

struct RenamerTest : ::testing::Test {
  RenamerTest() {
    folder = t.files() / "figs";
    std::filesystem::create_directories(folder);
    figure = folder / "fig.cr2";
    fireEvent(*t, "Opening", "menuDialRenamer", EventKind::Click);
  }
  void choose(const std::string& name) {
    t->renamer.Dir1.setText(folder.string());
    fireEvent(*t, "Renamer", "Dir1", EventKind::Change);
    int index = t->renamer.File1.indexOf(name);
    ASSERT_GE(index, 0);
    t->renamer.File1.setListIndex(index);
    fireEvent(*t, "Renamer", "File1", EventKind::Click);
  }
  void run(const char* mode) {
    fireEvent(*t, "Renamer", mode, EventKind::Click);
    EventArgs args;
    args.source = "Renamer.Label1";
    fireEvent(*t, "Renamer", "Picture1", EventKind::Drop, args);
  }
  TestProgram t;
  std::filesystem::path folder, figure;
};

TEST_F(RenamerTest, RoundTripKeepsTheToolsShapes) {
  const std::vector<std::string> original = {"actor hip:1", "\t{", "\tname    GetStringRes(1024,6)", "\tchannels",
                                             "\t\t{", "\t\ttwist twisty", "\t\t\t{",
                                             "\t\t\tname GetStringRes(1028,2)", "\t\t\t}", "\t\t}", "\t}"};
  writeFile(figure, crlf(original));
  choose("fig.cr2");
  EXPECT_EQ(t->renamer.Label1.caption(), "fig.cr2");
  run("LabelFriendly");
  std::vector<std::string> friendly = original;
  friendly[2] = "\tname    Hip";
  friendly[7] = "\t\t\tname Twist";
  EXPECT_EQ(readFile(figure), crlf(friendly));
  EXPECT_EQ(t->renamer.Mode, 0);
  EXPECT_TRUE(std::filesystem::exists(folder / "fig.cr2"));
  EXPECT_FALSE(std::filesystem::exists(folder / "Dials.tmp"));

  run("LabelGetSR");
  std::vector<std::string> reverted = original;
  reverted[2] = "\tname   GetStringRes(1024,6)";
  EXPECT_EQ(readFile(figure), crlf(reverted));
  run("LabelFriendly");
  friendly[2] = "\t\t\tname Hip";
  EXPECT_EQ(readFile(figure), crlf(friendly));
  EXPECT_EQ(t.services.messages().size(), 0u);
}

TEST_F(RenamerTest, RefusalsBeforeTheRun) {
  writeFile(figure, crlf({"\tname    GetStringRes(1024,6)"}));
  t.services.expect("Note!", "You must choose a file first, and drag it from the label to here!");
  fireEvent(*t, "Renamer", "Picture1", EventKind::Click);
  t.services.expect("Note!", "You must choose a file first!");
  run("LabelFriendly");
  t->renamer.Mode = 0;
  choose("fig.cr2");
  t.services.expect("Note!", "Choose from the buttons below first.");
  fireEvent(*t, "Renamer", "Picture1", EventKind::Drop);
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_EQ(readFile(figure), crlf({"\tname    GetStringRes(1024,6)"}));
}

TEST_F(RenamerTest, AReadOnlyFileIsOfferedForEditing) {
  writeFile(figure, "x\r\n");
  text::setReadOnly(figure);
  t.services.expect("Note!",
                    "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change this "
                    "attribute so it can be edited by Tolvane?",
                    ui::Answer::OK);
  choose("fig.cr2");
  EXPECT_FALSE(text::isReadOnly(figure));
}

TEST_F(RenamerTest, AFailureInTheLineLoopLeavesTheFileAndTheScratch) {
  // More than the writer holds, so the full disk is met inside the loop.
  std::vector<std::string> lines(100000, "\tname    GetStringRes(1024,6)");
  writeFile(figure, crlf(lines));
  choose("fig.cr2");
  std::string before = readFile(figure);
  struct FullDisk {
    FullDisk() { text::LineWriter::failAfterBytesForTesting(1000); }
    ~FullDisk() { text::LineWriter::failAfterBytesForTesting(-1); }
  };
  {
    FullDisk full;
    t.services.expect("Error!", "ERROR!");
    run("LabelFriendly");
  }
  EXPECT_EQ(readFile(figure), before);
  EXPECT_TRUE(std::filesystem::exists(folder / "Dials.tmp"));
  EXPECT_EQ(t->renamer.Mode, 1);
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
