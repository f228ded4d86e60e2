#include <gtest/gtest.h>

#include "editor/editor_find.h"
#include "editor/editor_pane_events.h"
#include "editor_test_support.h"

namespace tolvane {
namespace {

using test::EditorFixture;
using ui::Answer;

// Puts `text` in the left pane as if it had been loaded, cursor at 0.
void loadLeft(EditorFixture& f, const std::string& text) {
  test::writeFile(f.dest, text);
  f.openDestination();
  f.left()->setSelection(0, 0);
}

void setFind(EditorFixture& f, const std::string& what, bool wholeWord = false, bool matchCase = false) {
  f.form().ComboFind.setText(what);
  f.form().CheckWholeWord.setValue(wholeWord);
  f.form().CheckMatchCase.setValue(matchCase);
}

// Opens the replace controls and fills them in.
void setReplace(EditorFixture& f, const std::string& what, const std::string& with, bool wholeWord = false) {
  f.fire("PictureReplace", EventKind::Click);
  setFind(f, what, wholeWord);
  f.form().TextReplace.setText(with);
}

TEST(EditorFind, CheckBoxesGiveTheOptions) {
  //                  0    5    10   15
  const std::string text = "xHip hipx HIP hip";
  struct Case {
    bool whole, match;
    std::int64_t found;
  } cases[] = {{false, false, 1}, {true, false, 10}, {false, true, 5}, {true, true, 14}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "whole " << c.whole << ", match " << c.match);
    EditorFixture f;
    loadLeft(f, text);
    f.fire("PictureFind", EventKind::Click);
    EXPECT_TRUE(f.form().ComboFind.hasFocus());
    setFind(f, "hip", c.whole, c.match);
    f.fire("ComboFind", EventKind::Enter);
    EXPECT_EQ(f.form().FoundPosition, c.found);
    EXPECT_EQ(f.left()->selStart(), c.found);
    EXPECT_EQ(f.left()->selLength(), 3);
    EXPECT_TRUE(f.left().hasFocus());
    EXPECT_EQ(f.form().ComboFind.items(), std::vector<std::string>{"hip"});
  }
}

TEST(EditorFind, F3FindsAgainWithoutWrapping) {
  EditorFixture f;
  loadLeft(f, "cat cat\r\ncat");
  f.fire("PictureFind", EventKind::Click);
  setFind(f, "cat");
  EXPECT_EQ(f.form().FoundPosition, -2);
  f.fire("ComboFind", EventKind::Enter);  // starts one behind the cursor
  EXPECT_EQ(f.form().FoundPosition, 4);
  f.key("RichTextBox1", editor::kKeyF3);
  EXPECT_EQ(f.form().FoundPosition, 9);
  EXPECT_EQ(f.form().TextLineNum.text(), "1");  // the line display ran before the find
  f.key("ComboFind", editor::kKeyF3);
  EXPECT_EQ(f.form().FoundPosition, -1);
  EXPECT_EQ(f.left()->selStart(), 9);  // a failed find leaves the selection
  EXPECT_EQ(f.form().LeftPaneChanged, 0);
  EXPECT_TRUE(f.user().messages().empty());
}

TEST(EditorFind, ModesShowAndHideTheirControls) {
  EditorFixture f;
  f.openDestination();
  ui::FormEditor& e = f.form();
  f.fire("PictureFind", EventKind::Click);
  EXPECT_TRUE(e.LabelFind.visible() && e.ComboFind.visible() && e.CheckWholeWord.visible() &&
              e.CheckMatchCase.visible());
  EXPECT_FALSE(e.TextReplace.visible() || e.LabelReplace.visible());
  f.fire("PictureFind", EventKind::Click);
  EXPECT_FALSE(e.LabelFind.visible() || e.ComboFind.visible());

  e.TextReplace.setText("old");
  f.fire("PictureReplace", EventKind::Click);
  EXPECT_TRUE(e.ComboFind.visible() && e.TextReplace.visible() && e.LabelReplace.visible());
  EXPECT_EQ(e.TextReplace.text(), "");
  // In replace mode Enter in ComboFind only moves on to TextReplace.
  e.ComboFind.setText("version");
  f.fire("ComboFind", EventKind::Enter);
  EXPECT_TRUE(e.TextReplace.hasFocus());
  EXPECT_TRUE(e.ComboFind.items().empty());
  EXPECT_EQ(e.FoundPosition, -2);
  f.fire("PictureReplace", EventKind::Click);
  EXPECT_FALSE(e.ComboFind.visible() || e.TextReplace.visible());
}

TEST(EditorReplace, FirstUseReplacesAllWithoutAQuestion) {
  struct Case {
    const char* what;
    std::string text, find, replacement;
    bool wholeWord;
    std::string result;
  } cases[] = {
      {"every place behind the cursor", "x cat cat\r\ncat", "cat", "dog", false, "x dog dog\r\ndog"},
      {"a match right at the cursor is passed over", "cat cat", "cat", "dog", false, "cat dog"},
      {"a replacement holding the search text goes on behind it", "x cat cat", "cat", "bobcat", false,
       "x bobcat bobcat"},
      {"whole words only", "x cat cats cat", "cat", "dog", true, "x dog cats dog"},
      {"nothing found", "x cow", "cat", "dog", false, "x cow"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EditorFixture f;
    loadLeft(f, c.text);
    setReplace(f, c.find, c.replacement, c.wholeWord);
    f.fire("TextReplace", EventKind::Enter);
    EXPECT_EQ(f.left()->text(), c.result);
    EXPECT_EQ(f.form().FoundPosition, -1);
    EXPECT_EQ(f.form().LeftPaneChanged, 1);  // marked even when nothing was found
    EXPECT_FALSE(f.form().TextReplace.visible() || f.form().ComboFind.visible());
    EXPECT_EQ(f.form().TextReplace.text(), "");
    EXPECT_TRUE(f.user().messages().empty());
    // One undo takes the whole replacement back.
    if (c.text != c.result) {
      EXPECT_TRUE(f.left()->undo());
      EXPECT_EQ(f.left()->text(), c.text);
      EXPECT_FALSE(f.left()->canUndo());
    }
  }
}

TEST(EditorReplace, F3AsksAboutEachPlaceAndLaterTheUserChoosesAllOrOne) {
  EditorFixture f;
  //          0      7      14     21
  loadLeft(f, "a cat, a cat, a cat, a cat");
  setReplace(f, "cat", "dog");
  f.user().expect("Note", "Replace?", Answer::Yes);
  f.key("RichTextBox1", editor::kKeyF3);
  EXPECT_EQ(f.left()->text(), "a dog, a cat, a cat, a cat");
  EXPECT_EQ(f.form().LeftPaneChanged, 1);

  f.user().expect("Note", "Replace?", Answer::No);
  f.key("RichTextBox1", editor::kKeyF3);
  EXPECT_EQ(f.left()->selStart(), 9);
  EXPECT_EQ(f.left()->selColor(), ui::kBlack);

  f.user().expect("Note", "Replace?", Answer::Cancel);
  f.key("RichTextBox1", editor::kKeyF3);
  EXPECT_EQ(f.left()->text(), "a dog, a cat, a cat, a cat");
  EXPECT_EQ(f.left()->selectedText(), "cat");  // the found text stays selected, in black
  EXPECT_EQ(f.left()->selStart(), 16);
  EXPECT_EQ(f.left()->selColor(), ui::kBlack);

  // After a find, No to all shows the first place; Yes replaces with a find from behind it.
  f.form().LeftPaneChanged = 0;
  f.user().expect("Note!", "Replace ALL instances on this page?", Answer::No);
  f.user().expect("Note!", "Replace?", Answer::Yes);
  f.fire("TextReplace", EventKind::Enter);
  EXPECT_EQ(f.left()->text(), "a dog, a cat, a dog, a cat");
  EXPECT_EQ(f.form().LeftPaneChanged, 1);
  EXPECT_TRUE(f.form().TextReplace.visible());

  f.user().expect("Note!", "Replace ALL instances on this page?", Answer::No);
  f.user().expect("Note!", "Replace?", Answer::Cancel);
  f.fire("TextReplace", EventKind::Enter);
  EXPECT_EQ(f.left()->text(), "a dog, a cat, a dog, a cat");
  EXPECT_EQ(f.left()->selStart(), 9);  // the first place shown

  // Yes to all: from the cursor (now at the first place) to the end.
  f.user().expect("Note!", "Replace ALL instances on this page?", Answer::Yes);
  f.fire("TextReplace", EventKind::Enter);
  EXPECT_EQ(f.left()->text(), "a dog, a cat, a dog, a dog");
  EXPECT_EQ(f.user().pending(), 0u);
}

TEST(EditorInformation, RightClicksExplain) {
  struct Case {
    const char *form, *control, *title, *text;
  } cases[] = {
      {"Opening", "PictureEditor", "Information", "Click this for the Manual Editor"},
      {"FormEditor", "PictureSecFile", "Info", "Click this to open a second file at the same time."},
      {"FormEditor", "PictureSave", "Info", "Click this to save the file at any point."},
      {"FormEditor", "PictureFind", "Info", "Use this to find text, F3 to find again."},
      {"FormEditor", "PictureReplace", "Information", "Click this to find and replace text."},
  };
  EditorFixture f;
  for (const auto& c : cases) {
    f.user().expect(c.title, c.text);
    f.fire(c.control, EventKind::RightClick, {}, c.form);
  }
  EXPECT_EQ(f.user().pending(), 0u);
}

}  // namespace
}  // namespace tolvane
