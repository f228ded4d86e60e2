// Opens the generated demo set and compares the lists with the entries the readers'
// rules give for it, to the character.
#include <gtest/gtest.h>

#include "program/events.h"
#include "test_support.h"
#include "workspace_fixture.h"

namespace tolvane {
namespace {

using Entries = std::vector<std::string>;
using Messages = std::vector<std::pair<std::string, std::string>>;

struct Samples {
  Samples() {
    poser = test::copyInto(TOLVANE_SAMPLES, t.dir.path());
    t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
  }
  ui::Opening& open(const std::string& rel, const Messages& messages) {
    t.services.dialog((poser / "Runtime/Libraries" / rel).string());
    for (const auto& [title, text] : messages) t.services.expect(title, text);
    fireEvent(*t, "Opening", "MenuFileOpen", EventKind::Click);
    EXPECT_EQ(t.services.pending(), 0u);
    return t->opening;
  }
  test::TestProgram t;
  std::filesystem::path poser;
};

TEST(WorkspaceSamples, Figure) {
  Samples s;
  ui::Opening& f = s.open("Character/Tolvane/Ava.cr2", {test::kMoreThanOneMap});
  ASSERT_EQ(f.ListActors.listCount(), 53);
  EXPECT_EQ(f.ListActors.list(0), " BODY:1 * 8");
  EXPECT_EQ(f.ListActors.list(1), "    hip:1 * 12");
  EXPECT_EQ(f.ListActors.list(51), "    rToe:1 * 262");
  EXPECT_EQ(f.ListActors.list(52), "    ");
  const Entries channels{"ALL CHANNELS", "************************",
                         "chest:1",      "\tGetStringRes(1028,43)",
                         "head:1",       "\tSmile",
                         "head:1",       "\tFrown",
                         "head:1",       "\tBrowUp",
                         "head:1",       "\tBlink",
                         "head:1",       "\tMouth O",
                         "lHand:1",      "\tGetStringRes(1028,48)",
                         "lHand:1",      "\tGetStringRes(1028,49)",
                         "lHand:1",      "\tGetStringRes(1028,50)",
                         "rHand:1",      "\tGetStringRes(1028,48)",
                         "rHand:1",      "\tGetStringRes(1028,49)",
                         "rHand:1",      "\tGetStringRes(1028,50)",
                         "lThigh:1",     "\tThighSlim",
                         "rThigh:1",     "\tThighSlim"};
  EXPECT_EQ(f.ListChannels.items(), channels);
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
            (Entries{"40.15693  33.12947  25.09804", "102.4  76.8  76.8", "256  256  256", "0  0  0",
                     "10.03922  10.03922  10.03922", "153.6  153.6  153.6", "256  230.4  128"}));
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
  Samples s;
  ui::Opening& f = s.open("Scene/Tolvane/Duet.pz3", {test::kMoreThanOneMap});
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

TEST(WorkspaceSamples, PoseFaceHairAndProp) {
  struct Case {
    const char* file;
    Messages messages;
    Entries actors, materials, colours, hiLites, texMaps;
    std::string obj, tex, trans;
  };
  const Case cases[] = {
      {"Pose/Tolvane/Wave.pz2",
       {test::kNoSkin},
       {" BODY:1 * 7", "    chest:1 * 21", "    neck:1 * 51", "    head:1 * 81", "    lShldr:1 * 111",
        "    lForeArm:1 * 141", "    rCollar:1 * 171", "    rShldr:1 * 201", "    rForeArm:1 * 231",
        "    rHand:1 * 261"},
       {},
       {},
       {},
       {},
       "",
       "NO_MAP",
       ""},
      {"Face/Tolvane/Smile.fc2",
       {test::kNoSkin},
       {" BODY:1 * 7", "    head:1 * 21"},
       {},
       {},
       {},
       {},
       "",
       "NO_MAP",
       ""},
      {"Hair/Tolvane/Bob.hr2",
       {test::kNoBodyParts, test::kMoreThanOneMap},
       {},
       {"hair"},
       {"89.6  56.32  30.72"},
       {"76.8  64  51.2"},
       {":Runtime:textures:Tolvane:bob_hair.bmp", "NO_MAP"},
       "Tolvane:bob.obj",
       "NO_MAP",
       "NO_MAP"},
      {"Props/Tolvane/Vase.pp2",
       {test::kNoBodyParts, test::kNoSkin},
       {},
       {"vase"},
       {"51.2  115.2  179.2"},
       {"256  256  256"},
       {},
       "",
       "NO_MAP",
       ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    Samples s;
    ui::Opening& f = s.open(c.file, c.messages);
    EXPECT_EQ(f.ListActors.items(), c.actors);
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

}  // namespace
}  // namespace tolvane
