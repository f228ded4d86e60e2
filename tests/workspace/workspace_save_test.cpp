#include <gtest/gtest.h>

#include "workspace/workspace.h"
#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

const std::filesystem::path& kSave = kSaveData;

struct WorkspaceSave : ::testing::Test {
  OpenedFigure s;
};

// A packed figure is written back packed under its own name.
TEST(SaveOfThePathBoxes, WritesTheRedBoxesOnlyPackedAsTheFileWas) {
  for (bool packed : {false, true}) {
    SCOPED_TRACE(packed ? "packed" : "plain");
    OpenedFigure s(packed);
    ui::Opening& f = s.form();
    s.handEdit(f.TextMainOBJ, "Runtime\\Geometries\\Tolv\\new.obj");
    s.handEdit(f.TextMainBump, "C:\\tex\\b.jpg");
    s.handEdit(f.TextMainTex, "Default P4 Map");
    f.TextMainTrans.setText("typed-but-not-taken.jpg");
    EXPECT_EQ(f.TextMainOBJ.text(), "Runtime:Geometries:Tolv:new.obj");
    EXPECT_EQ(f.NewObjLine, "figureResFile :Runtime:Geometries:Tolv:new.obj");
    EXPECT_EQ(f.LabelMainBump.foreColor(), ui::kRed);
    EXPECT_EQ(f.PathsDirty, 1);

    s.click("MenuFileSave", s.file);
    std::string saved = readFile(s.file);
    EXPECT_EQ(packed ? gunzipBytes(saved) : saved, readFile(kSave / "expected_save.cr2"));
    EXPECT_EQ(s.t.services.dialogs().back().fileName, s.file.string());
    EXPECT_EQ(s.t.services.dialogs().back().kind, ui::FileDialogRequest::Kind::Save);
    for (ui::Label* l : {&f.LabelMainOBJPath, &f.LabelMainTex, &f.LabelMainBump, &f.LabelMainTrans})
      EXPECT_EQ(l->foreColor(), 0xC00000u) << l->name();
    EXPECT_EQ(f.PathsDirty, 0);
    EXPECT_FALSE(std::filesystem::exists(s.t.work() / "cr2temp.txt"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(s.t.files()), {}), 1);
  }
}

TEST_F(WorkspaceSave, ExitDoublesTheKeywordAndOpenReplacesNoGeometry) {
  struct Case {
    PathWriteVariant variant;
    const char* expected;
    bool objLabelRed;
  };
  for (const Case& c : {Case{PathWriteVariant::Exit, "expected_exit.cr2", false},
                        Case{PathWriteVariant::Open, "expected_open.cr2", true}}) {
    SCOPED_TRACE(c.expected);
    OpenedFigure each;  // a fresh figure for each variant
    ui::Opening& f = each.form();
    each.click("LabelMainOBJPath", each.poser / "Runtime/Geometries/Tolv/ball.obj");
    EXPECT_EQ(f.TextMainOBJ.text(), "Runtime:Geometries:Tolv:ball.obj");
    each.handEdit(f.TextMainReflect, "C:\\env.jpg");
    each.t.services.dialog(each.file.string());
    WritePathChanges(*each.t, c.variant);
    EXPECT_EQ(firstDifference(each.file, kSave / c.expected), "");
    EXPECT_EQ(f.LabelMainOBJPath.foreColor() == ui::kRed, c.objLabelRed);
    EXPECT_EQ(f.LabelMainReflect.foreColor(), 0xC00000u);
  }
}

TEST_F(WorkspaceSave, WithoutPrimaryMaterialNoMapIsWritten) {
  auto pose = s.t.files() / "pose.cr2";
  std::string text = crlf({"{", "figureResFile :Runtime:Geometries:Tolv:ava.obj", "\tmaterial eyes", "\t\t{",
                           "\t\tbumpMap NO_MAP", "\t\t}", "}"});
  writeFile(pose, text);
  s.form().OpenFilePath = pose.string();
  s.handEdit(s.form().TextMainBump, "x.jpg");
  s.click("MenuFileSave", pose);
  EXPECT_EQ(readFile(pose), text);
  EXPECT_EQ(s.form().LabelMainBump.foreColor(), ui::kRed);  // its keyword was never passed
  EXPECT_EQ(s.form().PathsDirty, 0);
}

TEST_F(WorkspaceSave, CancelOnExitIsARunTimeErrorAndTheFileStays) {
  s.handEdit(s.form().TextMainReflect, "C:\\env.jpg");
  s.t.services.cancelDialog();
  s.t.services.expect(kAppName, "Run-time error '32755':...");
  runGuarded(*s.t, [&] { WritePathChanges(*s.t, PathWriteVariant::Exit); });
  EXPECT_EQ(readFile(s.file), s.original);
  EXPECT_EQ(s.t.services.pending(), 0u);
}

TEST_F(WorkspaceSave, SaveAsToANewNameAndCancel) {
  ui::Opening& f = s.form();
  s.handEdit(f.TextMainBump, "C:\\tex\\b.jpg");
  auto copy = s.t.dir / "elsewhere" / "copy.cr2";
  std::filesystem::create_directories(copy.parent_path());
  s.click("MenuFileSaveAs", copy);
  EXPECT_EQ(readFile(s.file), s.original);
  EXPECT_NE(readFile(copy).find("\t\tbumpMapC::tex:b.jpg\r\n"), std::string::npos);
  EXPECT_EQ(s.t->currentDir, copy.parent_path());

  // A cancel leaves the scratch copy in the Work folder and clears the flag all the same.
  s.handEdit(f.TextMainBump, "C:\\other.jpg");
  s.click("MenuFileSaveAs", {});
  EXPECT_EQ(readFile(s.file), s.original);
  EXPECT_TRUE(std::filesystem::exists(s.t.work() / "cr2temp.txt"));
  EXPECT_EQ(f.PathsDirty, 0);
}

TEST_F(WorkspaceSave, ExtraMaterialsModeSavesTheMaterialToolsResult) {
  writeFile(s.t.work() / "CR2.tmp", "materials\r\n");
  s.form().ExtraMaterialsMode = true;
  auto target = s.t.files() / "withmaterials.cr2";
  s.click("MenuFileSaveAs", target);
  EXPECT_EQ(readFile(target), "materials\r\n");
  EXPECT_EQ(s.form().LastOpenedPath, target.string());
  EXPECT_FALSE(s.form().ExtraMaterialsMode);
  EXPECT_EQ(readFile(s.file), s.original);
}

TEST_F(WorkspaceSave, LabelsBrowseAndBoxesRefuseForwardSlashes) {
  ui::Opening& f = s.form();
  s.click("LabelMainTex", "C:\\Poser\\Runtime\\textures\\a.tif");
  EXPECT_EQ(f.TextMainTex.text(), "C:Poser:Runtime:textures:a.tif");
  EXPECT_EQ(f.PathsDirty, 1);

  f.PathsDirty = 0;
  s.click("LabelMainTrans", {});
  EXPECT_EQ(f.LabelMainTrans.foreColor(), ui::kRed);  // red at once, even on a cancel
  EXPECT_EQ(f.PathsDirty, 0);

  s.click("LabelMainOBJPath", s.t.dir / "outside" / "x.obj",
          {{"Error!", "Geometry files must be in the Runtime folders!"}});
  EXPECT_EQ(f.TextMainOBJ.text(), "Tolv:ava.obj");
  s.click("LabelMainOBJPath", s.file);  // the open file itself: nothing happens
  EXPECT_EQ(f.LabelMainOBJPath.foreColor(), 0xC00000u);

  f.TextMainBump.setText("C:/tex/b.jpg");
  s.t.services.expect("ERROR!", "You used a forward instead of back slash!");
  fireEvent(*s.t, "Opening", "TextMainBump", EventKind::DblClick);
  EXPECT_EQ(s.t.services.beeps(), 1);
  EXPECT_EQ(f.TextMainBump.text(), "C:/tex/b.jpg");
  EXPECT_EQ(f.LabelMainBump.foreColor(), 0xC00000u);

  s.t.services.expect("Note!", "For any of these path boxes, doubleclick...");
  fireEvent(*s.t, "Opening", "TextMainOBJ", EventKind::RightClick);
  EXPECT_EQ(s.t.services.pending(), 0u);
}

TEST_F(WorkspaceSave, OpenAsksAboutUnsavedPaths) {
  s.handEdit(s.form().TextMainReflect, "C:\\env.jpg");
  s.expect({"Alert!", "Save path changes before closing file?", ui::Answer::Yes});
  s.t.services.dialog(s.file.string());  // the save dialog of the path write
  s.open(s.file, {kMoreThanOneMap});
  EXPECT_EQ(firstDifference(s.file, kSave / "expected_open.cr2"), "");
  EXPECT_EQ(s.form().PathsDirty, 0);
  EXPECT_EQ(s.form().LabelMainReflect.foreColor(), 0xC00000u);
}

}  // namespace
}  // namespace tolvane::test
