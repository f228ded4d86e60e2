// The workbench's mesh tools through their handlers: the mirror's text flips, the merge
// of a secondary mesh with its offsets, the UV template and its bitmap, UVNew.obj, and
// the lopper by box and by colour.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>

#include "fault_walk.h"
#include "obj_fixture.h"
#include "obj/obj_load.h"
#include "text/scratch_file.h"

namespace tolvane::test {
namespace {

using obj::colourOfItem;
using ui::Answer;
namespace fs = std::filesystem;

const Lines kModel = {"# two groups",     "mtllib m.mtl",   "v 1 2 3",       "v -1 2 3",
                      "v 0 -2 0.5",       "v 0.25 0.5 -3",  "vt 0 0",        "vt 1 0",
                      "vt 1 1",           "vn 0 0 1",       "g left",        "usemtl skin",
                      "f 1/1/1 2/2/1 3/3/1", "g right",      "usemtl skin",   "f 2/2 3/3 4/1"};

class ObjToolsTest : public ObjTest {
 protected:
  void loadModel(const Lines& lines = kModel) {
    obj = writeObj("model.obj", lines);
    load(obj);
    ASSERT_TRUE(f.loaded) << lastMessage();
  }
  void mirror(bool x, bool y, bool z, const std::string& saveAs) {
    services.expect("X", "Mirror X translations?", x ? Answer::Yes : Answer::No);
    services.expect("Y", "Mirror Y translations? This may have unexpected results, be sure to back up.",
                    y ? Answer::Yes : Answer::No);
    services.expect("Z", "Mirror Z translations? This may have unexpected results also...",
                    z ? Answer::Yes : Answer::No);
    services.expect("Note!", obj + " has been mirrored. Remember to delete the RSR file, or changes will not take "
                                   "effect. You may want to rename groups that have Left and Right in their names.  "
                                   "The mesh will now be displayed, after saving.");
    if (saveAs.empty())
      services.cancelDialog();
    else
      services.dialog(saveAs);
    fire("LabelMirror", EventKind::Click);
  }
  std::string obj;
};

TEST_F(ObjToolsTest, MirrorFlipsTheVertexTextAsAnswered) {
  struct Row {
    bool x, y, z;
    Lines vertices;
  };
  const std::vector<Row> rows = {
      {true, false, false, {"v -1 2 3", "v 1 2 3", "v -0 -2 0.5", "v -0.25 0.5 -3"}},
      // A negative y keeps the old coordinates at the head: the line is garbled.
      {false, true, false, {"1 -2 3", "-1 -2 3", "0 -2 0.52 -2 0.5", "0.25 -0.5 -3"}},
      {false, false, true, {"1 2 -3", "-1 2 -3", "0 -2 -0.5", "0.25 0.5 3"}},
      {false, false, false, {"v 1 2 3", "v -1 2 3", "v 0 -2 0.5", "v 0.25 0.5 -3"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.x) + std::to_string(row.y) + std::to_string(row.z));
    loadModel();
    mirror(row.x, row.y, row.z, "");
    EXPECT_EQ(linesOf(work("Mirror.txt")), Lines({row.vertices[0] + "\r", row.vertices[1] + "\r",
                                                  row.vertices[2] + "\r", row.vertices[3] + "\r"}));
    Lines expected = kModel;
    for (int i = 0; i < 4; ++i) expected[2 + i] = row.vertices[i];
    EXPECT_EQ(readFile(work("MirrorOBJ.txt")), crlf(expected));
    EXPECT_EQ(services.pending(), 0u);
  }
}

TEST_F(ObjToolsTest, MirrorSavesAndLoadsTheMirroredMesh) {
  loadModel();
  std::string saved = (tp.files() / "mirrored.obj").string();
  mirror(true, false, false, saved);
  EXPECT_EQ(linesOf(saved)[2], "v -1 2 3\r");
  EXPECT_EQ(f.caption(), "OBJ Viewer " + saved);
  EXPECT_TRUE(f.loaded);
  EXPECT_FALSE(fs::exists(work("MirrorOBJ.txt")));
  EXPECT_EQ(readFile(obj), crlf(kModel));
}

TEST_F(ObjToolsTest, MergeNumbersTheSecondMeshAfterTheFirst) {
  loadModel();
  std::string second = writeObj("second.obj", {"v 0.5 0.5 0.5", "v -0.5 0 0", "v 0 1 0", "g extra",
                                               "f 1/1/1 2/2/2 3/3/3", "f 3 2 1"});
  services.dialog(second);
  fire("PictureAddOBJ", EventKind::Click);
  EXPECT_TRUE(f.PictureMerge.visible());
  EXPECT_TRUE(f.PictureAddObjFront.visible());
  services.expect("Note!", "The merged mesh is saved as " + work("MergeTest.obj").string());
  fire("PictureMerge", EventKind::Click);
  EXPECT_EQ(readFile(work("MergeTest.obj")),
            crlf({"v 1 2 3", "v -1 2 3", "v 0 -2 0.5", "v 0.25 0.5 -3", "v 0.5 .5 .5", "v -0.5 0 0",
                  "v 00 1 0", "vt 0 0", "vt 1 0", "vt 1 1", "g left", "usemtl skin", "f 1/1/1 2/2/1 3/3/1",
                  "g right", "usemtl skin", "f 2/2 3/3 4/1", "g extra", "f 5/4 6/5 7/6", "f 7/3 6/3 5/3"}));
  EXPECT_EQ(services.pending(), 0u);
}

TEST_F(ObjToolsTest, SecondaryMeshDraggedOnAStillPictureIsShiftedInTheMerge) {
  loadModel();
  std::string second = writeObj("second.obj", {"v 0 0 0", "f 1 1 1"});
  services.dialog(second);
  fire("PictureAddOBJ", EventKind::Click);
  EventArgs at;
  at.x = 100;
  at.y = 100;
  fire("PictureStore", EventKind::Press, at);
  at.x = 100 + 80 * f.xScale;  // one model unit across: w / 6 per scaled unit
  fire("PictureStore", EventKind::MouseMove, at);
  fire("PictureStore", EventKind::Release, at);
  EXPECT_NEAR(f.addShiftX, 1.0, 1e-9);
  services.answer(Answer::OK);
  fire("PictureMerge", EventKind::Click);
  EXPECT_EQ(linesOf(work("MergeTest.obj"))[4], "v 01 0 0\r");
}

// Faces ahead of the group lines, so that the walk by face count reaches them.
const Lines kFacesFirst = {"v 1 2 3", "v -1 2 3", "v 0 -2 0.5", "v 0.25 0.5 -3", "vt 0 0", "vt 1 0", "vt 1 1",
                           "f 1/1 2/2 3/3", "f 2/2 3/3 4/1", "g left"};

int darkPixels(const ui::Raster& r) {
  int dark = 0;
  for (int y = 0; y < r.height(); ++y)
    for (int x = 0; x < r.width(); ++x) dark += r.pixel(x, y) != ui::pixelOf(ui::kWhite);
  return dark;
}

TEST_F(ObjToolsTest, UVTemplateDrawsOpenOutlinesAndSavesASquareBitmap) {
  loadModel(kFacesFirst);
  fire("LabelUVMap", EventKind::Click);
  EXPECT_TRUE(f.PictureUVMap.visible());
  EXPECT_FALSE(f.PictureStore.visible());
  EXPECT_GT(darkPixels(f.PictureUVMap.raster()), 100);
  services.expect("Note", "No UV information in the file, or it has already been viewed.");
  fire("LabelUVMap", EventKind::Click);

  fire("LabelSaveMap", EventKind::Click);
  EXPECT_EQ(f.TextMapSize.text(), "Enter Map Size");
  fire("TextMapSize", EventKind::Enter);
  f.TextMapSize.setText("64");
  std::string bmp = (tp.files() / "model.bmp").string();
  services.expect("Note!", "UV Map Template saved as " + bmp);
  EventArgs enter;
  enter.keyCode = 13;
  fire("TextMapSize", EventKind::Key, enter);
  std::string bytes = readFile(bmp);
  ASSERT_GT(bytes.size(), 54u);
  EXPECT_EQ(bytes.substr(0, 2), "BM");
  EXPECT_EQ(static_cast<unsigned char>(bytes[18]), 64);
  EXPECT_EQ(static_cast<unsigned char>(bytes[22]), 64);
  EXPECT_FALSE(f.TextMapSize.visible());
  EXPECT_EQ(services.pending(), 0u);
}

// The walk stops after as many records as there are faces: a model with a group line
// ahead of its faces loses its last face.
TEST_F(ObjToolsTest, UVTemplateLeavesOutTheLastFaceOfAFileWithAGroup) {
  Lines head = {"v 0 0 0", "v 1 0 0", "v 1 1 0", "vt 0 0", "vt 0.5 0", "vt 0.5 0.5", "vt 0.9 0.9"};
  Lines grouped = head, plain = head;
  for (const char* l : {"g a", "f 1/1 2/2 3/3", "f 1/2 2/3 3/1", "f 1/4 2/1 3/2"}) grouped.push_back(l);
  for (const char* l : {"f 1/1 2/2 3/3", "f 1/2 2/3 3/1", "f 1/2 2/3 3/1"}) plain.push_back(l);
  loadModel(plain);
  fire("LabelUVMap", EventKind::Click);
  ui::Raster twoFaces = f.PictureUVMap.raster();
  loadModel(grouped);
  fire("LabelUVMap", EventKind::Click);
  EXPECT_GT(darkPixels(twoFaces), 0);
  EXPECT_TRUE(f.PictureUVMap.raster() == twoFaces);
}

TEST_F(ObjToolsTest, MakeUVGivesEveryVertexItsOwnTextureVertex) {
  Lines lines = kFacesFirst;
  lines.insert(lines.begin(), {"# made for a template", "mtllib m.mtl"});
  loadModel(lines);
  fire("LabelMakeUV", EventKind::Click);
  Lines result = linesOf(work("UVNew.obj"));
  ASSERT_EQ(result.size(), 13u);
  EXPECT_EQ(result[0], "# made for a template\r");
  EXPECT_EQ(result[1], "mtllib m.mtl\r");
  EXPECT_EQ(result[2], "v 1 2 3\r");
  for (int i = 6; i < 10; ++i) {
    EXPECT_EQ(result[i].substr(0, 3), "vt ");
    EXPECT_EQ(result[i].find('-'), std::string::npos);
  }
  EXPECT_EQ(result[10], "f 1/1 2/2 3/3\r");
  EXPECT_EQ(result[11], "f 2/2 3/3 4/4\r");
  EXPECT_EQ(result[12], "g left\r");
}

// The figure's texture with the scripted services, which have no image reader: a file
// that is there counts as shown, a tif is refused, a missing one is run-time error 53.
TEST_F(ObjToolsTest, FigureTextureIsShownRefusedOrMissingWithoutAnImageReader) {
  struct Case {
    const char* what;
    const char* texture;
    const char* title;  // of the one message, none when empty
    const char* text;   // its text, or the head of it
    bool shown;         // PictureUVMap up and PictureObjViewer2 hidden
  } cases[] = {
      {"a picture that is there", "skin.jpg", "", "", true},
      {"a tif", "skin.tif", "Error", "Can't work with tif files.", false},
      {"a missing picture", "gone.jpg", kAppName, "Run-time error '53':", true},
      {"an empty file", "empty.jpg", kAppName, "Run-time error '53':", true},
  };
  loadModel();
  fs::path textures = tp.files() / "Poser" / "Runtime" / "textures";
  tp.settings.save(kAppName, "Startup", "PLoc", (tp.files() / "Poser").string() + "/");
  writeFile(textures / "skin.jpg", "\xFF\xD8 picture bytes");
  writeFile(textures / "skin.tif", "II* picture bytes");
  writeFile(textures / "empty.jpg", "");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    f.PictureObjViewer2.setVisible(true);
    f.PictureUVMap.setVisible(false);
    services.clearRecords();
    tp->opening.TextMainTex.setText(c.texture);
    services.answerRunTimeErrors(true);
    if (std::string(c.title) == "Error") services.expect(c.title, c.text);
    fire("LabelViewCR2TexMap", EventKind::Click);
    if (*c.title == '\0') {
      EXPECT_TRUE(services.messages().empty()) << lastMessage();
      EXPECT_EQ(services.pictures(), std::vector<std::string>{(textures / c.texture).string()});
    } else {
      ASSERT_EQ(services.messages().size(), 1u);
      EXPECT_EQ(services.messages()[0].title, c.title);
      EXPECT_EQ(services.messages()[0].text.rfind(c.text, 0), 0u) << services.messages()[0].text;
    }
    EXPECT_EQ(f.PictureUVMap.visible(), c.shown);
    EXPECT_EQ(f.PictureObjViewer2.visible(), !c.shown);
  }
}

class LopperTest : public ObjToolsTest {
 protected:
  void SetUp() override { loadModel(); }
  ui::PicturePoint pointOf(int vertex) {
    const ui::ObjVertex& v = f.vertexTable[static_cast<std::size_t>(vertex)];
    double across = f.PictureStore.width() / 6.0;
    return {static_cast<int>(across * v.x * f.xScale + f.PictureStore.width() / 2.0),
            static_cast<int>(f.PictureStore.height() - v.y * f.yScale * f.yScale)};
  }
  void drag(int x1, int y1, int x2, int y2) {
    EventArgs a;
    a.x = x1;
    a.y = y1;
    fire("PictureStore", EventKind::Press, a);
    a.x = x2;
    a.y = y2;
    fire("PictureStore", EventKind::MouseMove, a);
    fire("PictureStore", EventKind::Release, a);
  }
};

TEST_F(LopperTest, ABoxRemovesTheFacesWithACornerInIt) {
  fire("PictureLop", EventKind::Click);
  ui::PicturePoint p = pointOf(4);  // a corner of the second face only
  services.expect("Alert!", "Do you want to remove the mesh in this box?", Answer::Yes);
  std::string saved = (tp.files() / "lopped.obj").string();
  services.dialog(saved);
  drag(p.x - 3, p.y - 3, p.x + 3, p.y + 3);
  EXPECT_EQ(readFile(saved), crlf({"v 1 2 3", "v -1 2 3", "v 0 -2 0.5", "v 0.25 0.5 -3", "vt 0 0", "vt 1 0",
                                   "vt 1 1", "g left", "usemtl skin", "f 1/1/1 2/2/1 3/3/1", "g right",
                                   "usemtl skin"}));
  EXPECT_EQ(services.pending(), 0u);
}

TEST_F(LopperTest, ABoxAroundNothingKeepsEveryFaceAndAnExistingFileIsAskedAbout) {
  fire("PictureLop", EventKind::Click);
  std::string saved = writeObj("lopped.obj", {"old"});
  services.expect("Alert!", "Do you want to remove the mesh in this box?", Answer::Yes);
  services.dialog(saved);
  services.expect("Note!", "File already exists. Overwrite?", Answer::No);
  drag(1, 1, 5, 5);
  EXPECT_EQ(readFile(saved), crlf({"old"}));
  EXPECT_TRUE(fs::exists(work("Lop.txt")));
  Lines lop = linesOf(work("Lop.txt"));
  EXPECT_EQ(lop.size(), 13u);  // everything but the comment, mtllib and normal
  EXPECT_EQ(lop.back(), "f 2/2 3/3 4/1\r");
}

TEST_F(LopperTest, AClickedColourRemovesItsGroupWhenLopModeEnds) {
  // Quads: the still pictures fill the polygon of a face's corners after the first.
  loadModel({"v 1 1 0", "v -1 1 0", "v -1 -1 0", "v 1 -1 0", "v 0 0 0", "g left", "f 5 1 2 3", "g right",
             "f 2/2 3/3 4/1 5"});
  fire("PictureLop", EventKind::Click);
  // The colour a click on the first group takes, within the 2% band.
  int r, g, b;
  colourOfItem(f.ListGroupColors.list(0), r, g, b);
  f.ListLop.addItem(std::to_string(static_cast<double>(r | (g << 8) | (b << 16)) * 1.01));
  ASSERT_EQ(f.ListLop.listCount(), 1);
  std::string saved = (tp.files() / "lopped.obj").string();
  services.dialog(saved);
  fire("PictureLop", EventKind::Click);
  std::string text = readFile(saved);
  EXPECT_EQ(text.find("f 5 1 2 3"), std::string::npos);
  EXPECT_NE(text.find("g left"), std::string::npos);

}

}  // namespace
}  // namespace tolvane::test

namespace tolvane::test {
namespace {

// Bad input: a secondary OBJ whose faces name vertices it does not have, and a lop
// that removes every face.
TEST_F(ObjToolsTest, BadSecondaryMeshIsReportedAndALopOfEverythingLeavesTheVertices) {
  loadModel();
  std::string second = writeObj("novertices.obj", {"vt 0 0", "f 1 2 3"});
  std::string before = readFile(second);
  services.dialog(second);
  services.answerRunTimeErrors(true);
  fire("PictureAddOBJ", EventKind::Click);
  EXPECT_EQ(services.runTimeErrorReports(), 1);
  EXPECT_FALSE(f.PictureMerge.visible());
  EXPECT_EQ(readFile(second), before);

  fire("PictureLop", EventKind::Click);
  services.expect("Alert!", "Do you want to remove the mesh in this box?", Answer::Yes);
  services.cancelDialog();
  EventArgs a;
  a.x = -5000;
  a.y = -5000;
  fire("PictureStore", EventKind::Press, a);
  a.x = 5000;
  a.y = 5000;
  fire("PictureStore", EventKind::Release, a);
  std::string lop = readFile(work("Lop.txt"));
  EXPECT_EQ(lop.find("\r\nf "), std::string::npos);
  EXPECT_NE(lop.find("v 0.25 0.5 -3\r\n"), std::string::npos);
  EXPECT_EQ(readFile(obj), crlf(kModel));
}

}  // namespace
}  // namespace tolvane::test

namespace tolvane::test {
namespace {

// Every disk operation of the mirror's and the lopper's saves fails in turn: the user's
// folder holds the OBJ as it was, and the saved file whole or not at all.
struct LoadedModel {
  LoadedModel() {
    obj = (t.files() / "model.obj").string();
    writeFile(obj, crlf(kModel));
    t->opening.OpenFilePath = obj;
    fireEvent(*t, "Opening", "PictureOBJView", EventKind::Click);
    fireEvent(*t, "FormOBJ", "LabelView", EventKind::Click);
  }
  TestProgram& program() { return t; }
  fs::path userFolder() { return t.files(); }
  void fire(const char* control, EventKind kind, const EventArgs& args = {}) {
    fireEvent(*t, "FormOBJ", control, kind, args);
  }
  TestProgram t;
  std::string obj;
};

TEST(ObjToolFaults, MirrorAndLopSaves) {
  // A mirror whose reload failed leaves the form half loaded, so the step loads first,
  // as the user would after the error.
  walkFaults<LoadedModel>(ENOSPC, [](LoadedModel& m) {
    m.t->formOBJ.setCaption(std::string(ui::kObjViewerCaption) + m.obj);
    m.t->opening.OpenFilePath = m.obj;
    m.fire("LabelView", EventKind::Click);
    for (int i = 0; i < 4; ++i) m.t.services.answer(i == 0 ? Answer::Yes : i < 3 ? Answer::No : Answer::OK);
    m.t.services.dialog((m.t.files() / "mirrored.obj").string());
    m.fire("LabelMirror", EventKind::Click);
  });
  walkFaults<LoadedModel>(ENOSPC, [](LoadedModel& m) {
    if (m.t->formOBJ.lopMode == 0) m.fire("PictureLop", EventKind::Click);
    m.t.services.answer(Answer::Yes);
    m.t.services.dialog((m.t.files() / "lopped.obj").string());
    EventArgs a;
    a.x = 1;
    a.y = 1;
    m.fire("PictureStore", EventKind::Press, a);
    a.x = 3;
    a.y = 3;
    m.fire("PictureStore", EventKind::Release, a);
  });
}

}  // namespace
}  // namespace tolvane::test
