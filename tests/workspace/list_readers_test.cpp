#include "workspace/list_readers.h"

#include <gtest/gtest.h>

#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

TEST(ListReaders, FigureFillsEveryListAndShowsItsDetailsOnDemand) {
  WorkspaceFixture w;
  ui::Opening& f = w.open(w.lib("Character/Tolv/Ava.cr2"), {kMoreThanOneMap});
  // The remote-controlled Twist stops abdomen's listing, so Bulge is in neither list.
  // The lips' resource value is cut at its comma by the field read.
  expectLists(f,
              {.actors = {" BODY:1 * 8", "    hip:1 * 12", "    abdomen:1 * 17", "    head:1 * 22", "    "},
               .channels = with(kHeadings, {"hip:1", "\tBelly", "head:1", "\tSmile", "head:1", "\tFrown"}),
               .reorder = {"hip:1*Belly^ 63@Belly", "abdomen:1*GetStringRes(1028,3)^ 105@Twist",
                           "head:1*Smile^ 165@Smile", "head:1*Frown^ 165@Frown"},
               .materials = {"skin", "eyes", "lips"},
               .colours = {"256  204.8  153.6", "51.2  102.4  153.6", "192  64  128"},
               .hiLites = {"40.156928  33.129472  25.0980352", "256  256  256", "128  128  128"},
               .texMaps = {"\":Runtime:textures:Tolv:skin.jpg\"", ":Runtime:textures:Tolv:eyes.jpg",
                           "GetStringRes(1029"},
               .props = {"Tolv:ball.obj", "Gem:1 Custom Geometry in CR2"},
               .obj = "Tolv:ava.obj",
               .tex = "Default P4 Map",
               .trans = "NO_MAP"});
  EXPECT_EQ(f.ListPropObj.foreColor(), 0x400000u);
  EXPECT_TRUE(f.PictureOBJExtract.visible());
  EXPECT_EQ(f.PictureOBJView.top(), 412);
  EXPECT_EQ(f.LabelOBJFileName.caption(), (w.poser / "Runtime/Geometries/Tolv/ava.obj").string());
  EXPECT_EQ(w.t->currentDir, w.poser / "Runtime/Geometries/Tolv");
  EXPECT_EQ(f.PictureMatColor.backColor(), 0x9ACDFFu);
  EXPECT_EQ(f.PictureMatHiLite.backColor(), 0x192128u);
  EXPECT_EQ(f.TextMainBump.text(), " NO_MAP");
  EXPECT_EQ(f.TextMainReflect.text(), " NO_MAP");

  // A click on a material shows its colours.
  f.ListMaterials.setListIndex(1);
  fireEvent(*w.t, "Opening", "ListMaterials", EventKind::Click);
  EXPECT_EQ(f.PictureMatColor.backColor(), 0x9A6633u);
  EXPECT_EQ(f.PictureMatHiLite.backColor(), 0xFFFFFFu);

  // The texture list pops up over the texture box.
  EXPECT_FALSE(f.ListAllTexMaps.visible());
  fireEvent(*w.t, "Opening", "TextMainTex", EventKind::MouseMove);
  EXPECT_TRUE(f.ListAllTexMaps.visible());
  EXPECT_TRUE(f.TimerListAllTexMaps.enabled());
  fireEvent(*w.t, "Opening", "TimerListAllTexMaps", EventKind::Timer);
  EXPECT_FALSE(f.ListAllTexMaps.visible());
  EXPECT_FALSE(f.TimerListAllTexMaps.enabled());
  fireEvent(*w.t, "Opening", "TextMainTex", EventKind::MouseMove);
  fireEvent(*w.t, "Opening", "ListAllTexMaps", EventKind::RightClick);
  EXPECT_FALSE(f.ListAllTexMaps.visible());

  fireEvent(*w.t, "Opening", "TextMainOBJ", EventKind::MouseMove);
  EXPECT_EQ(f.TextMainOBJ.toolTip(), f.LabelOBJFileName.caption());
}

TEST(ListReaders, SceneWithTwoFiguresCountsFieldsThroughTheDefinitions) {
  WorkspaceFixture w;
  ui::Opening& f = w.open(w.lib("Scene/Tolv/Duet.pz3"), {kMoreThanOneMap});
  // Figure 2's numbers run one ahead of the line numbers: the comma of a resource
  // name in figure 1's definitions made one more field.
  EXPECT_EQ(f.ListActors.items(),
            (Entries{" BODY:1 * 16", "    hip:1 * 20", "    abdomen:1 * 25", "    head:1 * 30", "    ",
                     " BODY:2 * 308", "    hip:2 * 312", "    abdomen:2 * 317", "    head:2 * 322", "    "}));
  EXPECT_EQ(f.ListChannels.items(),
            with(kHeadings, {"hip:1", "\tBelly", "head:1", "\tSmile", "head:1", "\tFrown", "hip:2", "\tBelly",
                             "head:2", "\tSmile", "head:2", "\tFrown"}));
  EXPECT_EQ(f.ListChannelsReorder.items(),
            (Entries{"hip:1*Belly^ 54@Belly", "abdomen:1*GetStringRes(1028,3)^ 96@Twist",
                     "head:1*Smile^ 156@Smile", "head:1*Frown^ 156@Frown", "hip:2*Belly^ 345@Belly",
                     "abdomen:2*GetStringRes(1028,3)^ 387@Twist", "head:2*Smile^ 447@Smile",
                     "head:2*Frown^ 447@Frown"}));
  EXPECT_EQ(f.ListMaterials.items(), (Entries{"skin", "eyes", "lips", "skin", "eyes", "lips"}));
  EXPECT_EQ(f.ListPropObj.items(), (Entries{"No Props in CR2"}));
  EXPECT_EQ(f.ListPropObj.foreColor(), ui::kRed);
}

// Poses, faces, hair and props, from the small test set and from the generated demo set.
TEST(ListReaders, PoseFaceHairAndProp) {
  const std::string kData = std::string(TOLVANE_TEST_DATA) + "/workspace/poser";
  const struct {
    std::string root;
    const char* file;
    std::vector<Prompt> prompts;
    Lists lists;
  } cases[] = {
      {kData, "Pose/Tolv/Wave.pz2", {kNoSkin}, {.actors = {" BODY:1 * 7", "    rHand:1 * 23"}}},
      {kData, "Hair/Tolv/Bob.hr2",
       {kNoBodyParts, kMoreThanOneMap},
       {.channels = with(kHeadings, {"", "\tWind"}),
        .reorder = {"*Wind^ 0@Wind"},
        .materials = {"hair"},
        .colours = {"76.8  51.2  25.6"},
        .hiLites = {"0  0  0"},
        .texMaps = {":Runtime:textures:Tolv:bob.jpg"},
        .obj = "Tolv:bob.obj",
        .tex = ":Runtime:textures:Tolv:bob.jpg",
        .trans = ":Runtime:textures:Tolv:bob_tr.jpg"}},
      {kData, "Props/Tolv/Vase.pp2",
       {kNoBodyParts, kNoSkin},
       {.materials = {"glaze"},
        .colours = {"25.6  128  230.4"},
        .hiLites = {"256  256  256"},
        .obj = "Tolv:vase.obj"}},
      {TOLVANE_SAMPLES, "Pose/Tolvane/Wave.pz2",
       {kNoSkin},
       {.actors = {" BODY:1 * 7", "    chest:1 * 21", "    neck:1 * 51", "    head:1 * 81",
                   "    lShldr:1 * 111", "    lForeArm:1 * 141", "    rCollar:1 * 171", "    rShldr:1 * 201",
                   "    rForeArm:1 * 231", "    rHand:1 * 261"}}},
      {TOLVANE_SAMPLES, "Face/Tolvane/Smile.fc2",
       {kNoSkin},
       // Smile has no name line, so the dial name is cut from the keys line in its place.
       {.actors = {" BODY:1 * 7", "    head:1 * 21"}, .reorder = {"head:1*eys^ 20@Smile"}}},
      {TOLVANE_SAMPLES, "Hair/Tolvane/Bob.hr2",
       {kNoBodyParts, kMoreThanOneMap},
       {.channels = with(kHeadings, {"", "\tWindswept"}),
        .reorder = {"*Windswept^ 0@Windswept"},
        .materials = {"hair"},
        .colours = {"89.6  56.32  30.72"},
        .hiLites = {"76.8  64  51.2"},
        .texMaps = {":Runtime:textures:Tolvane:bob_hair.bmp", "NO_MAP"},
        .obj = "Tolvane:bob.obj",
        .trans = "NO_MAP"}},
      {TOLVANE_SAMPLES, "Props/Tolvane/Vase.pp2",
       {kNoBodyParts, kNoSkin},
       {.materials = {"vase"}, .colours = {"51.2  115.2  179.2"}, .hiLites = {"256  256  256"}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    WorkspaceFixture w(c.root);
    ui::Opening& f = w.open(w.lib(c.file), c.prompts);
    expectLists(f, c.lists);
    EXPECT_TRUE(f.MenuCR2Tools.enabled());
  }
}

// The generated demo set, compared with the entries the readers' rules give for it, to
// the character.
TEST(WorkspaceSamples, Figure) {
  WorkspaceFixture s(TOLVANE_SAMPLES);
  ui::Opening& f = s.open(s.lib("Character/Tolvane/Ava.cr2"), {kMoreThanOneMap});
  ASSERT_EQ(f.ListActors.listCount(), 53);
  EXPECT_EQ(f.ListActors.list(0), " BODY:1 * 8");
  EXPECT_EQ(f.ListActors.list(1), "    hip:1 * 12");
  EXPECT_EQ(f.ListActors.list(51), "    rToe:1 * 262");
  EXPECT_EQ(f.ListActors.list(52), "    ");
  EXPECT_EQ(f.ListChannels.items(), with(kHeadings, {"chest:1",  "\tGetStringRes(1028,43)",
                                                     "head:1",   "\tSmile",
                                                     "head:1",   "\tFrown",
                                                     "head:1",   "\tBrowUp",
                                                     "head:1",   "\tBlink",
                                                     "head:1",   "\tMouth O",
                                                     "lHand:1",  "\tGetStringRes(1028,48)",
                                                     "lHand:1",  "\tGetStringRes(1028,49)",
                                                     "lHand:1",  "\tGetStringRes(1028,50)",
                                                     "rHand:1",  "\tGetStringRes(1028,48)",
                                                     "rHand:1",  "\tGetStringRes(1028,49)",
                                                     "rHand:1",  "\tGetStringRes(1028,50)",
                                                     "lThigh:1", "\tThighSlim",
                                                     "rThigh:1", "\tThighSlim"}));
  ASSERT_EQ(f.ListChannelsReorder.listCount(), 21);
  EXPECT_EQ(f.ListChannelsReorder.list(0), "hip:1*Heavy^ 465@Heavy");
  EXPECT_EQ(f.ListChannelsReorder.list(2), "chest:1*GetStringRes(1028,43)^ 858@breastSize");
  EXPECT_EQ(f.ListChannelsReorder.list(8), "head:1*Mouth O^ 1305@MouthO");
  EXPECT_EQ(f.ListChannelsReorder.list(20), "rThigh:1*Heavy^ 10090@Heavy");
  EXPECT_EQ(f.ListPropObj.items(), (Entries{"Tolvane:earrings.obj", "Bangle:1 Custom Geometry in CR2"}));
  EXPECT_EQ(f.TextMainOBJ.text(), "Tolvane:ava.obj");
  EXPECT_EQ(f.ListMaterials.items(), (Entries{"skin", "lips", "eyes", "lashes", "brows", "nails", "gold"}));
  EXPECT_EQ(f.ListMATColors.items(),
            (Entries{"256  256  256", "204.8  89.6  102.4", "230.4  230.4  243.2", "25.6  20.48  15.36",
                     "64  46.08  25.6", "243.2  204.8  204.8", "217.6  166.4  51.2"}));
  EXPECT_EQ(f.ListMatHiLite.items(),
            (Entries{"40.156928  33.129472  25.0980352", "102.4  76.8  76.8", "256  256  256", "0  0  0",
                     "10.0392192  10.0392192  10.0392192", "153.6  153.6  153.6", "256  230.4  128"}));
  // Preview stands last among the materials, so its NO_MAP values are the boxes' values.
  EXPECT_EQ(f.ListAllTexMaps.items(),
            (Entries{":Runtime:textures:Tolvane:ava_skin.bmp", "\":Runtime:textures:Tolvane:ava_lips.bmp\"",
                     "", "NO_MAP", "GetStringRes(1029"}));
  EXPECT_EQ(f.TextMainTex.text(), "NO_MAP");
  EXPECT_EQ(f.TextMainBump.text(), " NO_MAP");
  EXPECT_EQ(f.TextMainReflect.text(), " NO_MAP");
  EXPECT_EQ(f.TextMainTrans.text(), "NO_MAP");
}

TEST(WorkspaceSamples, SceneWithTwoFigures) {
  WorkspaceFixture s(TOLVANE_SAMPLES);
  ui::Opening& f = s.open(s.lib("Scene/Tolvane/Duet.pz3"), {kMoreThanOneMap});
  ASSERT_EQ(f.ListActors.listCount(), 106);
  EXPECT_EQ(f.ListActors.list(0), " BODY:1 * 20");
  EXPECT_EQ(f.ListActors.list(51), "    rToe:1 * 274");
  EXPECT_EQ(f.ListActors.list(52), "    ");
  // 437 commas in figure 1's definitions each made one more field read.
  EXPECT_EQ(f.ListActors.list(53), " BODY:2 * 12048");
  EXPECT_EQ(f.ListActors.list(54), "    hip:2 * 12052");
  EXPECT_EQ(f.ListActors.list(104), "    rToe:2 * 12302");
  EXPECT_EQ(f.ListActors.list(105), "    ");
  EXPECT_EQ(f.ListMaterials.listCount(), 14);
}

TEST(ListReaders, DisplayFormOfAPath) {
  std::string p42(42, 'a'), p43(43, 'b'), p60 = std::string(15, 'x') + std::string(45, 'y');
  EXPECT_EQ(displayPath(p42), p42);
  EXPECT_EQ(displayPath(p43), "..." + p43);
  EXPECT_EQ(displayPath(p60), "..." + std::string(45, 'y'));
}

}  // namespace
}  // namespace tolvane::test
