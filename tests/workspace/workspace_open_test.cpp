#include <gtest/gtest.h>

#include "workspace/list_readers.h"
#include "text/scratch_file.h"
#include "workspace/workspace.h"
#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

using WorkspaceOpen = WorkspaceTest;

Prompt runTimeError(int number) { return {kAppName, "Run-time error '" + std::to_string(number) + "':..."}; }

TEST_F(WorkspaceOpen, FigureShowsTheFigurePageAndACancelChangesNothing) {
  auto ava = w.lib("Character/Tolv/Ava.cr2");
  ui::Opening& f = w.form();
  w.click("MenuFileOpen", {});  // a cancel changes nothing
  EXPECT_TRUE(f.LabelFileName.caption().empty());
  EXPECT_EQ(f.ListMRU.listCount(), 0);
  f.PictureViewChannels.setBackColor(ui::kToolOn);
  w.open(ava, {kMoreThanOneMap});
  EXPECT_EQ(f.OpenFilePath, ava.string());
  EXPECT_EQ(f.LastOpenedPath, ava.string());
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), ava.string());
  EXPECT_EQ(f.LabelFileName.caption(), "..." + ava.string().substr(ava.string().size() - 45));
  EXPECT_EQ(f.LabelChannelFileName.caption(), f.LabelFileName.caption());
  EXPECT_EQ(f.LabelChannelFileNameForEditor.caption(), ava.string());
  EXPECT_EQ(f.LabelFileSize.caption(), " " + std::to_string(std::filesystem::file_size(ava)) + " bytes");
  EXPECT_EQ(f.ListMRU.items(), (Entries{ava.string()}));
  EXPECT_TRUE(f.MenuCR2Tools.enabled());
  EXPECT_EQ(f.PictureViewChannels.backColor(), ui::kToolRest);
  for (ui::Control* c : std::initializer_list<ui::Control*>{
           &f.PictureViewChannels, &f.PictureTrash, &f.PictureEMC, &f.LabelOpenSource, &f.ListActors,
           &f.TextMainOBJ, &f.ListMaterials, &f.LabelFileSize})
    EXPECT_TRUE(c->visible()) << c->name();
  for (ui::Control* c : std::initializer_list<ui::Control*>{
           &f.ImageSplash, &f.PictureCopyToDest, &f.LabelOBJFileName, &f.PictureScaleObj, &f.TextMorphRename})
    EXPECT_FALSE(c->visible()) << c->name();
  EXPECT_EQ(f.LabelMainTex.foreColor(), 0xC00000u);
  EXPECT_FALSE(f.busy());
}

TEST_F(WorkspaceOpen, ReadOnlyFileIsListedWhateverTheAnswer) {
  for (ui::Answer answer : {ui::Answer::No, ui::Answer::Yes}) {
    SCOPED_TRACE(ui::answerName(answer));
    WorkspaceFixture each;  // a fresh folder for each case
    auto ava = each.lib("Character/Tolv/Ava.cr2");
    text::setReadOnly(ava);
    each.open(
        ava,
        {{"Alert!",
          "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change "
          "this attribute so it can be edited by Tolvane?",
          answer},
         kMoreThanOneMap});
    EXPECT_EQ(each.form().ListActors.listCount(), 5);
    EXPECT_EQ(text::isReadOnly(ava), answer == ui::Answer::No);
  }
}

TEST_F(WorkspaceOpen, LeadingBlanksAreChoppedWithinTheScannedLines) {
  const struct {
    const char* name;
    int blankLine;  // 1-based line that gets two leading blanks
    bool chopped;
  } cases[] = {{"fig.cr2", 3, true},
               {"fig.cr2", 100, true},
               {"fig.cr2", 101, false},
               {"pose.pz2", 20, true},
               {"pose.pz2", 21, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " line " + std::to_string(c.blankLine));
    WorkspaceFixture each;  // a fresh folder for each case
    std::vector<std::string> lines{"{", "version", "\t{", "\tnumber 4.01", "\t}"};
    while (lines.size() < 120) lines.push_back("\tfiller " + std::to_string(lines.size()));
    lines[c.blankLine - 1] = "  x";
    lines.insert(lines.end(), {"figure", "\t{", "\t}"});
    auto file = each.t.files() / c.name;
    writeFile(file, crlf(lines));
    each.open(file, {kNoBodyParts, kNoSkin});
    std::string text = readFile(file);
    EXPECT_EQ(text.find("  x") == std::string::npos, c.chopped);
    EXPECT_EQ(text.find("\r\n x\r\n") != std::string::npos, c.chopped);
    EXPECT_FALSE(std::filesystem::exists(each.t->currentDir / "Chop.doc"));
  }
}

TEST_F(WorkspaceOpen, RefusedRepairStopsAFigureButNotAScene) {
  const std::string lfOnly =
      "{\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile :Runtime:Geometries:Tolv:ava.obj\n}\n";
  const Prompt sorry{"Sorry!", "Tolvane may not be able to process this file...", ui::Answer::Cancel};
  auto cr2 = w.t.files() / "lf.cr2", pz3 = w.t.files() / "lf.pz3";
  writeFile(cr2, lfOnly);
  writeFile(pz3, lfOnly);
  w.open(cr2, {sorry});
  EXPECT_TRUE(w.form().LabelFileName.caption().empty());
  EXPECT_EQ(w.form().OpenRefused, 0);
  EXPECT_EQ(readFile(cr2), lfOnly);

  // The scene goes on unrepaired: read as one long line it has no part to list.
  w.open(pz3, {sorry, kNoBodyParts, kNoSkin});
  EXPECT_EQ(w.form().LabelFileNameForEditor.caption(), pz3.string());
  EXPECT_EQ(readFile(pz3), lfOnly);
}

TEST_F(WorkspaceOpen, BadInputGivesAClearErrorAndChangesNoFile) {
  const std::string binary(
      "\x7f"
      "ELF\r\n\x01\x02\x00\x00,\xff\xfe\r\n",
      16);
  const struct {
    const char* name;
    std::string bytes;
    int error;
  } cases[] = {
      {"binary.cr2", binary, 62},
      {"nofigureres.cr2", crlf({"{", "actor BODY:1", "\t{", "\t", "\t}", "}"}), 62},
      {"missinggeometry.cr2",
       crlf({"{", "figureResFile :Runtime:Geometries:Nope:x.obj", "actor BODY:1", "}"}), 76},
      {"vanished.cr2", "", 53},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    WorkspaceFixture each;  // a fresh folder for each case
    auto file = each.t.files() / c.name;
    if (c.error != 53) writeFile(file, c.bytes);
    each.open(file, {runTimeError(c.error)});
    EXPECT_EQ(readFile(file), c.bytes);
    EXPECT_FALSE(each.form().busy());
  }
}

TEST_F(WorkspaceOpen, ObjAndMtlPages) {
  auto obj = w.poser / "Runtime/Geometries/Tolv/ava.obj";
  w.open(w.lib("Character/Tolv/Ava.cr2"), {kMoreThanOneMap});
  ui::Opening& f = w.open(obj);
  EXPECT_EQ(f.LabelOBJFileName.caption(), obj.string());
  EXPECT_TRUE(f.LabelOBJFileName.visible());
  EXPECT_TRUE(f.PictureMash.visible());
  EXPECT_TRUE(f.PictureOBJView.hasFocus());
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.ListActors, &f.ListChannels, &f.TextMainTex, &f.LabelFileName,
                                           &f.PictureTrash, &f.LabelOpenSource})
    EXPECT_FALSE(c->visible()) << c->name();

  int shown = 0;
  w.t->onShowEditor = [&] { ++shown; };
  auto mtl = w.t.files() / "ava.mtl";
  writeFile(mtl, crlf({"newmtl skin", "Kd 1 1 1"}));
  w.open(mtl);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), mtl.string());
}

TEST_F(WorkspaceOpen, SourcePane) {
  w.t.services.expect("Information", "Click this button to open a source file.");
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::RightClick);
  w.t.services.expect("Note!", "Open a destination file first.");
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::Click);

  auto ava = w.lib("Character/Tolv/Ava.cr2");
  ui::Opening& f = w.open(ava, {kMoreThanOneMap});
  w.click("LabelOpenSource", w.lib("Scene/Tolv/Duet.pz3"), {{"Error!", "CR2 files only!"}});

  auto other = copyInto(ava, w.t.files() / "Other");
  f.PictureTrash.setBackColor(ui::kToolOn);
  f.PictureBrktsOK.setVisible(true);
  f.MenuFile.setEnabled(false);
  w.click("LabelOpenSource", other);
  EXPECT_EQ(f.ListChannels.items(), (Entries{"BODY PARTS", " BODY:1 * 8", "    hip:1 * 12",
                                             "    abdomen:1 * 17", "    head:1 * 22", "    "}));
  EXPECT_EQ(f.ListActors.listCount(), 5);
  EXPECT_EQ(f.LabelChannelFileNameForEditor.caption(), other.string());
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), ava.string());
  EXPECT_EQ(f.OpenFilePath, other.string());
  EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolRest);
  EXPECT_FALSE(f.PictureBrktsOK.visible());
  EXPECT_TRUE(f.MenuFile.enabled());
  EXPECT_EQ(allChannelsPath(*w.t), other.string());
  EXPECT_EQ(w.t.services.pending(), 0u);
}

TEST_F(WorkspaceOpen, DroppedFilesLoadAsFromTheCommandLine) {
  auto ava = w.lib("Character/Tolv/Ava.cr2");
  EventArgs drop;
  drop.files = {ava.string()};
  w.expect(kMoreThanOneMap);
  ASSERT_TRUE(fireEvent(*w.t, "Opening", "Opening", EventKind::Drop, drop));
  EXPECT_EQ(w.form().ListActors.listCount(), 5);
  EXPECT_EQ(w.form().OpenFilePath, ava.string());
  EXPECT_TRUE(w.form().FrameFigurePage.visible());

  // The load without a dialog handles figures, scenes and OBJs only.
  LoadWithoutDialog(*w.t, w.lib("Pose/Tolv/Wave.pz2").string());
  EXPECT_EQ(w.form().LabelFileNameForEditor.caption(), ava.string());
  EXPECT_EQ(w.t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
