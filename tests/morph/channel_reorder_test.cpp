#include <gtest/gtest.h>

#include "morph_fixture.h"

namespace tolvane::test {
namespace {

class ChannelReorderTest : public DestinationTest {
 protected:
  void SetUp() override {
    DestinationTest::SetUp();
    // As the all-channels scan lists them: part, dial, lines before the actor, id.
    f.ListChannelsReorder.setItems({"hip:1*Wide^ 65@Wide", "abdomen:1*Slim^ 155@Slim",
                                    "abdomen:1*Belly^ 155@Belly", "chest:1*Bust^ 267@Bust",
                                    "chest:1*Round^ 267@Round", "chest:1*GetStringRes(1028,3)^ 267@Flat",
                                    "chest:1*Square^ 267@Square", "neck:1*Square^ 423@Square"});
    selectActor("chest");
  }
  void moveToNewOrder(const std::string& entry) {
    f.ListChannelsReorderByPart.setListIndex(f.ListChannelsReorderByPart.indexOf(entry));
    ASSERT_TRUE(drop("ListChannelsReorderNewOrder", "ListChannelsReorderByPart"));
  }
};

TEST_F(ChannelReorderTest, RewritesThePartsChannelsInTheNewOrder) {
  fire("ListActors", EventKind::DblClick);
  EXPECT_TRUE(f.ListChannelsReorderByPart.visible());
  EXPECT_TRUE(f.PictureChannelReorderDone.visible());
  EXPECT_EQ(f.ListChannelsReorderByPart.items(),
            (Lines{"chest:1*Bust^ 267@Bust", "chest:1*Round^ 267@Round",
                   "chest:1*GetStringRes(1028,3)^ 267@Flat", "chest:1*Square^ 267@Square"}));
  moveToNewOrder("chest:1*Round^ 267@Round");
  moveToNewOrder("chest:1*Bust^ 267@Bust");
  moveToNewOrder("chest:1*GetStringRes(1028,3)^ 267@Flat");
  // Square, the part's last channel, stays behind the moved ones.
  EXPECT_EQ(f.ListChannelsReorderByPart.items(), (Lines{"chest:1*Square^ 267@Square"}));
  services.dialog(dest);
  fire("PictureChannelReorderDone", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(services.dialogs().back().fileName, dest);
  EXPECT_EQ(differenceFrom(dest, "reorder"), "");
  EXPECT_EQ(f.ListChannelsReorderReordered.items(),
            (Lines{"Round#chest:1*Round^ 267", "Bust#chest:1*Bust^ 267",
                   "Flat#chest:1*GetStringRes(1028,3)^ 267", "Square#chest:1*Square^ 267"}));
  EXPECT_FALSE(f.ListChannelsReorderNewOrder.visible());
}

TEST_F(ChannelReorderTest, EmptyNewOrderClosesTheToolAndCancelKeepsTheFile) {
  fire("ListActors", EventKind::DblClick);
  fire("PictureChannelReorderDone", EventKind::Click);
  EXPECT_FALSE(f.ListChannelsReorderByPart.visible());
  EXPECT_FALSE(f.PictureChannelReorderDone.visible());
  EXPECT_TRUE(services.dialogs().empty());

  fire("ListActors", EventKind::DblClick);
  moveToNewOrder("chest:1*Round^ 267@Round");
  services.cancelDialog();
  fire("PictureChannelReorderDone", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(ChannelReorderTest, MirrorModeLeavesTheDoubleClickToTheMirror) {
  f.PictureMirror.setBackColor(ui::kToolOn);
  fire("ListActors", EventKind::DblClick);
  EXPECT_EQ(f.ListChannelsReorderByPart.listCount(), 0);
}

TEST_F(ChannelReorderTest, DoubleClickFindsTheTrackingLine) {
  // Round's trackingScale stands on line 313 of the file.
  f.ListChannelsReorder.setListIndex(4);
  fire("ListChannelsReorder", EventKind::DblClick);
  EXPECT_EQ(f.TrackingLine, 313);
  EXPECT_EQ(f.TextTrackingSpeed.text(), "0.02");
  EXPECT_TRUE(f.TextTrackingSpeed.visible());
  EXPECT_TRUE(f.TextTrackingSpeed.hasFocus());
}

}  // namespace
}  // namespace tolvane::test
