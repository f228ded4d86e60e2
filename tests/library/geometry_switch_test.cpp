#include "library/geometry_switch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "test_support.h"

namespace tolvane::test {
namespace {

const Lines kChest = {"actor chest:1", "\t{", "\tchannels", "\t\t{", "\t\ttargetGeom Round", "\t\t\t{",
                      "\t\t\tmin 0", "\t\t\tmax 1", "\t\t\ta", "\t\t\tb", "\t\t\tc", "\t\t\td", "\t\t\te",
                      "\t\t\tf", "\t\t\tg", "\t\t\t}", "\t\t}", "\t}", "}"};
Lines withChest(Lines lines) {
  lines.insert(lines.end(), kChest.begin(), kChest.end());
  return lines;
}
const Lines kFigure = withChest({"{", "actor hip:1", "\t{", "\tname hip", "\tparent BODY:1", "\tchannels", "\t\t{",
                                 "\t\ttwistY twisty", "\t\t\t{", "\t\t\t}", "\t\t}", "\t}"});

struct GeomSwitchTest : ::testing::Test, ToolBench {
  GeomSwitchTest() {
    std::filesystem::create_directories(poser / "Runtime" / "Geometries" / "Alt");
    poserAt(poser);
  }
  void run(const std::filesystem::path& figure, const std::string& entry, const std::string& obj) {
    open(figure);
    t->opening.ListActors.setItems({" ", "    hip:1 * 2"});
    click("menuGeomSwitch");
    ui::ListBox& list = t->opening.ListAltGeomActors;
    list.setListIndex(list.indexOf(entry));
    t.services.dialog(obj);
    t.services.expect("Note!", "New CR2 saved as " + (t.work() / "AltGeom.cr2").string() +
                                   ", move or rename before doing another.");
    fire("Opening", "ListAltGeomActors", EventKind::DblClick);
  }
  std::filesystem::path poser = t.dir.path() / "poser";
};

TEST_F(GeomSwitchTest, FirstAlternateAddsItsBlockAndTheDialASecondMovesTheMaximum) {
  auto figure = file("fig.cr2", kFigure);
  std::string obj = (poser / "Runtime" / "Geometries" / "Alt" / "long.obj").string();
  run(figure, "    hip:1 * 2", obj);
  std::string relative = obj.substr(obj.find("Geometries") + 11);
  std::replace(relative.begin(), relative.end(), '/', '\\');
  Lines first = {"{", "actor hip:1", "\t{", "\tname hip", "\tparent BODY:1", "\talternateGeom hip_1", "\t{",
                 "\t\tname hip_1", "\t\tobjFile 1001 Runtime\\Geometries\\" + relative, "\t}", "\tchannels",
                 "\t\t{", "\t\ttwistY twisty", "\t\t\t{", "\t\t\t}", "\t\tgeomChan hipGeom", "\t\t\t{",
                 "\t\t\tuniqueInterp", "\t\t\tname hip type", "\t\t\tinitValue 0", "\t\t\thidden 0",
                 "\t\t\tforceLimits 4", "\t\t\tmin 0", "\t\t\tmax 1", "\t\t\ttrackingScale 0.045", "\t\t\tkeys",
                 "\t\t\t\t{", "\t\t\t\tstatic 1", "\t\t\t\tk  0  0", "\t\t\t\t}", "\t\t\tinterpStyleLocked 1",
                 "\t\t\tstaticValue 0", "\t\t\t}", "\t\t}", "\t}"};
  EXPECT_EQ(readFile(t.work() / "AltGeom.cr2"), crlf(withChest(first)));
  EXPECT_EQ(t->opening.ListAltGeomActors.listCount(), 0);

  // The result of the first run, run again: a second block, and the dial's maximum
  // becomes 2; the next part's keeps its 1.
  auto again = t.files() / "again.cr2";
  std::filesystem::copy_file(t.work() / "AltGeom.cr2", again);
  run(again, "    hip:1 * 2", obj);
  std::string second = readFile(t.work() / "AltGeom.cr2");
  EXPECT_NE(second.find("\talternateGeom hip_2\r\n"), std::string::npos);
  EXPECT_NE(second.find("\t\tobjFile 1002 "), std::string::npos);
  EXPECT_NE(second.find("\t\t\tmax 2\r\n"), std::string::npos);
  EXPECT_GT(second.find("\t\t\tmax 1\r\n"), second.find("actor chest:1"));
  EXPECT_LT(second.find("\t\t\tmax 2\r\n"), second.find("actor chest:1"));
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(GeomSwitchTest, RefusalsAndACancelLeaveNoResult) {
  open(t.files() / "pose.pz2");
  t.services.expect("Error!", "CR2 or PP2 files only!");
  click("menuGeomSwitch");

  open(file("fig.cr2", kFigure));
  t->opening.ListActors.setItems({"    hip:1 * 2", "    "});
  click("menuGeomSwitch");
  t->opening.ListAltGeomActors.setListIndex(1);  // the separator is no choice
  fire("Opening", "ListAltGeomActors", EventKind::DblClick);
  t->opening.ListAltGeomActors.setListIndex(0);
  t.services.cancelDialog();
  fire("Opening", "ListAltGeomActors", EventKind::DblClick);
  EXPECT_FALSE(std::filesystem::exists(t.work() / "AltGeom.cr2"));
  EXPECT_EQ(t->opening.ListAltGeomActors.listCount(), 0);
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
