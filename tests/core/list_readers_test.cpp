#include "core/list_readers.h"

#include <gtest/gtest.h>

#include "workspace_fixture.h"

namespace tolvane {
namespace {

using test::WorkspaceFixture;
using Entries = std::vector<std::string>;

const Entries kHeadings{"ALL CHANNELS", "************************"};

Entries with(Entries a, const Entries& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST(ListReaders, FigureFillsEveryList) {
  WorkspaceFixture w;
  w.open(w.lib("Character/Tolv/Ava.cr2"), {test::kMoreThanOneMap});
  ui::Opening& f = w.form();
  EXPECT_EQ(f.ListActors.items(),
            (Entries{" BODY:1 * 8", "    hip:1 * 12", "    abdomen:1 * 17", "    head:1 * 22", "    "}));
  // The remote-controlled Twist stops abdomen's listing, so Bulge is in neither list.
  EXPECT_EQ(f.ListChannels.items(),
            with(kHeadings, {"hip:1", "\tBelly", "head:1", "\tSmile", "head:1", "\tFrown"}));
  EXPECT_EQ(f.ListChannelsReorder.items(),
            (Entries{"hip:1*Belly^ 63@Belly", "abdomen:1*GetStringRes(1028,3)^ 105@Twist",
                     "head:1*Smile^ 165@Smile", "head:1*Frown^ 165@Frown"}));
  EXPECT_EQ(f.ListPropObj.items(), (Entries{"Tolv:ball.obj", "Gem:1 Custom Geometry in CR2"}));
  EXPECT_EQ(f.ListPropObj.foreColor(), 0x400000u);
  EXPECT_TRUE(f.PictureOBJExtract.visible());
  EXPECT_EQ(f.PictureOBJView.top(), 412);
  EXPECT_EQ(f.TextMainOBJ.text(), "Tolv:ava.obj");
  EXPECT_EQ(f.LabelOBJFileName.caption(), (w.poser / "Runtime/Geometries/Tolv/ava.obj").string());
  EXPECT_EQ(w.t->currentDir, w.poser / "Runtime/Geometries/Tolv");

  EXPECT_EQ(f.ListMaterials.items(), (Entries{"skin", "eyes", "lips"}));
  EXPECT_EQ(f.ListMATColors.items(), (Entries{"256  204.8  153.6", "51.2  102.4  153.6", "192  64  128"}));
  EXPECT_EQ(f.ListMatHiLite.items(),
            (Entries{"40.15693  33.12947  25.09804", "256  256  256", "128  128  128"}));
  EXPECT_EQ(f.PictureMatColor.backColor(), 0x9ACDFFu);
  EXPECT_EQ(f.PictureMatHiLite.backColor(), 0x192128u);

  // The lips' resource value is cut at its comma by the field read.
  EXPECT_EQ(f.ListAllTexMaps.items(), (Entries{"\":Runtime:textures:Tolv:skin.jpg\"",
                                               ":Runtime:textures:Tolv:eyes.jpg", "GetStringRes(1029"}));
  EXPECT_EQ(f.TextMainTex.text(), "Default P4 Map");
  EXPECT_EQ(f.TextMainBump.text(), " NO_MAP");
  EXPECT_EQ(f.TextMainReflect.text(), " NO_MAP");
  EXPECT_EQ(f.TextMainTrans.text(), "NO_MAP");
}

TEST(ListReaders, SceneWithTwoFiguresCountsFieldsThroughTheDefinitions) {
  WorkspaceFixture w;
  w.open(w.lib("Scene/Tolv/Duet.pz3"), {test::kMoreThanOneMap});
  ui::Opening& f = w.form();
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

TEST(ListReaders, PoseHairAndProp) {
  struct Case {
    const char* file;
    std::vector<std::pair<std::string, std::string>> messages;
    Entries actors, channels, reorder, materials, colours, hiLites, texMaps;
    std::string obj, tex, trans;
  };
  const Case cases[] = {
      {"Pose/Tolv/Wave.pz2",
       {test::kNoSkin},
       {" BODY:1 * 7", "    rHand:1 * 23"},
       kHeadings,
       {},
       {},
       {},
       {},
       {},
       "",
       "NO_MAP",
       ""},
      {"Hair/Tolv/Bob.hr2",
       {test::kNoBodyParts, test::kMoreThanOneMap},
       {},
       with(kHeadings, {"", "\tWind"}),
       {"*Wind^ 0@Wind"},
       {"hair"},
       {"76.8  51.2  25.6"},
       {"0  0  0"},
       {":Runtime:textures:Tolv:bob.jpg"},
       "Tolv:bob.obj",
       ":Runtime:textures:Tolv:bob.jpg",
       ":Runtime:textures:Tolv:bob_tr.jpg"},
      {"Props/Tolv/Vase.pp2",
       {test::kNoBodyParts, test::kNoSkin},
       {},
       kHeadings,
       {},
       {"glaze"},
       {"25.6  128  230.4"},
       {"256  256  256"},
       {},
       "Tolv:vase.obj",
       "NO_MAP",
       ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    WorkspaceFixture w;
    w.open(w.lib(c.file), c.messages);
    ui::Opening& f = w.form();
    EXPECT_EQ(f.ListActors.items(), c.actors);
    EXPECT_EQ(f.ListChannels.items(), c.channels);
    EXPECT_EQ(f.ListChannelsReorder.items(), c.reorder);
    EXPECT_EQ(f.ListMaterials.items(), c.materials);
    EXPECT_EQ(f.ListMATColors.items(), c.colours);
    EXPECT_EQ(f.ListMatHiLite.items(), c.hiLites);
    EXPECT_EQ(f.ListAllTexMaps.items(), c.texMaps);
    EXPECT_EQ(f.ListPropObj.items(), (Entries{"No Props in CR2"}));
    EXPECT_EQ(f.TextMainOBJ.text(), c.obj);
    EXPECT_EQ(f.TextMainTex.text(), c.tex);
    EXPECT_EQ(f.TextMainTrans.text(), c.trans);
    EXPECT_TRUE(f.MenuCR2Tools.enabled());
  }
}

TEST(ListReaders, MaterialClickShowsItsColours) {
  WorkspaceFixture w;
  w.open(w.lib("Character/Tolv/Ava.cr2"), {test::kMoreThanOneMap});
  ui::Opening& f = w.form();
  f.ListMaterials.setListIndex(1);
  fireEvent(*w.t, "Opening", "ListMaterials", EventKind::Click);
  EXPECT_EQ(f.PictureMatColor.backColor(), 0x9A6633u);
  EXPECT_EQ(f.PictureMatHiLite.backColor(), 0xFFFFFFu);
}

TEST(ListReaders, TextureListPopsUpOverTheTextureBox) {
  WorkspaceFixture w;
  w.open(w.lib("Character/Tolv/Ava.cr2"), {test::kMoreThanOneMap});
  ui::Opening& f = w.form();
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

TEST(ListReaders, DisplayFormOfAPath) {
  std::string p42(42, 'a'), p43(43, 'b'), p60 = std::string(15, 'x') + std::string(45, 'y');
  EXPECT_EQ(displayPath(p42), p42);
  EXPECT_EQ(displayPath(p43), "..." + p43);
  EXPECT_EQ(displayPath(p60), "..." + std::string(45, 'y'));
}

}  // namespace
}  // namespace tolvane
