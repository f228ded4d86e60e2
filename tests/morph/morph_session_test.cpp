// The figure opened through File, Open, so the tools read the lists as the workspace's
// readers wrote them. Copy, reorder and body part removal after a real Open run in
// tests/scripts/morph_tools.tvs.
#include <gtest/gtest.h>

#include "text/figure_text.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

class MorphSessionTest : public MorphTest {
 protected:
  void SetUp() override {
    auto poser = tp.dir.path() / "poser";
    std::filesystem::create_directories(poser / "Runtime" / "Geometries" / "Tolvane");
    tp.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
    dest = copyFigure("dest.cr2");
    services.dialog(dest);
    services.expect("ALERT!", "There is more than one texture map used in this CR2.");
    ASSERT_TRUE(fire("MenuFileOpen", EventKind::Click));
    ASSERT_EQ(services.pending(), 0u) << lastMessage();
  }
};

TEST_F(MorphSessionTest, ViewerTogglesBetweenThePartAndAllChannels) {
  EXPECT_EQ(f.ListActors.list(3), "    chest:1 * 21");
  viewChannels("chest");
  EXPECT_EQ(f.ListChannels.items(),
            partList("chest:1", {"\tBust", "", "\tRound", "", "\tGetStringRes(1028", "", "\tSquare"}));
  fire("PictureViewChannels", EventKind::Click);
  EXPECT_EQ(f.PictureViewChannels.backColor(), ui::kToolRest);
  EXPECT_FALSE(f.PictureCopyToDest.visible());
  // The whole file, with the resource name whole.
  ASSERT_GE(f.ListChannels.listCount(), 2);
  EXPECT_EQ(f.ListChannels.list(0), "ALL CHANNELS");
  EXPECT_NE(f.ListChannels.indexOf("\tGetStringRes(1028,3)"), -1);
  EXPECT_EQ(services.pending(), 0u);
}

TEST_F(MorphSessionTest, ReorderEntriesLeadToTheTrackingLine) {
  // chest's Round as the all-channels scan wrote it.
  int round = -1;
  for (int i = 0; i < f.ListChannelsReorder.listCount(); ++i)
    if (text::hasPrefix(f.ListChannelsReorder.list(i), "chest:1*Round^")) round = i;
  ASSERT_GE(round, 0);
  f.ListChannelsReorder.setListIndex(round);
  fire("ListChannelsReorder", EventKind::DblClick);
  EXPECT_EQ(f.TrackingLine, 313);
}

}  // namespace
}  // namespace tolvane::test
