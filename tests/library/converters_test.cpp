#include "library/converters.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace tolvane::test {
namespace {

struct ConvertersTest : ::testing::Test, ToolBench {};

TEST_F(ConvertersTest, MtlLinesByTheFieldsFirstTwoLetters) {
  const std::pair<const char*, const char*> cases[] = {
      {"KdColor 1 0.5 0 1", "Kd 1 0.5 0 1"},
      {"NsExponent 30", "Ns 30"},
      {"textureMap \":Runtime:textures:skin.jpg\"", "map_Kd :Runtime:textures:skin.jpg"},
      {"textureMap NO_MAP", ""},
      {"bumpMap C:\\b.bum", "map_Bump C:\\b.bum"},
      {"bumpStrength 1", ""},
      {"reflectionMap x.jpg", ""},
  };
  for (const auto& [field, line] : cases) EXPECT_EQ(library::mtlLine(field), line) << field;
}

TEST_F(ConvertersTest, MtlOfASceneBesideIt) {
  auto scene = file("my.scene.pz3", {"{", "actor BODY:1", "\t{", "\t}", "figure", "\t{", "\tmaterial skin", "\t\t{",
                                     "\t\tKdColor 1 1 1 1", "\t\ttextureMap NO_MAP", "\t\tbumpMap \"b.bum\"",
                                     "\t\t}", "\tdisplayMode USEPARENT", "\tmaterial after", "\t}", "}"});
  open(scene);
  std::string output = (t.files() / "my.").string() + "mtl";  // the first dot decides
  t.services.expect("Note!", "New MTL file saved as " + output);
  click("MenuMakeMTL");
  EXPECT_EQ(readFile(output), crlf({"newmtl skin", "Kd 1 1 1 1", "map_Bump b.bum"}));
  EXPECT_FALSE(std::filesystem::exists(t.work() / "mtl.txt"));

  open(t.files() / "fig.cr2");
  t.services.expect("Error!", "PZ3 files only!");
  click("MenuMakeMTL");
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(ConvertersTest, AviBackgroundAndItsRefusal) {
  auto scene = file("movie.pz3", {"{", "version", "\t{", "\tnumber 4.01", "\t}", "movieinfo", "\t{",
                                  "\tbgMovie \"C:\\m.avi\"", "\t}", "}"});
  t.services.dialog(scene.string());
  std::string output = (t.files() / "movie").string() + "-AVI.pp2";
  t.services.expect("Success!", "AVI background file created as " + output);
  click("MenuPZ3AVI");
  // The two lines behind "version" go; the scene's own closing brace stays.
  EXPECT_EQ(readFile(output), crlf({"{", "version", "\t}", "\tnumber 3.01", "\t}", "movieinfo", "\t{",
                                    "\tbgMovie \"C:\\m.avi\"", "\t}", "}"}));
  EXPECT_EQ(t.services.dialogs().back().title, "Open PZ3 File");

  t.services.dialog(file("fig.cr2", {"{"}).string());
  t.services.expect("Error!", "You must choose a PZ3 file.");
  click("MenuPZ3AVI");
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(ConvertersTest, CameraBlockPutBackAndItsFileDeleted) {
  auto scene = file("shot.pz3", {"{", "camera MAIN_CAMERA", "\t{", "\told", "\t}", "figureResFile :x", "}"});
  auto camera = file("shot.cam", {"camera MAIN_CAMERA", "\t{", "\tnew", "\t}"});
  t.services.dialog(scene.string());
  t.services.expect("Note!", "Camera info for " + scene.string() + " restored.");
  click("MenuP3P4Cam");
  EXPECT_EQ(readFile(scene),
            crlf({"{", "camera MAIN_CAMERA", "\t{", "\tnew", "\t}", "figureResFile :x", "}"}));
  EXPECT_FALSE(std::filesystem::exists(camera));
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(ConvertersTest, SceneToFigureKeepsTheFiguresAndPropsWithoutTheStage) {
  const std::vector<std::string> scene = {
      "{", "version", "\t{", "\tnumber 4.01", "\t}", "", "\tbgColor 1 1 1",
      "actor UNIVERSE", "\t{", "\tname UNIVERSE", "\t}",                       // the universe and 3 lines
      "movieinfo", "\t{", "\t}",                                                 // the movie to the figureRes line
      "figureResFile :ava.obj", "actor BODY:1", "\t{", "\t}",
      "prop GROUND", "\t{", "\t}", "light LIGHT_1", "\t{", "\t}", "camera MAIN_CAMERA", "\t{", "\t}",
      "prop ball_1", "\t{", "\t}",
      "camera AUX_CAMERA", "\t{", "\t}", "figureResFile :x.obj",                // a camera to the figureRes line
      "actor BODY:2", "\t{", "\t}", "doc", "\t{", "\tsetGeomHandlerOffset 0 0 0", "\tcolor 1", "\t}", "}"};
  struct Case {
    const char* name;
    std::vector<std::string> scene;
    std::vector<std::string> expected;  // empty: refused
  };
  std::vector<std::string> protectedLate = scene;
  protectedLate.insert(protectedLate.begin() + 17, "\tgeometry blV.obj");  // behind the first actor
  std::vector<std::string> protectedEarly = scene;
  protectedEarly.insert(protectedEarly.begin() + 6, "\tfigure blMilMan");
  const std::vector<std::string> expected = {"{", "version", "\t{", "\tnumber 4.01", "\t}", "\tbgColor 1 1 1",
                                             "figureResFile :ava.obj", "actor BODY:1", "\t{", "\t}",
                                             "prop ball_1", "\t{", "\t}", "actor BODY:2", "\t{", "\t}",
                                             "\tsetGeomHandlerOffset 0 0 0", "\tcolor 1"};
  std::vector<std::string> expectedLate = expected;
  expectedLate.insert(expectedLate.begin() + 9, "\tgeometry blV.obj");
  const Case cases[] = {
      {"a scene", scene, expected},
      {"a protected name behind the first actor", protectedLate, expectedLate},
      {"a protected figure", protectedEarly, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto path = file("duet.pz3", c.scene);
    open(path);
    auto output = t.files() / "duet.cr2";
    writeFile(output, "older figure");
    t.services.dialog(output.string());
    if (c.expected.empty())
      t.services.expect("Sorry!", "You can't convert Vicki or Mike!");
    click("MenuPZ3Cr2Conv");
    EXPECT_EQ(t.services.dialogs().back().title, "Name To Save As...");
    EXPECT_EQ(readFile(output), c.expected.empty() ? "older figure" : crlf(c.expected));
    EXPECT_EQ(readFile(path), crlf(c.scene));
    EXPECT_FALSE(std::filesystem::exists(t.work() / "PZ3.txt"));
  }
  t.services.cancelDialog();
  click("MenuPZ3Cr2Conv");
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
