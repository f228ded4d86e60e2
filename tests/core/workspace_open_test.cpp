#include <gtest/gtest.h>

#include "core/list_readers.h"
#include "core/scratch_file.h"
#include "core/workspace.h"
#include "workspace_fixture.h"

namespace tolvane {
namespace {

using test::readFile;
using test::WorkspaceFixture;
using test::writeFile;
using Entries = std::vector<std::string>;

std::pair<std::string, std::string> runTimeError(int number) {
  return {kAppName, "Run-time error '" + std::to_string(number) + "':..."};
}

TEST(WorkspaceOpen, FigureShowsTheFigurePage) {
  WorkspaceFixture w;
  auto ava = w.lib("Character/Tolv/Ava.cr2");
  w.form().PictureViewChannels.setBackColor(ui::kToolOn);
  w.open(ava, {test::kMoreThanOneMap});
  ui::Opening& f = w.form();
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

TEST(WorkspaceOpen, CancelledDialogChangesNothing) {
  WorkspaceFixture w;
  w.t.services.cancelDialog();
  fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click);
  EXPECT_TRUE(w.form().LabelFileName.caption().empty());
  EXPECT_EQ(w.form().ListMRU.listCount(), 0);
}

TEST(WorkspaceOpen, ReadOnlyFileIsListedWhateverTheAnswer) {
  for (ui::Answer answer : {ui::Answer::No, ui::Answer::Yes}) {
    SCOPED_TRACE(ui::answerName(answer));
    WorkspaceFixture w;
    auto ava = w.lib("Character/Tolv/Ava.cr2");
    core::setReadOnly(ava);
    w.t.services.dialog(ava.string());
    w.t.services.expect(
        "Alert!",
        "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change "
        "this attribute so it can be edited by Tolvane?",
        answer);
    w.t.services.expect(test::kMoreThanOneMap.first, test::kMoreThanOneMap.second);
    fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click);
    EXPECT_EQ(w.form().ListActors.listCount(), 5);
    EXPECT_EQ(core::isReadOnly(ava), answer == ui::Answer::No);
  }
}

TEST(WorkspaceOpen, LeadingBlanksAreChoppedWithinTheScannedLines) {
  struct Case {
    const char* name;
    int blankLine;  // 1-based line that gets two leading blanks
    bool chopped;
  };
  const Case cases[] = {{"fig.cr2", 3, true},
                        {"fig.cr2", 100, true},
                        {"fig.cr2", 101, false},
                        {"pose.pz2", 20, true},
                        {"pose.pz2", 21, false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " line " + std::to_string(c.blankLine));
    WorkspaceFixture w;
    std::vector<std::string> lines{"{", "version", "\t{", "\tnumber 4.01", "\t}"};
    while (lines.size() < 120) lines.push_back("\tfiller " + std::to_string(lines.size()));
    lines[c.blankLine - 1] = "  x";
    lines.push_back("figure");
    lines.push_back("\t{");
    lines.push_back("\t}");
    auto file = w.t.files() / c.name;
    writeFile(file, test::crlf(lines));
    w.open(file, {test::kNoBodyParts, test::kNoSkin});
    std::string text = readFile(file);
    EXPECT_EQ(text.find("  x") == std::string::npos, c.chopped);
    if (c.chopped) {
      EXPECT_NE(text.find("\r\n x\r\n"), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(w.t->currentDir / "Chop.doc"));
  }
}

TEST(WorkspaceOpen, RefusedRepairStopsAFigureButNotAScene) {
  WorkspaceFixture w;
  auto lfOnly = [&](const std::string& name) {
    auto file = w.t.files() / name;
    writeFile(file,
              "{\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile :Runtime:Geometries:Tolv:ava.obj\n}\n");
    return file;
  };
  auto sorry =
      std::make_pair(std::string("Sorry!"), std::string("Tolvane may not be able to process this file..."));
  auto cr2 = lfOnly("lf.cr2");
  std::string before = readFile(cr2);
  w.t.services.dialog(cr2.string());
  w.t.services.expect(sorry.first, sorry.second, ui::Answer::Cancel);
  fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click);
  EXPECT_EQ(w.t.services.pending(), 0u);
  EXPECT_TRUE(w.form().LabelFileName.caption().empty());
  EXPECT_EQ(w.form().OpenRefused, 0);
  EXPECT_EQ(readFile(cr2), before);

  // The scene goes on unrepaired: read as one long line it has no part to list.
  auto pz3 = lfOnly("lf.pz3");
  w.t.services.dialog(pz3.string());
  w.t.services.expect(sorry.first, sorry.second, ui::Answer::Cancel);
  w.t.services.expect(test::kNoBodyParts.first, test::kNoBodyParts.second);
  w.t.services.expect(test::kNoSkin.first, test::kNoSkin.second);
  fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click);
  EXPECT_EQ(w.t.services.pending(), 0u);
  EXPECT_EQ(w.form().LabelFileNameForEditor.caption(), pz3.string());
  EXPECT_EQ(readFile(pz3), before);
}

TEST(WorkspaceOpen, BadInputGivesAClearErrorAndChangesNoFile) {
  struct Case {
    const char* name;
    std::string bytes;
    int error;
  };
  std::string binary(
      "\x7f"
      "ELF\r\n\x01\x02\x00\x00,\xff\xfe\r\n",
      16);
  const Case cases[] = {
      {"binary.cr2", binary, 62},
      {"nofigureres.cr2", test::crlf({"{", "actor BODY:1", "\t{", "\t", "\t}", "}"}), 62},
      {"missinggeometry.cr2",
       test::crlf({"{", "figureResFile :Runtime:Geometries:Nope:x.obj", "actor BODY:1", "}"}), 76},
      {"vanished.cr2", "", 53},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    WorkspaceFixture w;
    auto file = w.t.files() / c.name;
    if (c.error != 53) writeFile(file, c.bytes);
    w.open(file, {runTimeError(c.error)});
    if (c.error != 53) {
      EXPECT_EQ(readFile(file), c.bytes);
    }
    EXPECT_FALSE(w.form().busy());
  }
}

TEST(WorkspaceOpen, ObjAndMtlPages) {
  WorkspaceFixture w;
  auto obj = w.poser / "Runtime/Geometries/Tolv/ava.obj";
  w.open(w.lib("Character/Tolv/Ava.cr2"), {test::kMoreThanOneMap});
  w.open(obj);
  ui::Opening& f = w.form();
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
  writeFile(mtl, test::crlf({"newmtl skin", "Kd 1 1 1"}));
  w.open(mtl);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), mtl.string());
}

TEST(WorkspaceOpen, SourcePane) {
  WorkspaceFixture w;
  w.t.services.expect("Information", "Click this button to open a source file.");
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::RightClick);
  w.t.services.expect("Note!", "Open a destination file first.");
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::Click);

  auto ava = w.lib("Character/Tolv/Ava.cr2");
  w.open(ava, {test::kMoreThanOneMap});
  w.t.services.dialog(w.lib("Scene/Tolv/Duet.pz3").string());
  w.t.services.expect("Error!", "CR2 files only!");
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::Click);

  auto other = w.t.files() / "Other" / "Ava2.cr2";
  std::filesystem::create_directories(other.parent_path());
  std::filesystem::copy_file(ava, other);
  ui::Opening& f = w.form();
  f.PictureTrash.setBackColor(ui::kToolOn);
  f.PictureBrktsOK.setVisible(true);
  f.MenuFile.setEnabled(false);
  w.t.services.dialog(other.string());
  fireEvent(*w.t, "Opening", "LabelOpenSource", EventKind::Click);
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
}

TEST(WorkspaceOpen, DroppedFilesLoadAsFromTheCommandLine) {
  WorkspaceFixture w;
  auto ava = w.lib("Character/Tolv/Ava.cr2");
  EventArgs drop;
  drop.files = {ava.string()};
  w.t.services.expect(test::kMoreThanOneMap.first, test::kMoreThanOneMap.second);
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
}  // namespace tolvane
