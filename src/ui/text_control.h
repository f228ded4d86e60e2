// The text control behind an editor pane: the whole text, a selection with a colour,
// find with the control's option values, the line queries of an edit control, and a
// modified flag. A plain in-memory class implements it for the headless program and the
// tests; the GUI puts its editor widget behind the same interface.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ui/controls.h"

namespace tolvane::ui {

// Option values of find, as the edit control takes them.
enum FindOption : int {
  kFindNoOptions = 0,
  kFindWholeWord = 2,
  kFindMatchCase = 4,
};

class TextControl {
 public:
  virtual ~TextControl() = default;

  // The text as bytes, line ends as they stand in the control.
  virtual std::string text() const = 0;
  // Replaces the whole text; the selection goes to 0, the modified flag is cleared.
  virtual void setText(std::string text) = 0;
  virtual std::int64_t length() const = 0;
  // `length` bytes from `start`, clamped to the text: what a view draws.
  virtual std::string mid(std::int64_t start, std::int64_t length) const = 0;

  virtual std::int64_t selStart() const = 0;
  virtual std::int64_t selLength() const = 0;
  // Start and length are clamped to the text.
  virtual void setSelection(std::int64_t start, std::int64_t length) = 0;
  virtual std::string selectedText() const = 0;
  // The text colour of the selected text.
  virtual Colour selColor() const = 0;
  virtual void setSelColor(Colour colour) = 0;
  // Puts `text` in place of the selection; the cursor then stands behind it.
  virtual void replaceSelection(std::string_view text) = 0;

  // Looks for `what` from character `start` to the end of the text, with the option
  // values 2 (whole word) and 4 (match case). Selects the match and returns its
  // position; -1 when there is none, the selection then stays.
  virtual std::int64_t find(std::string_view what, std::int64_t start, int options) = 0;

  // The 0-based line that holds character `position`.
  virtual std::int64_t lineFromChar(std::int64_t position) const = 0;
  // The character position where 0-based `line` starts; -1 past the last line.
  virtual std::int64_t lineIndex(std::int64_t line) const = 0;
  // Line breaks plus one: a text that ends in a line break has an empty last line.
  virtual std::int64_t lineCount() const = 0;

  virtual bool modified() const = 0;
  virtual void setModified(bool modified) = 0;

  // Undo and redo of the replacements since the text was set. Each takes back or makes
  // again one step (an edit, a run of typing, a group); false when there was none.
  virtual bool undo() = 0;
  virtual bool redo() = 0;
  virtual bool canUndo() const = 0;
  virtual bool canRedo() const = 0;
  // The replacements between the outermost begin and its end undo as one step.
  virtual void beginEditGroup() = 0;
  virtual void endEditGroup() = 0;
};

// Opens an edit group for the life of the object.
class EditGroup {
 public:
  explicit EditGroup(TextControl& control) : m_control(control) { m_control.beginEditGroup(); }
  ~EditGroup() { m_control.endEditGroup(); }
  EditGroup(const EditGroup&) = delete;
  EditGroup& operator=(const EditGroup&) = delete;

 private:
  TextControl& m_control;
};

}  // namespace tolvane::ui
