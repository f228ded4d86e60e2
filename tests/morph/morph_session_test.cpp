// Whole sessions: the figure is opened through File, Open (and the source through
// LabelOpenSource), so the tools read the lists as the workspace's readers wrote them.
#include <gtest/gtest.h>

#include "core/figure_text.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using Lines = std::vector<std::string>;

class MorphSessionTest : public MorphTest {
 protected:
  void SetUp() override {
    if (!eventTable().has("Opening", "MenuFileOpen", EventKind::Click))
      GTEST_SKIP() << "File, Open is not built in";
    auto poser = tp.dir.path() / "poser";
    std::filesystem::create_directories(poser / "Runtime" / "Geometries" / "Tolvane");
    tp.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
    dest = copyFigure("dest.cr2");
    original = readFile(dest);
  }
  void open(const std::string& path) {
    services.dialog(path);
    services.expect("ALERT!", "There is more than one texture map used in this CR2.");
    ASSERT_TRUE(fire("MenuFileOpen", EventKind::Click));
    ASSERT_EQ(services.pending(), 0u) << messageTexts().back();
  }
  void openSourcePane(const std::string& path) {
    services.dialog(path);
    ASSERT_TRUE(fire("LabelOpenSource", EventKind::Click));
    ASSERT_EQ(services.pending(), 0u) << messageTexts().back();
  }
  std::string original;
};

TEST_F(MorphSessionTest, ViewerTogglesBetweenThePartAndAllChannels) {
  open(dest);
  EXPECT_EQ(f.ListActors.list(3), "    chest:1 * 21");
  viewChannels("chest");
  EXPECT_EQ(f.ListChannels.items(), (Lines{"Channels for  chest:1", "", "\tBust", "", "\tRound", "",
                                           "\tGetStringRes(1028", "", "\tSquare"}));
  fire("PictureViewChannels", EventKind::Click);
  EXPECT_EQ(f.PictureViewChannels.backColor(), ui::kToolRest);
  EXPECT_FALSE(f.PictureCopyToDest.visible());
  // The whole file, with the resource name whole.
  ASSERT_GE(f.ListChannels.listCount(), 2);
  EXPECT_EQ(f.ListChannels.list(0), "ALL CHANNELS");
  EXPECT_NE(f.ListChannels.indexOf("\tGetStringRes(1028,3)"), -1);
  EXPECT_EQ(services.pending(), 0u);
}

TEST_F(MorphSessionTest, CopyFromAnOpenedSource) {
  open(dest);
  std::string source = copyFigure("source.cr2");
  openSourcePane(source);
  viewChannels("hip");
  selectChannels({"\tNarrow"});
  services.expect("Success!", "Channel/s in " + source + " inserted into " + dest + ".  Save changes?",
                  Answer::Yes);
  services.dialog(dest);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(differenceFrom(dest, "copy_plain"), "");
}

TEST_F(MorphSessionTest, RenameRemoveAndReorderOnTheOpenedFile) {
  open(dest);
  // The reorder list as the all-channels scan wrote it.
  selectActor("chest");
  fire("ListActors", EventKind::DblClick);
  ASSERT_EQ(f.ListChannelsReorderByPart.listCount(), 4);
  for (const char* dial : {"*Round^", "*Bust^", "*GetStringRes(1028,3)^"}) {
    for (int i = 0; i < f.ListChannelsReorderByPart.listCount(); ++i)
      if (f.ListChannelsReorderByPart.list(i).find(dial) != std::string::npos)
        f.ListChannelsReorderByPart.setListIndex(i);
    drop("ListChannelsReorderNewOrder", "ListChannelsReorderByPart");
  }
  std::string reordered = (tp.files() / "reordered.cr2").string();
  services.dialog(reordered);
  fire("PictureChannelReorderDone", EventKind::Click);
  EXPECT_EQ(firstDifference(reordered, data("reorder/expected.cr2")), "");

  // The tracking line of chest's Round.
  for (int i = 0; i < f.ListChannelsReorder.listCount(); ++i)
    if (core::hasPrefix(f.ListChannelsReorder.list(i), "chest:1*Round^"))
      f.ListChannelsReorder.setListIndex(i);
  fire("ListChannelsReorder", EventKind::DblClick);
  EXPECT_EQ(f.TrackingLine, 313);

  // Body part removal from the list Open filled, then the file opened again.
  selectActor("abdomen");
  services.expect("Alert!", "You are about to remove one or more body parts.  Save changes?", Answer::Yes);
  services.dialog(dest);
  services.answer(Answer::OK);
  fire("PictureTrash", EventKind::Click);
  fire("ListActors", EventKind::Press);
  drop("PictureTrash", "ListActors");
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(differenceFrom(dest, "remove_body_part"), "");
  EXPECT_EQ(f.ListActors.indexOf("    abdomen:1 * 16"), -1);
}

}  // namespace
}  // namespace tolvane::test
