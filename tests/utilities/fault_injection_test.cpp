// Every disk operation of the utilities' writers fails in turn: the Dial Renamer's
// rewrite, the renumbering's renames and the version file. The user's files stay as
// they were or become what the tool makes, nothing else is left beside them, and the
// tool works again after.
#include <gtest/gtest.h>

#include "fault_walk.h"

namespace tolvane::test {
namespace {

struct Utilities : ToolBench {
  Utilities() {
    writeFile(folder / "fig.cr2", crlf({"actor hip:1", "\t{", "\tname    GetStringRes(1024,6)", "\t}"}));
    for (int i = 1; i <= 3; ++i) writeFile(folder / (std::to_string(i) + ".bmp"), std::to_string(i));
  }
  std::filesystem::path userFolder() { return folder; }
  std::filesystem::path folder = t.files() / "figs";
};

struct Version : ToolBench {
  std::filesystem::path userFolder() { return t.work(); }
};

void renameDials(Utilities& u) {
  fireEvent(*u.t, "Opening", "menuDialRenamer", EventKind::Click);
  u.t->renamer.Dir1.setText(u.folder.string());
  fireEvent(*u.t, "Renamer", "Dir1", EventKind::Change);
  u.t->renamer.File1.setListIndex(u.t->renamer.File1.indexOf("fig.cr2"));
  // Dials.tmp lies in the current directory: here the Work folder.
  u.t->currentDir = u.t.work();
  fireEvent(*u.t, "Renamer", "LabelFriendly", EventKind::Click);
  fireEvent(*u.t, "Renamer", "Picture1", EventKind::Drop);
}

void renumber(Utilities& u) {
  fireEvent(*u.t, "Opening", "menuRenumberFiles", EventKind::Click);
  u.t->formRenumber.Dir1.setText(u.folder.string());
  u.t.services.answer(ui::Answer::OK);
  fireEvent(*u.t, "FormRenumber", "CommandGo", EventKind::Click);
}

void checkVersion(Version& v) {
  v.t.services.setHttpResponse("Version 5.0");
  v.t.services.answer(ui::Answer::OK);
  fireEvent(*v.t, "Opening", "menuCheckVer", EventKind::Click);
}

TEST(UtilitiesFaults, EveryWriterSurvivesAFailingDisk) {
  walkEveryFault<Utilities>(renameDials);
  walkEveryFault<Utilities>(renumber);
  walkEveryFault<Version>(checkVersion);
}

}  // namespace
}  // namespace tolvane::test
