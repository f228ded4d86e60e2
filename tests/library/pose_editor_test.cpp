#include "library/pose_editor.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace tolvane::test {
namespace {

// A part's real actor block, and a material block of a figure section or a material pose.
Lines actor(const std::string& name) { return {"actor " + name + ":1", "\t{", "\tname " + name, "\t}"}; }
Lines material(const std::string& name, const Lines& fields) {
  Lines block{"\tmaterial " + name, "\t\t{"};
  for (const std::string& f : fields) block.push_back("\t\t" + f);
  block.push_back("\t\t}");
  return block;
}

// A figure's head, its short actor entries with a prop among them, its real actor blocks
// and a figure section with four materials.
const Lines kHead = {"{", "version", "\t{", "\tnumber 4.01", "\t}", "figureResFile :x.obj", "actor BODY:1"};
const Lines kShort = {"\t{", "\tstorageOffset 0 0 0", "\t}",  "actor hip:1",  "\t{", "\tstorageOffset 0 0 0",
                      "\t}", "actor chest:1",         "\t{", "\tstorageOffset 0 0 0", "\t}", "prop ball:1",
                      "\t{", "\tstorageOffset 0 0 0", "\t}", "figureResFile :x.obj"};
const Lines kHip = actor("hip"), kChest = actor("chest");
const Lines kMaterials =
    join({{"figure", "\t{", "\tname    Figure 1"},
          material("skin", {"KdColor 1 0.5 0 1", "KaColor 0 0 0 1", "textureMap \"skin.jpg\"",
                            "transparencyMap \"t.jpg\""}),
          material("lips", {"KdColor 0.2 0.2 0.2 1", "KsColor 0 0 0 1", "textureMap NO_MAP"}),
          material("toplips", {"KdColor 0 0 1 1"}), material("Preview", {"KdColor 1 1 1 1"}),
          {"\tdisplayMode USEPARENT", "\t}", "}"}});
const Lines kMatHead = {"{", " ", "Version", "\t{", "\tNumber 4.01", "\t}", "figure", "{"};

struct PoseEditorTest : ::testing::Test, ToolBench {
  PoseEditorTest() { open(figure); }
  void choose(ui::ListBox& list, const std::string& entry) {
    list.setListIndex(list.indexOf(entry));
    fire("FormPZ2", list.name(), EventKind::DblClick);
  }
  ui::FormPZ2& f() { return t->formPZ2; }
  std::filesystem::path figure =
      file("fig.cr2", join({kHead, kShort, actor("BODY"), kHip, kChest, actor("head"), kMaterials}));
};

TEST_F(PoseEditorTest, PosesCutTheWantedActorsAndLoseTheOneBehindEach) {
  struct Case {
    const char* name;
    Lines wanted;
    Lines body;  // behind the seven head lines
  };
  Lines shortChest(kShort.begin() + 7, kShort.end());  // from "actor chest:1" to the figureResFile line
  const Case cases[] = {
      {"one actor, both its entries", {"hip"}, join({{kShort.begin() + 3, kShort.begin() + 7}, kHip})},
      {"chest directly behind hip is lost", {"hip", "chest"}, join({{kShort.begin() + 3, kShort.begin() + 7}, kHip})},
      {"a short entry runs to the next actor", {"chest", "head"}, join({shortChest, kChest})},
      {"an unknown name", {"foot"}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    click("MenuPoseFile");
    ASSERT_TRUE(f().visible());
    EXPECT_FALSE(f().LabelMAT.visible());
    EXPECT_EQ(f().ListActorsPZ2.items(), (Lines{"BODY", "hip", "chest", "head"}));
    for (const std::string& w : c.wanted) f().ListActorsWanted.addItem(w);
    auto output = t.files() / "figNew.pz2";
    t.services.expect("Note!", "New pose saved as " + output.string());
    fire("FormPZ2", "LabelDonePZ2");
    EXPECT_EQ(readFile(output), crlf(join({kHead, c.body, {"}"}})));
    EXPECT_FALSE(f().visible());
    EXPECT_EQ(f().ListActorsPZ2.listCount(), 0);
    EXPECT_EQ(f().SourcePath, "");
    EXPECT_FALSE(std::filesystem::exists(t.work() / "Pose.txt"));
  }
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(PoseEditorTest, SceneLeftoversDotsAndRefusals) {
  // A scene's figureResFile line, found by field read, stands behind the head lines.
  auto scene = t.files() / "my.scenes" / "duet.pz3";
  writeFile(scene, crlf(join({{"{", "version", "\t{", "\tnumber 4.01", "\t}", "actor UNIVERSE", "\t{", "\t}",
                               "\tfigureResFile :x.obj"},
                              kHip, kChest, {"figure ", "}"}})));
  writeFile(t.work() / "Pose.txt", crlf({"left over"}));
  open(scene);
  click("MenuPoseFile");
  EXPECT_EQ(f().ListActorsPZ2.items(), (Lines{"hip", "chest"}));
  choose(f().ListActorsPZ2, "hip");
  EXPECT_EQ(f().ListActorsWanted.items(), (Lines{"hip"}));
  EXPECT_EQ(f().ListActorsPZ2.items(), (Lines{"chest"}));
  std::string output = (t.files() / "my").string() + "New.pz2";  // the first dot of the path decides
  t.services.expect("Note!", "New pose saved as " + output);
  fire("FormPZ2", "LabelDonePZ2");
  EXPECT_EQ(readFile(output), crlf({"left over", "{", "version", "\t{", "\tnumber 4.01", "\t}", "actor UNIVERSE",
                                    "\t{", "figureResFile :x.obj", "actor hip:1", "\t{", "\tname hip", "\t}", "}"}));

  // Other kinds are refused and the form closes; Cancel empties it.
  open(t.files() / "wave.pz2");
  t.services.expect("Error!", "CR2 or PZ3 files only!");
  click("menuMatFile");
  EXPECT_FALSE(f().visible());
  EXPECT_FALSE(f().LabelMAT.visible());
  open(figure);
  click("MenuPoseFile");
  fire("FormPZ2", "LabelCancelPZ2");
  EXPECT_FALSE(f().visible());
  EXPECT_EQ(f().ListActorsPZ2.listCount(), 0);
  EXPECT_EQ(f().SourcePath, "");

  // A head shorter than seven lines runs off its end: a run-time error, nothing written.
  auto cut = t.files() / "cut.cr2";
  writeFile(cut, crlf({"{", "version"}));
  open(cut);
  click("MenuPoseFile");
  t.services.answerRunTimeErrors(true);
  fire("FormPZ2", "LabelDonePZ2");
  EXPECT_EQ(t.services.runTimeErrorReports(), 1);
  EXPECT_FALSE(std::filesystem::exists(t.files() / "cutNew.pz2"));
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(PoseEditorTest, MaterialFilesRewriteMapsAndColours) {
  t.settings.save(kAppName, "Startup", "PLoc", t.files().string() + "/");
  struct Case {
    const char* name;
    bool all, maps, noTrans, white;
    Lines wanted;
    Lines body;
  };
  const Lines skin = material(
      "skin", {"KdColor 1 0.5 0 1", "KaColor 0 0 0 1", "textureMap NO_MAP", "transparencyMap NO_MAP"});
  const Case cases[] = {
      // The colour list has no entry for Preview: its KdColor line takes the empty one.
      {"all, maps off",
       true, false, false, false, {},
       join({skin, material("lips", {"KdColor 0.2 0.2 0.2 1", "KsColor 0 0 0 1", "textureMap NO_MAP"}),
             material("toplips", {"KdColor 0 0 1 1"}), material("Preview", {"KdColor "})})},
      // A wanted name takes every material whose name ends in it.
      {"lips in white with maps",
       false, true, false, true, {"lips"},
       join({material("lips", {"KdColor 1 1 1 1", "KsColor 1 1 1 1", "textureMap NO_MAP"}),
             material("toplips", {"KdColor 1 1 1 1"})})},
      {"maps kept, transparency cut",
       false, true, true, false, {"skin"},
       material("skin",
                {"KdColor 1 0.5 0 1", "KaColor 0 0 0 1", "textureMap \"skin.jpg\"", "transparencyMap NO_MAP"})},
  };
  auto output = t.files() / "mat.pz2";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    click("menuMatFile");
    ASSERT_TRUE(f().LabelMAT.visible());
    EXPECT_TRUE(f().CheckIncludeMaps.visible());
    EXPECT_EQ(f().ListMaterialsMAT.items(), (Lines{"skin", "lips", "toplips"}));
    EXPECT_EQ(f().ListMATColors.items(), (Lines{"1 0.5 0 1", "0.2 0.2 0.2 1", "0 0 1 1"}));
    EXPECT_EQ(f().ListActorsPZ2.items(), (Lines{"actor BODY:1", "actor hip:1", "actor chest:1", "actor BODY:1",
                                                "actor hip:1", "actor chest:1", "actor head:1"}));
    f().CheckAllMat.setValue(c.all);
    f().CheckIncludeMaps.setValue(c.maps);
    f().CheckNoTrans.setValue(c.noTrans);
    f().CheckSetToWhite.setValue(c.white);
    for (const std::string& w : c.wanted) choose(f().ListMaterialsMAT, w);
    t.services.dialog(output.string());
    fire("FormPZ2", "LabelDonePZ2");
    EXPECT_EQ(readFile(output), crlf(join({kMatHead, c.body, {"}", "}"}})));
    EXPECT_EQ(t.services.dialogs().back().filter, "PZ2(*.pz2)");
    EXPECT_EQ(t.services.dialogs().back().startFolder, t.files());
    EXPECT_FALSE(f().visible());
    EXPECT_FALSE(f().LabelMAT.visible());
    EXPECT_FALSE(f().CheckAllMat.value());
  }
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(PoseEditorTest, ColoursPickedByIndexDriftOnceAMaterialIsChosen) {
  click("menuMatFile");
  ui::ListBox& mats = f().ListMaterialsMAT;
  mats.setListIndex(0);
  fire("FormPZ2", "ListMaterialsMAT");
  EXPECT_EQ(f().ShapePresentColor.backColor(), 0x0080FFu);  // 1, 0.5, 0 times 256, at most 255
  t.services.queue(ui::ScriptedAnswer::colourAnswer(0x8000FF));  // red 255, green 0, blue 128
  fire("FormPZ2", "ListMaterialsMAT", EventKind::RightRelease);
  EXPECT_EQ(f().ListMATColors.list(0), "0.9960938 0 0.5 1");
  EXPECT_EQ(f().ShapeNewColor.backColor(), 0x8000FFu);
  choose(mats, "skin");
  // lips now stands at index 0: its colour goes to skin's entry.
  mats.setListIndex(0);
  t.services.queue(ui::ScriptedAnswer::colourAnswer(0x000000));
  fire("FormPZ2", "ListMaterialsMAT", EventKind::RightRelease);
  t.services.queue(ui::ScriptedAnswer::colourCancel());
  fire("FormPZ2", "ListMaterialsMAT", EventKind::RightRelease);
  EXPECT_EQ(f().ListMATColors.items(), (Lines{"0 0 0 1", "0.2 0.2 0.2 1", "0 0 1 1"}));
  EXPECT_TRUE(f().ColorsChanged);

  t.services.dialog((t.files() / "m.pz2").string());
  fire("FormPZ2", "LabelDonePZ2");
  EXPECT_EQ(readFile(t.files() / "m.pz2"),
            crlf(join({kMatHead,
                       material("skin", {"KdColor 0 0 0 1", "KaColor 0 0 0 1", "textureMap NO_MAP",
                                         "transparencyMap NO_MAP"}),
                       {"}", "}"}})));

  const std::pair<int, const char*> components[] = {{255, "0.9960938"}, {128, "0.5"}, {0, "0"}, {1, "0.00390625"}};
  for (const auto& [value, text] : components) EXPECT_EQ(library::colourComponentText(value), text) << value;
}

TEST_F(PoseEditorTest, AdviceAndTheRefusalOfAnEmptyChoice) {
  click("menuMatFile");
  t.services.expect("Info",
                    "LEFT click and then RIGHT click the material you wish to set the color for. Be sure to change "
                    "colors BEFORE choosing the materials to save to the file.");
  fire("FormPZ2", "Frame1");
  t.services.expect("Info",
                    "LEFT click and then RIGHT click the material you wish to set the color for.  Be sure to change "
                    "colors BEFORE choosing the materials to save to the file.");
  fire("FormPZ2", "LabelChangeColor");
  f().CheckSetToWhite.setValue(true);
  t.services.expect("Note!", "Please uncheck Set Colors to White.");
  fire("FormPZ2", "LabelChangeColor");

  t.services.expect("Error!",
                    "No materials chosen.  Check off \"Include ALL Materials\", or choose at least one from the "
                    "list. DOUBLE CLICK to choose.");
  fire("FormPZ2", "LabelDonePZ2");
  EXPECT_TRUE(f().SaveFailed);
  EXPECT_TRUE(f().visible());
  EXPECT_TRUE(std::filesystem::exists(t.work() / "Mat.pz2"));
  EXPECT_TRUE(t.services.dialogs().empty());
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
