#include "editor_test_support.h"

#include <gtest/gtest.h>

namespace tolvane::test {

EditorFixture::EditorFixture(const std::string& destText, const std::string& sourceText) {
  dest = (t.files() / "dest.cr2").string();
  source = (t.files() / "source.cr2").string();
  writeFile(dest, destText);
  writeFile(source, sourceText);
  ui::Opening& main = t->opening;
  main.LabelFileName.setCaption("dest.cr2");
  main.LabelFileNameForEditor.setCaption(dest);
  main.LabelChannelFileName.setCaption("source.cr2");
  main.LabelChannelFileNameForEditor.setCaption(source);
}

void EditorFixture::fire(const std::string& control, EventKind kind, EventArgs args,
                         const std::string& form) {
  ASSERT_TRUE(fireEvent(*t, form, control, kind, args)) << form << "." << control << " has no handler";
}

void EditorFixture::openDestination() { fire("LabelFileName", EventKind::Click, {}, "Opening"); }

void EditorFixture::openRight(const std::string& path) {
  t.services.expect("Note!", "Recent files list?", ui::Answer::No);
  t.services.dialog(path);
  fire("PictureSecFile", EventKind::Click);
}

}  // namespace tolvane::test
