// Shared set-up of the Manual Editor's tests: a program with a destination and a source
// file handed over as the main form does, and short ways to fire the editor's events.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {

struct EditorFixture {
  TestProgram t;
  std::string dest = (t.files() / "dest.cr2").string();
  std::string source = (t.files() / "source.cr2").string();

  // Writes the two files and puts them in the main form's labels, as Open does.
  EditorFixture(const std::string& destText = crlf({"{", "version", "}"}),
                const std::string& sourceText = crlf({"source", "text"})) {
    writeFile(dest, destText);
    writeFile(source, sourceText);
    t->opening.LabelFileName.setCaption("dest.cr2");
    t->opening.LabelFileNameForEditor.setCaption(dest);
    t->opening.LabelChannelFileName.setCaption("source.cr2");
    t->opening.LabelChannelFileNameForEditor.setCaption(source);
  }

  ui::FormEditor& form() { return t->formEditor; }
  ui::TextPane& left() { return t->formEditor.RichTextBox1; }
  ui::TextPane& right() { return t->formEditor.RichTextBox2; }
  ui::ScriptedServices& user() { return t.services; }

  // Fires an event of FormEditor (or of `form` when given) and checks it was handled.
  void fire(const std::string& control, EventKind kind, EventArgs args = {},
            const std::string& form = "FormEditor") {
    ASSERT_TRUE(fireEvent(*t, form, control, kind, args)) << form << "." << control << " has no handler";
  }
  void key(const std::string& pane, int code) {
    EventArgs a;
    a.keyCode = code;
    fire(pane, EventKind::Key, a);
  }
  // Opens the destination in the left pane by a click on LabelFileName.
  void openDestination() { fire("LabelFileName", EventKind::Click, {}, "Opening"); }
  // Opens a file in the right pane through PictureSecFile and the open dialog.
  void openRight(const std::string& path) {
    t.services.expect("Note!", "Recent files list?", ui::Answer::No);
    t.services.dialog(path);
    fire("PictureSecFile", EventKind::Click);
  }
};

}  // namespace tolvane::test
