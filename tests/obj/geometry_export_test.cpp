#include <gtest/gtest.h>

#include "obj/mat_coord.h"
#include "obj/obj_extract.h"
#include <cerrno>

#include "fault_walk.h"
#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// A prop file with two embedded meshes; the second's faces number from 1 again.
const Lines kProp = {"{",
                     "version",
                     "\t{",
                     "\tnumber 4",
                     "\t}",
                     "actor BODY:1",
                     "\t{",
                     "\tstorageOffset 0 0 0",
                     "\t}",
                     "actor hip:1",
                     "\t{",
                     "\tstorageOffset 0 0 0",
                     "\tgeomCustom",
                     "\t\t{",
                     "\t\tnumbVerts 3",
                     "\t\tv 0 0 0",
                     "\t\tv 1 0 0",
                     "\t\tv 0 1 0",
                     "\t\tf 1 2 3",
                     "\t\t}",
                     "\t}",
                     "actor head:1",
                     "\t{",
                     "\tstorageOffset 0 0 0",
                     "\tgeomCustom",
                     "\t\t{",
                     "\t\tv 0 0 1",
                     "\t\tv 1 0 1",
                     "\t\tv 0 1 1",
                     "\t\tf 1 2 3",
                     "\t\t}",
                     "\t}",
                     "actor hip:1",
                     "\t{",
                     "\tname hip",
                     "\t}",
                     "}"};

struct ExportTest : ::testing::Test {
  ExportTest() {
    poser = t.dir.path() / "Poser";
    fs::create_directories(poser);
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
    figure = t.files() / "fig.cr2";
    writeFile(figure, crlf(kProp));
    t->opening.LabelFileNameForEditor.setCaption(figure.string());
  }
  void fire(const std::string& control, EventKind kind = EventKind::Click) {
    fireEvent(*t, "Opening", control, kind);
  }
  TestProgram t;
  fs::path poser, figure;
};

TEST_F(ExportTest, EmbeddedMeshesBecomeObjFiles) {
  t.services.expect("Note!",
                    "Would you like to export the embedded geometry to a new OBJ file? (Your original file will not be "
                    "harmed.)",
                    ui::Answer::Yes);
  fire("PictureOBJExtract");
  ui::ListBox& list = t->opening.ListOBJExtract;
  EXPECT_EQ(list.items(), (Lines{"actor hip:1", "actor head:1", "DONE"}));
  EXPECT_TRUE(t->opening.OptionOneObjFile.visible());

  // One file: both meshes one after the other, the faces as they stand.
  t->opening.OptionOneObjFile.setValue(true);
  list.setSelected(0, true);
  list.setSelected(1, true);
  list.setListIndex(2);
  std::string one = (t.files() / "fig.obj").string();
  t.services.expect("ALERT!", "If you have a file called " + one + " it will be overwritten!", ui::Answer::OK);
  fire("ListOBJExtract");
  EXPECT_EQ(readFile(one), crlf({"v 0 0 0", "v 1 0 0", "v 0 1 0", "f 1 2 3", "v 0 0 1", "v 1 0 1", "v 0 1 1",
                                 "f 1 2 3"}));
  EXPECT_FALSE(list.visible());

  // One file per part, into the current directory; a cancel ends before the second.
  t->opening.OptionSepObjFiles.setValue(true);
  list.setVisible(true);
  list.setListIndex(2);
  t.services.expect("ALERT!", "If you have a file called actor hip.obj it will be overwritten!", ui::Answer::OK);
  t.services.expect("ALERT!", "If you have a file called actor head.obj it will be overwritten!",
                    ui::Answer::Cancel);
  fire("ListOBJExtract");
  EXPECT_EQ(readFile(t->currentDir / "actor hip.obj"), crlf({"v 0 0 0", "v 1 0 0", "v 0 1 0", "f 1 2 3"}));
  EXPECT_FALSE(fs::exists(t->currentDir / "actor head.obj"));
  EXPECT_EQ(readFile(figure), crlf(kProp));
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(ExportTest, NewFileNamesTheExternalObj) {
  std::string newName = (t.files() / "fignew.cr2").string();
  std::string objName = (t.files() / "fignew.obj").string();
  t.services.expect("ALERT!", "If you have a file called " + newName + " it will be overwritten!", ui::Answer::OK);
  t.services.expect("ALERT!", "If you have a file called " + objName + " it will be overwritten!", ui::Answer::OK);
  fs::path obj = poser / "Runtime" / "Geometries" / "fig" / "fignew.obj";
  t.services.expect("Note!", "New CR2 saved as " + newName +
                                 ", you may place it where you wish in the Library.  The OBJ is located as " +
                                 obj.string());
  fire("menuNewCR2ExtOBJ");
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_EQ(readFile(obj), crlf({"v 0 0 0", "v 1 0 0", "v 0 1 0", "f 1 2 3", "v 0 0 1", "v 1 0 1", "v 0 1 1",
                                 "f 1 2 3"}));
  const Lines expected = {"{",
                          "version",
                          "\t{",
                          "\tnumber 4",
                          "\t}",
                          "figureResFile :Runtime:Geometries:fig:fignew.obj",
                          "actor BODY:1",
                          "\t{",
                          "\tstorageOffset 0 0 0",
                          "\t}",
                          "actor hip:1",
                          "\t{",
                          "\tstorageOffset 0 0 0",
                          "\t\tgeomHandlerGeom 13 hip",
                          "\t}",
                          "actor head:1",
                          "\t{",
                          "\tstorageOffset 0 0 0",
                          "\t\tgeomHandlerGeom 13 head",
                          "\t}",
                          "actor hip:1",
                          "\t{",
                          "\tname hip",
                          "\t}",
                          "}"};
  EXPECT_EQ(readFile(newName), crlf(expected));
  EXPECT_EQ(readFile(figure), crlf(kProp));
}

TEST_F(ExportTest, RefusalsWriteNothing) {
  writeFile(figure, crlf({"{", "actor hip:1", "\t{", "\t}", "}"}));
  t.services.expect("Error!", "There is no embedded geometry in this file!");
  fire("menuNewCR2ExtOBJ");
  t.services.expect("Information", "Click this to export the geometry embedded in this file, as a new OBJ file.");
  fire("PictureOBJExtract", EventKind::RightClick);
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_FALSE(fs::exists(poser / "Runtime"));
  EXPECT_FALSE(fs::exists(t.files() / "fignew.cr2"));
}

// The Material Coordinator: a figure and its OBJ, their material lists, the notes and
// the file saved through Save As.
const Lines kFigure = {"{",        "figureResFile :Runtime:Geometries:fig.obj",
                       "actor hip:1", "\t{", "\t}", "figure", "\t{", "\tweld hip chest",
                       "\tmaterial skin", "\t\t{", "\t\tKdColor 1 1 1 1", "\t\t}",
                       "\tmaterial old", "\t\t{", "\t\tKdColor 0 0 0 1", "\t\t}",
                       "\tmaterial Preview", "\t\t{", "\t\t}", "\tdisplayMode USEPARENT", "\t}", "}"};

TEST_F(ExportTest, MaterialsAreBroughtInLineWithTheObj) {
  writeFile(figure, crlf(kFigure));
  writeFile(poser / "Runtime" / "Geometries" / "fig.obj",
            crlf({"v 0 0 0", "usemtl skin", "f 1 1 1", "usemtl eyes", "usemtl eyes", "usemtl Preview"}));
  t.services.expect("Note!", "The materials on the left were not listed in the OBJ and were removed from the CR2.");
  t.services.expect("Note!", "The materials in the center list were not listed in the CR2 and were added to the CR2.");
  fs::path saved = t.files() / "coordinated.cr2";
  t.services.dialog(saved.string());
  fire("MenuCoordMat");
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_EQ(t->formMatCoord.caption(), "Material Coordinator");
  EXPECT_EQ(t->formMatCoord.ListMatRemoved.items(), Lines{"old"});
  EXPECT_EQ(t->formMatCoord.ListMatAdded.items(), Lines{"eyes"});
  Lines expected(kFigure.begin(), kFigure.begin() + 8);
  for (const std::string& l : obj::defaultMaterialBlock("eyes", "\t")) expected.push_back(l);
  expected.insert(expected.end(), kFigure.begin() + 8, kFigure.begin() + 12);
  expected.insert(expected.end(), kFigure.begin() + 16, kFigure.end());
  EXPECT_EQ(readFile(saved), crlf(expected));
  EXPECT_EQ(t->opening.LabelFileNameForEditor.caption(), saved.string());
  EXPECT_EQ(readFile(figure), crlf(kFigure));
  EXPECT_EQ(obj::defaultMaterialBlock("x", "").size(), 20u);
  EXPECT_EQ(obj::defaultMaterialBlock("x", "")[4], "\tKsColor 0.156863 0.129412 0.0980392 1");
}

TEST_F(ExportTest, MatchingMaterialsAndOtherFiles) {
  Lines same = kFigure;
  same.erase(same.begin() + 12, same.begin() + 16);  // no "old"
  writeFile(figure, crlf(same));
  writeFile(poser / "Runtime" / "Geometries" / "fig.obj", crlf({"usemtl skin", "usemtl skin"}));
  t.services.expect("Note!", "There are no extra materials in the CR2.");
  t.services.cancelDialog();
  fire("MenuCoordMat");
  EXPECT_EQ(readFile(t.work() / "CR2.tmp"), crlf(same));
  t->opening.LabelFileNameForEditor.setCaption((t.files() / "fig.pz2").string());
  t.services.expect("Error!", "CR2files only!");
  fire("MenuCoordMat");
  EXPECT_EQ(t.services.pending(), 0u);
}

// Every disk operation of the two writers fails in turn: the figure, the new library
// file, the OBJ and the saved result are whole or absent, and the tool works again.
struct Writers {
  Writers() {
    poser = t.dir.path() / "user" / "Poser";
    files = t.dir.path() / "user" / "figs";
    std::filesystem::create_directories(poser / "Runtime" / "Geometries");
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
    t->currentDir = files;
  }
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.dir.path() / "user"; }
  TestProgram t;
  std::filesystem::path poser, files;
};

TEST(GeometryExportFaults, WritersSurviveAFailingDisk) {
  auto prepareProp = [](Writers& w) {
    writeFile(w.files / "fig.cr2", crlf(kProp));
    w.t->opening.LabelFileNameForEditor.setCaption((w.files / "fig.cr2").string());
  };
  auto externalObj = [](Writers& w) {
    for (int i = 0; i < 3; ++i) w.t.services.answer(ui::Answer::OK);
    fireEvent(*w.t, "Opening", "menuNewCR2ExtOBJ", EventKind::Click);
  };
  auto prepareFigure = [](Writers& w) {
    writeFile(w.files / "fig.cr2", crlf(kFigure));
    writeFile(w.poser / "Runtime" / "Geometries" / "fig.obj", crlf({"usemtl skin", "usemtl eyes"}));
    w.t->opening.LabelFileNameForEditor.setCaption((w.files / "fig.cr2").string());
  };
  auto coordinate = [](Writers& w) {
    w.t.services.answer(ui::Answer::OK);
    w.t.services.answer(ui::Answer::OK);
    w.t.services.dialog((w.files / "fig.cr2").string());
    fireEvent(*w.t, "Opening", "MenuCoordMat", EventKind::Click);
  };
  walkFaults<Writers>(ENOSPC, externalObj, prepareProp);
  walkFaults<Writers>(EIO, coordinate, prepareFigure);
}

}  // namespace
}  // namespace tolvane::test
