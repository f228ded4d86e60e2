#include "library/converters.h"

#include <gtest/gtest.h>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

struct ConvertersTest : ::testing::Test {
  void click(const std::string& menu) { fireEvent(*t, "Opening", menu, EventKind::Click); }
  std::filesystem::path file(const std::string& name, const std::vector<std::string>& lines) {
    auto path = t.files() / name;
    writeFile(path, crlf(lines));
    return path;
  }
  TestProgram t;
};

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
  t->opening.LabelFileNameForEditor.setCaption(scene.string());
  std::string output = (t.files() / "my.").string() + "mtl";  // the first dot decides
  t.services.expect("Note!", "New MTL file saved as " + output);
  click("MenuMakeMTL");
  EXPECT_EQ(readFile(output), crlf({"newmtl skin", "Kd 1 1 1 1", "map_Bump b.bum"}));
  EXPECT_FALSE(std::filesystem::exists(t.work() / "mtl.txt"));

  t->opening.LabelFileNameForEditor.setCaption((t.files() / "fig.cr2").string());
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

}  // namespace
}  // namespace tolvane::test
