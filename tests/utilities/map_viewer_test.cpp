#include "utilities/map_viewer.h"

#include <gtest/gtest.h>

#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

using utilities::mapPathFromText;

TEST(MapViewer, MapTextBecomesAPath) {
  const std::pair<const char*, const char*> cases[] = {
      {"\":Runtime:textures:Fig:skin.jpg\"", "/P/Runtime\\textures\\Fig\\skin.jpg"},
      {":Runtime:textures:skin.jpg", "/P/\\Runtime\\textures\\skin.jpg"},  // no drive: an empty folder first
      {"Runtime:a.bmp", "/P/Runtime\\a.bmp"},
      {"/home/me/maps/skin.bmp", "/home/me/maps/skin.bmp"},
      {"NO_MAP", "NO_MAP"},
      {"\"C:\\maps\\skin.bmp\"", "\"C:\\maps\\skin.bmp\""},
  };
  for (const auto& c : cases) EXPECT_EQ(mapPathFromText(c.first, "/P/"), c.second) << c.first;
}

// A 3 x 2 bitmap: the header of a 24-bit BMP is all the viewer reads.
std::string bitmap() {
  std::string b = "BM" + std::string(52, '\0');
  b[18] = 3;
  b[22] = 2;
  return b;
}

TEST(MapViewer, ClicksFromTheMainForm) {
  struct Case {
    const char* what;
    std::string mainTex;
    std::string firstMap;               // ListAllTexMaps' first entry, if any
    std::vector<ui::ScriptedAnswer> answers;
    bool shown;                         // FormViewer comes up
    std::string mapFile;                // what it was given, relative to the files folder
    int width;
  };
  using A = ui::ScriptedAnswer;
  const Case cases[] = {
      {"a Poser path", "\":Runtime:textures:skin.bmp\"", "", {}, true, "Poser/Runtime\\textures\\skin.bmp", 3},
      {"the texture list wins", "\":Runtime:textures:none.bmp\"", "\":Runtime:textures:skin.bmp\"", {}, true,
       "Poser/Runtime\\textures\\skin.bmp", 3},
      {"a missing map", "\":Runtime:textures:none.bmp\"", "",
       {A::message("Note!", "Map not present!", ui::Answer::OK)}, true, "Poser/Runtime\\textures\\none.bmp", 0},
      {"no map, declined", "NO_MAP", "",
       {A::message("Note!", "There is no map listed in the CR2.  Continue anyway?", ui::Answer::No)}, false, "", 0},
      {"a default map, located", "Default P4 Map", "",
       {A::message("Note!", "Please locate the default map.", ui::Answer::Yes), A::dialog("@skin.bmp")}, true,
       "skin.bmp", 3},
      {"a default map, a tif", "Default P4 Map", "",
       {A::message("Note!", "Please locate the default map.", ui::Answer::Yes), A::dialog("@skin.tif"),
        A::message("Note!", "Can't display tif's yet, sorry!", ui::Answer::OK)},
       false, "", 0},
      {"no map, a png", "NO_MAP", "",
       {A::message("Note!", "There is no map listed in the CR2.  Continue anyway?", ui::Answer::Yes),
        A::dialog("@skin.png"), A::message("Note!", "Can't display png's yet, sorry!", ui::Answer::OK)},
       false, "", 0},
      {"a text file is no picture", "@notes.txt", "", {A::message("Note!", "Map not present!", ui::Answer::OK)},
       true, "notes.txt", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TestProgram t;
    std::string files = t.files().string() + "/";
    auto at = [&files](std::string s) { return s.rfind('@', 0) == 0 ? files + s.substr(1) : s; };
    t.settings.save(kAppName, "Startup", "PLoc", files + "Poser/");
    writeFile(t.files() / "Poser" / "Runtime" / "textures" / "skin.bmp", bitmap());
    writeFile(t.files() / "skin.bmp", bitmap());
    writeFile(t.files() / "notes.txt", "not a picture");
    t->opening.TextMainTex.setText(at(c.mainTex));
    if (!c.firstMap.empty()) t->opening.ListAllTexMaps.addItem(c.firstMap);
    for (ui::ScriptedAnswer a : c.answers) {
      if (a.kind == ui::ScriptedAnswer::Kind::Dialog) a.value = at(a.value);
      t.services.queue(a);
    }
    t->opening.OptionChannelRename.setVisible(true);
    fireEvent(*t, "Opening", "PictureMapViewer", EventKind::Click);
    EXPECT_EQ(t.services.pending(), 0u);
    EXPECT_EQ(t->formViewer.visible(), c.shown);
    EXPECT_EQ(t->opening.OptionChannelRename.visible(), !c.shown);
    if (c.shown) {
      EXPECT_EQ(t->formViewer.MapFileName, files + c.mapFile);
    }
    EXPECT_EQ(t->formViewer.PictureWidth, c.width);
  }
}

TEST(MapViewer, RightClickExplains) {
  TestProgram t;
  t.services.expect("Info", "Click this to view a map.");
  fireEvent(*t, "Opening", "PictureMapViewer", EventKind::RightClick);
  EXPECT_EQ(t.services.pending(), 0u);
  EXPECT_FALSE(t->formViewer.visible());
}

}  // namespace
}  // namespace tolvane::test
