#include <gtest/gtest.h>

#include "text/scratch_file.h"
#include "workspace/workspace.h"
#include "editor_test_support.h"
#include "progress_check.h"

namespace tolvane {
namespace {

using test::crlf;
using test::EditorFixture;
using test::readFile;
using test::writeFile;
using ui::Answer;

constexpr ui::Colour kBlue = 0xFF0000;

TEST(EditorHandOver, LabelColoursTellWhichFileOpensAndThePlacementIsKept) {
  EditorFixture f;
  ui::Opening& main = f.t->opening;
  // Two different files: PictureEditor only asks for a label click.
  f.fire("PictureEditor", EventKind::Click, {}, "Opening");
  EXPECT_FALSE(f.form().visible());
  EXPECT_EQ(main.LabelFileName.foreColor(), ui::kRed);
  EXPECT_EQ(main.LabelChannelFileName.foreColor(), ui::kRed);

  f.fire("LabelChannelFileName", EventKind::Click, {}, "Opening");
  EXPECT_TRUE(f.form().visible());
  EXPECT_EQ(f.form().caption(), f.source);
  EXPECT_EQ(f.left()->text(), crlf({"source", "text"}));
  EXPECT_EQ(f.form().LabelFileSizeEd1.caption(), " 14 bytes");
  EXPECT_EQ(main.LabelFileName.foreColor(), kBlue);
  EXPECT_EQ(main.LabelChannelFileName.foreColor(), kBlue);

  f.form().Left = 12;  // kept in the settings when the form unloads
  f.form().Width = 900;
  f.fire("FormEditor", EventKind::Unload);
  f.form().Left = 0;
  f.form().Width = 0;
  // With the labels blue a click on the source label does nothing.
  f.fire("LabelChannelFileName", EventKind::Click, {}, "Opening");
  EXPECT_FALSE(f.form().visible());

  f.fire("LabelFileName", EventKind::Click, {}, "Opening");
  EXPECT_EQ(f.form().caption(), f.dest);
  EXPECT_EQ(f.left()->text(), readFile(f.dest));
  EXPECT_EQ(f.form().Left, 12);  // the placement comes back from the settings
  EXPECT_EQ(f.form().Width, 900);
  EXPECT_EQ(f.t.settings.get("Tolvane", "Editor", "Width", ""), "900");
}

TEST(EditorHandOver, EqualLabelsAndTheMtlOpenShowTheDestination) {
  EditorFixture f;
  f.t->opening.LabelChannelFileName.setCaption("dest.cr2");
  f.fire("PictureEditor", EventKind::Click, {}, "Opening");
  EXPECT_EQ(f.form().caption(), f.dest);
  f.fire("FormEditor", EventKind::Unload);
  // An mtl file opened in the main form goes to the editor.
  std::string mtl = (f.t.files() / "ava.mtl").string();
  writeFile(mtl, crlf({"newmtl skin", "Kd 1 1 1"}));
  f.user().dialog(mtl);
  OpenFile(*f.t);
  EXPECT_EQ(f.form().caption(), mtl);
  EXPECT_EQ(f.left()->text(), crlf({"newmtl skin", "Kd 1 1 1"}));
}

TEST(EditorGotoLine, EndsOnTheLineTypedThroughTheLineIndexQuery) {
  // Line starts: 0, 5, 10, 15; the text is 20 characters long.
  const std::string text = crlf({"aaa", "bbb", "ccc", "ddd"});
  struct Case {
    const char *what, *typed;
    bool enter;
    std::int64_t cursor;
    const char* box;
  } cases[] = {
      {"line 2 ends before the start of line 3", "2", false, 9, "2"},
      {"the last line: the start of the empty line after it", "4", true, 19, "4"},
      {"past the end the cursor stays at the number, clamped", "9", false, 9, "9"},
      {"far past the end", "99", false, 20, "99"},
      {"Enter with 0 empties the box", "0", true, 3, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EditorFixture f(text);
    f.openDestination();
    f.left()->setSelection(3, 0);
    f.form().TextLineNum.setText(c.typed);
    f.fire(c.enter ? "TextLineNum" : "CommandGotoLineNum", c.enter ? EventKind::Enter : EventKind::Click);
    EXPECT_EQ(f.left()->selStart(), c.cursor);
    EXPECT_EQ(f.form().TextLineNum.text(), c.box);
    EXPECT_TRUE(f.left().hasFocus());
  }
}

TEST(EditorPanes, KeyCodesThatMarkAPaneChanged) {
  EditorFixture f;
  f.openDestination();
  const std::pair<int, std::vector<int>> groups[] = {{1, {65, 90, 111, 96, 13, 32, 46, 8, 9}},
                                                     {0, {64, 53, 112, 114, 37, 16}}};
  for (const auto& [marks, codes] : groups) {
    for (int code : codes) {
      SCOPED_TRACE(code);
      f.form().LeftPaneChanged = 0;
      f.key("RichTextBox1", code);
      EXPECT_EQ(f.form().LeftPaneChanged, marks);
    }
  }
  EXPECT_EQ(f.form().RightPaneChanged, 0);
}

TEST(EditorPanes, LineDisplayCaptionAndTimersFollowThePane) {
  EditorFixture f(crlf({"a", "b", "c"}));
  f.openDestination();
  f.openRight(f.source);
  EXPECT_EQ(f.form().RichTextBox1.width(), ui::kPaneShrunkWidth);
  f.left()->setSelection(6, 0);
  f.fire("RichTextBox1", EventKind::Click);
  EXPECT_EQ(f.form().TextLineNum.text(), "3");
  EXPECT_EQ(f.form().LabelLineNum.foreColor(), ui::kBlack);
  EXPECT_TRUE(f.form().LabelFileSizeEd1.visible());
  EXPECT_FALSE(f.form().LabelFileSizeEd2.visible());
  EXPECT_EQ(f.form().caption(), f.dest);
  // The click's timer brings the pane to the front once the recent files list is gone.
  ASSERT_TRUE(f.form().Timer1.enabled());
  f.form().ListMRU.setVisible(true);
  f.fire("Timer1", EventKind::Timer);
  EXPECT_LT(f.left().zOrder(), f.right().zOrder());  // the right pane opened on top
  EXPECT_TRUE(f.form().Timer1.enabled());
  f.form().ListMRU.setVisible(false);
  f.fire("Timer1", EventKind::Timer);
  EXPECT_GT(f.left().zOrder(), f.right().zOrder());
  EXPECT_FALSE(f.form().Timer1.enabled());

  f.fire("RichTextBox2", EventKind::Click);
  EXPECT_EQ(f.form().caption(), f.source);
  EXPECT_TRUE(f.form().LabelFileSizeEd2.visible());
  f.fire("PictureFind", EventKind::Click);
  f.fire("Timer2", EventKind::Timer);
  EXPECT_FALSE(f.form().Timer2.enabled());  // stopped by the find controls
  EXPECT_GT(f.left().zOrder(), f.right().zOrder());
}

TEST(EditorSecondFile, RecentListRepairAndReplacement) {
  EditorFixture f;
  f.openDestination();
  std::string lf = (f.t.files() / "lf.pz2").string();
  writeFile(lf, "x\ny\n");
  f.t->opening.ListMRU.setItems({f.source, lf});

  f.user().expect("Note!", "Recent files list?", Answer::Yes);
  f.fire("PictureSecFile", EventKind::Click);
  ASSERT_TRUE(f.form().ListMRU.visible());
  EXPECT_EQ(f.form().ListMRU.items(), f.t->opening.ListMRU.items());

  // Shift click: the right pane; the repair is offered and declined.
  f.form().ListMRU.setListIndex(1);
  f.user().expect("Note!", "Unconventional line ending! Would you like...", Answer::No);
  EventArgs shift;
  shift.shift = 1;
  f.fire("ListMRU", EventKind::Click, shift);
  EXPECT_FALSE(f.form().ListMRU.visible());
  EXPECT_EQ(f.right()->text(), "x\ny\n");
  EXPECT_EQ(f.form().LabelSecFile.caption(), lf);
  EXPECT_EQ(f.form().LabelFileSizeEd2.caption(), " 4 bytes");

  // A second file replaces the changed right pane without a question.
  f.key("RichTextBox2", 65);
  f.openRight(f.source);
  EXPECT_EQ(f.right()->text(), readFile(f.source));

  // A cancelled dialog changes nothing.
  f.user().expect("Note!", "Recent files list?", Answer::No);
  f.user().cancelDialog();
  f.fire("PictureSecFile", EventKind::Click);
  EXPECT_EQ(f.form().LabelSecFile.caption(), f.source);
}

TEST(EditorSave, WritesThePaneByteForByteWithCrLf) {
  EditorFixture f(crlf({"version", "{", "number 4", "}"}));
  f.openDestination();
  f.left()->setSelection(19, 1);
  f.left()->replaceSelection("5\xE9");
  f.key("RichTextBox1", 65);
  f.user().dialog(f.dest);
  f.fire("PictureSave", EventKind::Click);
  EXPECT_EQ(readFile(f.dest), crlf({"version", "{", "number 5\xE9", "}"}));
  EXPECT_EQ(f.form().LeftPaneChanged, 0);
  EXPECT_EQ(f.left().backColor(), ui::kWhite);
  ASSERT_EQ(f.user().dialogs().size(), 1u);
  EXPECT_EQ(f.user().dialogs()[0].fileName, f.dest);
  EXPECT_EQ(f.user().dialogs()[0].kind, ui::FileDialogRequest::Kind::Save);

  // Save As another name leaves the original; a cancel still clears the flag.
  std::string copy = (f.t.files() / "copy.cr2").string();
  f.user().dialog(copy);
  f.fire("PictureSave", EventKind::Click);
  EXPECT_EQ(readFile(copy), readFile(f.dest));
  f.key("RichTextBox1", 65);
  f.user().cancelDialog();
  f.fire("PictureSave", EventKind::Click);
  EXPECT_EQ(f.form().LeftPaneChanged, 0);
  EXPECT_TRUE(std::filesystem::is_empty(f.t.work()));  // no scratch file left

  // A file that cannot be replaced stays as it was, and the pane keeps its changes.
  text::setReadOnly(copy);
  std::string before = readFile(copy);
  f.key("RichTextBox1", 65);
  f.user().dialog(copy);
  f.user().expect("Tolvane", "Run-time error '75':...");
  f.fire("PictureSave", EventKind::Click);
  EXPECT_EQ(readFile(copy), before);
  EXPECT_EQ(f.form().LeftPaneChanged, 1);
  EXPECT_TRUE(std::filesystem::is_empty(f.t.work()));
}

// A large file's load into a pane counts its bytes upward while the program is busy,
// on the editor's own form as well, and the save does the same for the text it writes.
TEST(EditorLoad, ALargeFileReportsHowFarTheLoadAndTheSaveAre) {
  std::string line = "\t\tk 0 0.123456\r\n";
  std::string big;
  for (std::size_t n = 0; n < (std::size_t(24) << 20) / line.size(); ++n) big += line;
  EditorFixture f(big);
  test::reportEveryStep(f.t);
  std::vector<std::uint64_t> editorTotals;
  f.form().setObserver([&](ui::Form& form, ui::Control*) {
    if (form.busy() && form.progressTotal() != 0) editorTotals.push_back(form.progressTotal());
  });
  f.openDestination();
  std::vector<std::uint64_t> passes = test::progressPasses(f.user().progressReports());
  ASSERT_FALSE(passes.empty());
  EXPECT_EQ(passes.back(), big.size());
  EXPECT_FALSE(editorTotals.empty());
  test::expectAtRest(f.t);
  EXPECT_EQ(f.form().progressTotal(), 0u);

  const auto& reports = f.user().progressReports();
  const std::size_t loadReports = reports.size();
  f.user().dialog(f.dest);
  f.fire("PictureSave", EventKind::Click);
  EXPECT_FALSE(test::progressPasses({reports.begin() + static_cast<std::ptrdiff_t>(loadReports), reports.end()})
                   .empty());
  EXPECT_EQ(readFile(f.dest), big);
  test::expectAtRest(f.t);
}

TEST(EditorClose, QuestionsInOrder) {
  struct Case {
    const char* what;
    bool leftChanged, rightChanged;
    std::vector<Answer> answers;  // to the "Save changes?" questions
    int saves;
  } cases[] = {
      {"both changed, both saved", true, true, {Answer::Yes, Answer::Yes}, 2},
      {"No for the left pane loses the right pane's changes", true, true, {Answer::No}, 0},
      {"only the right pane changed", false, true, {Answer::Yes}, 1},
      {"nothing changed, no question", false, false, {}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EditorFixture f;
    f.openDestination();
    f.openRight(f.source);
    if (c.leftChanged) f.key("RichTextBox1", 13);
    if (c.rightChanged) f.key("RichTextBox2", 13);
    int dialogs = 0;
    for (Answer a : c.answers) {
      f.user().expect("Note!", "Save changes?", a);
      if (a == Answer::Yes) f.user().dialog(dialogs++ == 0 && c.leftChanged ? f.dest : f.source);
    }
    f.fire("FormEditor", EventKind::Unload);
    EXPECT_EQ(f.user().pending(), 0u);
    EXPECT_EQ(static_cast<int>(f.user().dialogs().size()) - 1, c.saves);  // the first opened the right pane
    EXPECT_FALSE(f.form().visible());
  }
}

TEST(EditorPrint, SelectionOrTheWholeFileAfterAQuestion) {
  EditorFixture f;
  f.openDestination();
  const char* question = "There is no text selected.  Do you really want to print ALL of this file?";
  f.user().expect("ALERT!", question, Answer::No);
  f.fire("PicturePrint", EventKind::Click);
  EXPECT_TRUE(f.user().printed().empty());

  f.user().expect("ALERT!", question, Answer::Yes);
  f.user().queue(ui::ScriptedAnswer::print(""));
  f.fire("PicturePrint", EventKind::Click);
  ASSERT_EQ(f.user().printed().size(), 1u);
  EXPECT_EQ(f.user().printed()[0].text, readFile(f.dest));
  EXPECT_EQ(f.user().printed()[0].fontFamily, "Courier");

  f.left()->setSelection(3, 7);
  f.user().queue(ui::ScriptedAnswer::print(""));
  f.fire("PicturePrint", EventKind::Click);
  EXPECT_EQ(f.user().printed().back().text, "version");
}

}  // namespace
}  // namespace tolvane
