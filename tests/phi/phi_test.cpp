// The Phi tools through their handlers: the creator on figures with and without
// rotation-order errors, its refusals; the viewer's editing, saving and printing; the
// part tree and the OBJ it writes without a part and the parts below it.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>

#include "fault_walk.h"
#include "program/events.h"
#include "test_support.h"
#include "text/phi_file.h"
#include "text/runtime_error.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
const fs::path kData = fs::path(TOLVANE_TEST_DATA) / "phi";

struct PhiFixture {
  TestProgram t;
  TestProgram& program() { return t; }
  fs::path userFolder() { return t.files(); }
  fs::path copy(const std::string& name) { return copyInto(kData / name, t.files()); }
  void fire(const std::string& form, const std::string& control, EventKind kind) {
    fireEvent(*t, form, control, kind);
  }
  // MenuPhi on a copy of `name`; the answers to the questions are queued first.
  fs::path create(const std::string& name) {
    fs::path cr2 = copy(name);
    t.services.dialog(cr2.string());
    fire("Opening", "MenuPhi", EventKind::Click);
    return cr2;
  }
};

std::string savedAs(const fs::path& cr2) {
  std::string p = cr2.string();
  return p.substr(0, p.find('.') + 1) + "phi";
}

// An expected Phi file names its figure as "$CR2".
std::string expectedPhi(const std::string& name, const fs::path& cr2) {
  std::string text = readFile(kData / name);
  return text.replace(text.find("$CR2"), 4, cr2.string());
}

const std::string kRepair =
    "  This will be repaired in the phi file and noted.";

TEST(PhiCreator, WritesTheExpectedFileForEachFigure) {
  struct Row {
    const char* figure;
    const char* expected;
    std::vector<std::pair<std::string, std::string>> questions;  // title, text; answered Yes / OK
    ui::Answer ignore;
  };
  const std::vector<Row> rows = {
      {"sample.cr2", "sample.phi", {}, ui::Answer::No},
      {"two.cr2", "two.phi", {}, ui::Answer::No},
      {"errors.cr2",
       "errors_repaired.phi",
       {{"Rotation Error!", "There is an error in the rotation order for the hip in the CR2 file.  It says 'xyz' and "
                            "it should say 'yzx'." + kRepair},
        {"Rotation Error!", "There is an error in the rotation order for the abdomen in the CR2 file.  It says 'zyx' "
                            "and it should say 'yzx'." + kRepair},
        {"Error Found!", "Ignore errors in rotation order?"},
        {"Rotation Error!", "There is an error in the rotation order for actor lCollar:1 in the CR2 file.  It says "
                            "'yxz' and it should say 'xyz'." + kRepair},
        {"Rotation Error!", "There is an error in the rotation order for actor rToe:1 in the CR2 file.  It says "
                            "'zxy' and it should say 'xyz'." + kRepair}},
       ui::Answer::No},
      {"errors.cr2",
       "errors_ignored.phi",
       {{"Rotation Error!", "There is an error in the rotation order for the hip in the CR2 file...."},
        {"Rotation Error!", "There is an error in the rotation order for the abdomen in the CR2 file...."},
        {"Error Found!", "Ignore errors in rotation order?"}},
       ui::Answer::Yes},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.expected);
    PhiFixture f;
    fs::path cr2 = f.copy(row.figure);
    f.t.services.dialog(cr2.string());
    for (const auto& [title, text] : row.questions) {
      ui::Answer a = title == "Error Found!" ? row.ignore : ui::Answer::OK;
      f.t.services.expect(title, text, a);
    }
    f.t.services.expect("Phi File Creator", "Phi file saved as " + savedAs(cr2));
    f.fire("Opening", "MenuPhi", EventKind::Click);
    EXPECT_EQ(f.t.services.pending(), 0u);
    EXPECT_EQ(readFile(savedAs(cr2)), expectedPhi(row.expected, cr2));
    EXPECT_FALSE(fs::exists(f.t.work() / "Phi.txt"));
    EXPECT_TRUE(f.t->formPhi.visible());
    EXPECT_EQ(f.t->formPhi.LabelPhiFileName.caption(), savedAs(cr2));
    EXPECT_EQ(f.t->formPhi.ListPhi.listCount(), static_cast<int>(text::phi::readLines(savedAs(cr2)).size()));
  }
}

TEST(PhiCreator, RefusalsLeaveNoPhiFileBesideTheFigure) {
  struct Row {
    const char* name;
    std::string content;  // empty: the data file of that name
    std::vector<std::pair<std::string, ui::Answer>> answers;
    std::string title, message;
    bool scratchStays;
  };
  std::string unconventional = "Unconventional CR2, you can notify me at tolvane-support@tolvane.org";
  std::string noClosing = readFile(kData / "sample.cr2");
  noClosing += "# end\r\n";  // the last field is no longer "}"
  std::string tenFigures;
  for (int i = 0; i < 10; ++i)
    tenFigures += "figureResFile :a:b.obj\r\nactor BODY:" + std::to_string(i) + "\r\n{\r\n}\r\n";
  const std::vector<Row> rows = {
      {"pose.pz2", "{\r\n}\r\n", {}, "Error!", "Wrong file type!", false},
      {"open.cr2", noClosing, {}, "Error!", unconventional, true},
      {"ten.cr2", tenFigures, {}, "Error!", unconventional, true},
      {"errors.cr2", "", {{"Rotation Error!", ui::Answer::OK}, {"Rotation Error!", ui::Answer::OK},
                          {"Error Found!", ui::Answer::No}, {"Rotation Error!", ui::Answer::Cancel}},
       "Note!", "Phi file creation canceled.", true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    PhiFixture f;
    fs::path cr2 = f.t.files() / row.name;
    if (row.content.empty() && fs::exists(kData / row.name))
      f.copy(row.name);
    else
      writeFile(cr2, row.content);
    std::string before = readFile(cr2);
    f.t.services.dialog(cr2.string());
    for (const auto& [title, answer] : row.answers) f.t.services.expect(title, "...", answer);
    if (!row.title.empty()) f.t.services.expect(row.title, row.message);
    f.fire("Opening", "MenuPhi", EventKind::Click);
    EXPECT_EQ(f.t.services.pending(), 0u);
    EXPECT_EQ(readFile(cr2), before);
    EXPECT_FALSE(fs::exists(savedAs(cr2)));
    EXPECT_EQ(fs::exists(f.t.work() / "Phi.txt"), row.scratchStays);
    EXPECT_FALSE(f.t->opening.busy());
  }
}

TEST(PhiCreator, AnExistingPhiFileIsNeverOverwritten) {
  PhiFixture f;
  fs::path cr2 = f.copy("sample.cr2");
  writeFile(savedAs(cr2), "mine\r\n");
  f.t.services.dialog(cr2.string());
  f.t.services.expect("Error!", "File already exists, move or delete the first.");
  f.fire("Opening", "MenuPhi", EventKind::Click);
  EXPECT_EQ(readFile(savedAs(cr2)), "mine\r\n");
  EXPECT_EQ(readFile(f.t.work() / "Phi.txt"), expectedPhi("sample.phi", cr2));
  EXPECT_FALSE(f.t->formPhi.visible());
}

TEST(PhiViewer, EditsALineSavesAndPrints) {
  PhiFixture f;
  fs::path phi = f.copy("sample.phi");
  f.t.services.dialog(phi.string());
  f.fire("Opening", "MenuViewPhi", EventKind::Click);
  ui::FormPhi& form = f.t->formPhi;
  ASSERT_TRUE(form.visible());
  EXPECT_EQ(f.t.services.dialogs().back().filter, "PHI(*.phi)|*.phi");
  EXPECT_FALSE(form.LabelPhiSave.visible());
  form.ListPhi.setListIndex(5);
  f.fire("FormPhi", "ListPhi", EventKind::DblClick);
  EXPECT_EQ(form.TextPhiEdit.text(), "1 hip yzx");
  form.TextPhiEdit.setText("1 hip zyx");
  f.fire("FormPhi", "TextPhiEdit", EventKind::DblClick);
  EXPECT_TRUE(form.LabelPhiSave.visible());
  f.t.services.expect("Note!", "Modified Phi file saved.");
  f.fire("FormPhi", "LabelPhiSave", EventKind::Click);
  EXPECT_FALSE(form.LabelPhiSave.visible());
  std::string expected = readFile(kData / "sample.phi");
  EXPECT_EQ(readFile(phi), expected.replace(expected.find("1 hip yzx"), 9, "1 hip zyx"));

  f.t.services.queue(ui::ScriptedAnswer::print((f.t.files() / "out.pdf").string()));
  f.fire("FormPhi", "MenuPrint", EventKind::Click);
  ASSERT_EQ(f.t.services.printed().size(), 1u);
  const ui::PrintJob& job = f.t.services.printed()[0];
  EXPECT_EQ(job.fontFamily, "Courier");
  EXPECT_EQ(job.text.substr(0, job.text.find("\r\n")), "Phi File for " + phi.string());
  EXPECT_NE(job.text.find("\r\n   1 hip zyx\r\n"), std::string::npos);

  f.t.services.expect("Help", "Doubleclick a line to edit it in the lower text box....");
  f.fire("FormPhi", "MenuPhiHelp", EventKind::Click);
  f.fire("FormPhi", "LabelPhiDone", EventKind::Click);
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(f.t.services.pending(), 0u);
}

TEST(PhiViewer, BadFilesGiveAnErrorAndChangeNothing) {
  struct Row {
    const char* name;
    std::string content;
    int error;  // 0: shown
  };
  std::string many;
  for (int i = 0; i < 100000; ++i) many += "\t 2 part" + std::to_string(i) + " xyz\r\n";
  const std::vector<Row> rows = {{"binary.phi", std::string("\0\1\2\r\n", 5), text::kTypeMismatch},
                                 {"missing.phi", "", text::kFileNotFound},
                                 {"many.phi", many, 0}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    PhiFixture f;
    fs::path phi = f.t.files() / row.name;
    if (row.error != text::kFileNotFound) writeFile(phi, row.content);
    f.t.services.dialog(phi.string());
    f.t.services.answerRunTimeErrors(true);
    f.fire("Opening", "MenuViewPhi", EventKind::Click);
    EXPECT_EQ(f.t.services.runTimeErrorReports(), row.error == 0 ? 0 : 1);
    EXPECT_EQ(f.t->formPhi.visible(), row.error == 0);
    if (row.error == 0) {
      EXPECT_EQ(f.t->formPhi.ListPhi.listCount(), 100000);
    }
  }
}

// A read-only Phi file is not replaced: the error is reported and the file stays.
TEST(PhiViewer, SavingOverAReadOnlyFileChangesNothing) {
  PhiFixture f;
  fs::path phi = f.copy("sample.phi");
  f.t.services.dialog(phi.string());
  f.fire("Opening", "MenuViewPhi", EventKind::Click);
  fs::permissions(phi, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  f.t->formPhi.ListPhi.setItem(0, "changed");
  f.t.services.answerRunTimeErrors(true);
  f.fire("FormPhi", "LabelPhiSave", EventKind::Click);
  EXPECT_EQ(f.t.services.runTimeErrorReports(), 1);
  EXPECT_EQ(readFile(phi), readFile(kData / "sample.phi"));
}

struct TreeFixture : PhiFixture {
  TreeFixture() {
    cr2 = copy("sample.cr2");
    obj = copy("parts.obj");
    t->opening.LabelFileNameForEditor.setCaption(cr2.string());
    t->formTree.objPath = obj.string();
    fire("FormTree", "FormTree", EventKind::Load);
  }
  void choose(const std::string& name) {
    ui::ListBox& list = t->formTree.ListPhi;
    for (int i = 0; i < list.listCount(); ++i) {
      int depth;
      std::string n;
      text::phi::parseTreeEntry(list.list(i), depth, n);
      if (n == name) list.setListIndex(i);
    }
  }
  fs::path cr2, obj;
};

TEST(PartTree, ListsThePartsByDepth) {
  TreeFixture f;
  const ui::ListBox& list = f.t->formTree.ListPhi;
  ASSERT_GT(list.listCount(), 10);
  EXPECT_EQ(list.list(0), "  1fig abdomen");
  EXPECT_EQ(list.list(1), "    2fig chest");
  EXPECT_EQ(list.list(3), "        4fig head");
  EXPECT_EQ(list.list(4), "        4fig lEye");  // not in the table: the depth of the part before
  EXPECT_EQ(list.list(6), "      3fig lCollar");
  EXPECT_EQ(list.list(10), "                8fig lIndex2");
  EXPECT_EQ(list.list(list.listCount() - 1), "        4fig rToe");
  EXPECT_EQ(f.t->formTree.caption(), "Remove Parts by Phi Listing");
}

TEST(PartTree, GoWritesTheObjWithoutThePartAndThePartsBelowIt) {
  struct Row {
    const char* part;
    bool save;
    std::vector<std::string> gone;
  };
  const std::vector<Row> rows = {
      {"rHand", true, {"rHand", "rMid1", "rMid2", "rMid3", "rIndex1", "rThumb3"}},
      {"lThigh", false, {"lThigh", "lShin", "lFoot", "lToe"}},
      // The eyes are not in the depth table: they take the head's depth, so they stay.
      {"head", true, {"head"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.part);
    TreeFixture f;
    f.choose(row.part);
    fs::path saved = f.t.files() / "lopped.obj";
    if (row.save)
      f.t.services.dialog(saved.string());
    else
      f.t.services.cancelDialog();
    f.fire("FormTree", "CommandGo", EventKind::Click);
    fs::path result = row.save ? saved : f.t.work() / "Lop.txt";
    ASSERT_TRUE(fs::exists(result));
    std::string text = readFile(result);
    for (const std::string& g : row.gone) EXPECT_EQ(text.find("g " + g + "\r\n"), std::string::npos) << g;
    EXPECT_NE(text.find("g hip\r\n"), std::string::npos);
    EXPECT_NE(text.find("g RHAND\r\n"), std::string::npos);  // another case stays
    EXPECT_EQ(text.find("\r\n "), std::string::npos);         // leading blanks are gone
    EXPECT_EQ(f.t->formTree.visible(), !row.save);
    EXPECT_EQ(f.t->opening.TextMainOBJ.text(), row.save ? saved.string() : "");
  }
}

TEST(PartTree, TheLopFileMatchesTheExpectedText) {
  TreeFixture f;
  f.choose("lForeArm");
  f.t.services.cancelDialog();
  f.fire("FormTree", "CommandGo", EventKind::Click);
  EXPECT_EQ(firstDifference(f.t.work() / "Lop.txt", kData / "parts_without_lforearm.obj"), "");
}

// Every disk operation of the Phi save fails in turn.
struct EditedPhi : PhiFixture {
  EditedPhi() {
    fs::path phi = copy("sample.phi");
    t.services.dialog(phi.string());
    fire("Opening", "MenuViewPhi", EventKind::Click);
    t->formPhi.ListPhi.setItem(5, "1 hip zyx");
  }
};

TEST(PhiFaults, SaveOfAnEditedFile) {
  for (int error : {ENOSPC, EIO}) {
    walkFaults<EditedPhi>(error, [](EditedPhi& p) {
      p.t.services.expect("Note!", "Modified Phi file saved.");
      p.fire("FormPhi", "LabelPhiSave", EventKind::Click);
    });
  }
}

// The Phi file names its figure's path, so every run of the walk works on a figure at
// the same place: one folder of this process, made afresh for each run.
struct FigureToPhi : PhiFixture {
  FigureToPhi() : folder(fs::temp_directory_path() / ("tolvane-phi-faults-" + std::to_string(::getpid()))) {
    fs::remove_all(folder);
    fs::create_directories(folder);
    cr2 = copyInto(kData / "sample.cr2", folder);
  }
  ~FigureToPhi() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
  fs::path userFolder() { return folder; }
  fs::path folder, cr2;
};

TEST(PhiFaults, CreationBesideTheFigure) {
  walkFaults<FigureToPhi>(ENOSPC, [](FigureToPhi& p) {
    p.t.services.dialog(p.cr2.string());
    p.t.services.answer(ui::Answer::OK);
    p.fire("Opening", "MenuPhi", EventKind::Click);
  });
}

}  // namespace
}  // namespace tolvane::test
