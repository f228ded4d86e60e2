// Every disk operation of the Manual Editor's save fails in turn: the file saved over,
// and any other of the user's files, stays as it was or becomes the pane's text, and
// the pane can be saved again after.
#include <gtest/gtest.h>

#include "editor_test_support.h"
#include "fault_walk.h"

namespace tolvane::test {
namespace {

// dest.cr2 open in the left pane with a changed number.
struct EditedPane : EditorFixture {
  EditedPane() : EditorFixture(crlf({"version", "{", "number 4", "}"})) {
    openDestination();
    left()->setSelection(19, 1);
    left()->replaceSelection("5");
    key("RichTextBox1", 65);
  }
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.files(); }
};

TEST(EditorFaults, SaveAndSaveAsOfAPane) {
  for (const char* name : {"dest.cr2", "copy.cr2"}) {
    SCOPED_TRACE(std::string("saved as ") + name);
    walkEveryFault<EditedPane>([name](EditedPane& p) {
      p.user().dialog((p.t.files() / name).string());
      p.fire("PictureSave", EventKind::Click);
    });
  }
}

}  // namespace
}  // namespace tolvane::test
