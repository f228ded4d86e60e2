#include "ui/memory_text_control.h"

#include <gtest/gtest.h>

#include <random>

namespace tolvane::ui {
namespace {

// The four combinations of the options are in the editor's own find test.
TEST(MemoryTextControl, FindOptions) {
  struct Case {
    const char* what;
    std::string text, find;
    std::int64_t start;
    int options;
    std::int64_t expected;
  } cases[] = {
      {"whole word skips a part of a word", "hipster hip", "hip", 0, kFindWholeWord, 8},
      {"whole word at both ends of the text", "hip", "hip", 0, kFindWholeWord, 0},
      {"underscore is part of a word", "r_hip hip", "hip", 0, kFindWholeWord, 6},
      {"Latin-1 capitals fold", "x \xC9t\xC9", "\xE9T\xE9", 0, 0, 2},
      {"start past the end", "hip", "hip", 9, 0, -1},
      {"empty search text", "hip", "", 0, 0, -1},
      {"match ends at the last character", "abc", "bc", 0, 0, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    MemoryTextControl t;
    t.setText(c.text);
    t.setSelection(1, 0);
    EXPECT_EQ(t.find(c.find, c.start, c.options), c.expected);
    // A failed find leaves the selection.
    EXPECT_EQ(t.selStart(), c.expected >= 0 ? c.expected : 1);
    EXPECT_EQ(t.selLength(), c.expected >= 0 ? static_cast<std::int64_t>(c.find.size()) : 0);
  }
}

// What the random run below does not reach: a negative line, the empty line behind a
// final line break, the modified flag and a selection past the end.
TEST(MemoryTextControl, EdgesOfLinesAndSelections) {
  MemoryTextControl t;
  t.setText("a\r\n");
  EXPECT_EQ(t.lineIndex(-1), -1);
  EXPECT_EQ(t.lineIndex(1), 3);
  EXPECT_EQ(t.lineIndex(2), -1);
  EXPECT_EQ(t.lineFromChar(2), 0);  // the LF still belongs to its line
  EXPECT_FALSE(t.modified());
  t.setSelection(1, 0);
  t.replaceSelection("b");
  EXPECT_EQ(t.selLength(), 0);  // a cursor behind the new text
  EXPECT_TRUE(t.modified());
  t.setSelection(50, 9);  // clamped to the text
  EXPECT_EQ(t.selStart(), 4);
  EXPECT_EQ(t.selLength(), 0);
}

// Random edits, finds and line queries against a plain string: the gap and the
// line-start index must never show through.
TEST(MemoryTextControl, AgreesWithAPlainStringUnderRandomEdits) {
  std::mt19937 rng(7);
  const std::string pieces[] = {"ab", "\r\n", "b", "", "a\r\nab", "xyz\n"};
  MemoryTextControl t;
  std::string model;
  for (int i = 0; i < 200; ++i) model += pieces[rng() % 6];
  t.setText(model);
  const std::string original = model;
  for (int step = 0; step < 3000; ++step) {
    SCOPED_TRACE(step);
    auto size = static_cast<std::int64_t>(model.size());
    std::int64_t start = size ? static_cast<std::int64_t>(rng() % (size + 1)) : 0;
    switch (rng() % 4) {
      case 0: {
        std::int64_t length = rng() % 5;
        t.setSelection(start, length);
        length = std::min(length, size - start);
        const std::string& piece = pieces[rng() % 6];
        t.replaceSelection(piece);
        model.replace(static_cast<std::size_t>(start), static_cast<std::size_t>(length), piece);
        ASSERT_EQ(t.selStart(), start + static_cast<std::int64_t>(piece.size()));
        break;
      }
      case 1: {
        std::size_t hit = model.find("b\r\na", static_cast<std::size_t>(start));
        ASSERT_EQ(t.find("B\r\nA", start, 0), hit == std::string::npos ? -1 : static_cast<std::int64_t>(hit));
        break;
      }
      case 2: {
        auto lf = std::count(model.begin(), model.begin() + start, '\n');
        ASSERT_EQ(t.lineFromChar(start), lf);
        ASSERT_EQ(t.mid(start, 7), model.substr(static_cast<std::size_t>(start), 7));
        break;
      }
      default: {
        std::int64_t line = rng() % 60;
        std::int64_t expected = 0;
        for (std::int64_t n = 0; n < line && expected != -1; ++n) {
          std::size_t lf = model.find('\n', static_cast<std::size_t>(expected));
          expected = lf == std::string::npos ? -1 : static_cast<std::int64_t>(lf + 1);
        }
        ASSERT_EQ(t.lineIndex(line), expected);
      }
    }
    ASSERT_EQ(t.length(), static_cast<std::int64_t>(model.size()));
    ASSERT_EQ(t.lineCount(), std::count(model.begin(), model.end(), '\n') + 1);
  }
  EXPECT_EQ(t.text(), model);

  // Every edit taken back leads to the text as it was set, and made again to the end.
  while (t.undo()) continue;
  EXPECT_EQ(t.text(), original);
  EXPECT_EQ(t.lineCount(), std::count(original.begin(), original.end(), '\n') + 1);
  while (t.redo()) continue;
  EXPECT_EQ(t.text(), model);
  EXPECT_EQ(t.lineIndex(1), static_cast<std::int64_t>(model.find('\n') + 1));
}

TEST(MemoryTextControl, UndoStepsFollowWordsLinesAndGroups) {
  MemoryTextControl t;
  t.setText("hip\r\n");
  auto type = [&t](const std::string& keys) {
    for (char c : keys) t.replaceSelection(c == '\n' ? std::string("\r\n") : std::string(1, c));
  };
  t.setSelection(3, 0);
  type("ab cd\nef");
  EXPECT_EQ(t.text(), "hipab cd\r\nef\r\n");
  ASSERT_TRUE(t.undo());  // "ef"
  EXPECT_EQ(t.text(), "hipab cd\r\n\r\n");
  EXPECT_EQ(t.selStart(), 10);
  ASSERT_TRUE(t.undo());  // the line break
  ASSERT_TRUE(t.undo());  // "cd"
  EXPECT_EQ(t.text(), "hipab \r\n");
  ASSERT_TRUE(t.undo());  // "ab " with its blank
  EXPECT_EQ(t.text(), "hip\r\n");
  EXPECT_FALSE(t.canUndo());
  ASSERT_TRUE(t.redo());
  EXPECT_EQ(t.text(), "hipab \r\n");
  EXPECT_EQ(t.selStart(), 6);  // the cursor behind the typing made again
  EXPECT_EQ(t.selLength(), 0);

  // A new edit drops what could be made again.
  t.setSelection(0, 3);
  t.replaceSelection("thigh");
  EXPECT_FALSE(t.canRedo());
  ASSERT_TRUE(t.undo());
  EXPECT_EQ(t.text(), "hipab \r\n");
  EXPECT_EQ(t.selectedText(), "hip");  // what came back is selected

  {
    EditGroup group(t);
    t.setSelection(0, 1);
    t.replaceSelection("H");
    t.setSelection(3, 2);
    t.replaceSelection("");
  }
  EXPECT_EQ(t.text(), "Hip \r\n");
  ASSERT_TRUE(t.undo());
  EXPECT_EQ(t.text(), "hipab \r\n");

  t.setText("new");
  EXPECT_FALSE(t.canUndo());
  EXPECT_FALSE(t.canRedo());
}

TEST(EditHistory, DropsTheOldestStepsOverItsLimitButKeepsTheNewest) {
  EditHistory history(2 * sizeof(Edit) + 30);
  history.record(0, "", std::string(30, 'a'));
  history.record(0, std::string(5, 'b'), "\n");
  EXPECT_EQ(history.bytesHeld(), 6 + sizeof(Edit));
  EXPECT_EQ(history.takeUndo().front().removed, std::string(5, 'b'));
  EXPECT_FALSE(history.canUndo());  // the 30-byte step went
  history.record(0, std::string(100, 'c'), "");
  EXPECT_TRUE(history.canUndo());  // alone over the limit, still kept
  EXPECT_FALSE(history.canRedo());
  EXPECT_EQ(history.bytesHeld(), 100 + sizeof(Edit));
}

}  // namespace
}  // namespace tolvane::ui
