#include "morph/channel_viewer.h"

#include <gtest/gtest.h>

#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using Lines = std::vector<std::string>;

class ChannelViewerTest : public MorphTest {
 protected:
  void SetUp() override { openDestination(copyFigure("dest.cr2")); }
};

TEST_F(ChannelViewerTest, ListsThePartsChannelsInTheirFixedLayout) {
  struct Case {
    const char* figure;  // empty: the destination itself
    const char* part;
    Lines expected;
  };
  const Case cases[] = {
      // The resource name shows only up to its comma.
      {"",
       "chest",
       {"Channels for  chest:1", "", "\tBust", "", "\tRound", "", "\tGetStringRes(1028", "", "\tSquare"}},
      {"source.cr2",
       "abdomen",
       {"Channels for  abdomen:1", "", "\tEMC Channel", "\tSlave: Slim", "\tMaster: PBMBreathe",
        "\tFigure: Figure 1", "\tMaster Part: BODY:1", "\tdeltaAddDelta 0.500000", "", "\tTwin", "",
        "\tTuck"}},
      // The figure number comes from the source; a valueParm's block takes the last morph as its slave.
      {"source_figure2.cr2",
       "hip",
       {"Channels for  hip:2", "", "\tNarrow", "", "\tEMC Channel", "\tSlave: Narrow", "\tMaster: Narrow",
        "\tFigure: Figure 2", "\tMaster Part: hip:1", "\tdeltaAddDelta 1.000000"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.figure) + " " + c.part);
    openDestination(dest);
    f.PictureViewChannels.setBackColor(ui::kToolRest);
    if (*c.figure) openSource(copyFigure(c.figure));
    viewChannels(c.part);
    EXPECT_EQ(f.ListChannels.items(), c.expected);
    EXPECT_EQ(f.SelectedPart, c.expected.front().substr(13));
    EXPECT_TRUE(f.PictureCopyToDest.visible());
    EXPECT_TRUE(f.PictureRenameMorph.visible());
  }
}

TEST_F(ChannelViewerTest, PartWithoutMorphsSaysSoInRed) {
  openSource(copyFigure("source.cr2"));
  viewChannels("neck");
  EXPECT_EQ(f.ListChannels.items(), (Lines{"Channels for  neck:1", "NO MORPH CHANNELS FOR THIS PART"}));
  EXPECT_EQ(f.ListChannels.foreColor(), ui::kRed);
}

TEST_F(ChannelViewerTest, NoPartChosenIsRefused) {
  for (int index : {-1, 0}) {
    SCOPED_TRACE(index);
    f.ListActors.setListIndex(index);
    services.expect("Note!", "Choose a bodypart first, from the left pane.");
    fire("PictureViewChannels", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(f.PictureViewChannels.backColor(), ui::kToolRest);
    EXPECT_EQ(f.ListChannels.items(), (Lines{"ALL CHANNELS", "************************"}));
  }
}

TEST_F(ChannelViewerTest, FaultsOfTheScanAreErrorsThatChangeNothing) {
  struct Case {
    const char* what;
    std::string source;
    const char* error;
  };
  // A "hip:" line ending in its colon leaves the part without a figure number.
  std::string colon = (tp.files() / "colon.cr2").string();
  writeFile(colon,
            crlf({"{", "\tcomment hip:", "actor hip:1", "\t{", "\t}", "actor hip:1", "\t{", "", "\t}", "}"}));
  const Case cases[] = {
      // Two digits are cut to the last one, and no "actor hip:2" stands in the file.
      {"two-digit figure number", copyFigure("source_figure12.cr2"), "Run-time error '62':..."},
      {"part name ending in a colon", colon, "Run-time error '91':..."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    openDestination(dest);
    openSource(c.source);
    selectActor("hip");
    services.expect(kAppName, c.error);
    fire("PictureViewChannels", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(f.PictureViewChannels.backColor(), ui::kToolRest);
    EXPECT_EQ(f.ListChannels.items(), (Lines{"ALL CHANNELS", "************************"}));
    EXPECT_EQ(f.SelectedPart, "");
  }
}

TEST_F(ChannelViewerTest, ScanEndsQuietlyAtTheEndOfTheFile) {
  // The last channel has no interpStyleLocked: what was listed stays.
  std::string cut = (tp.files() / "cut.cr2").string();
  writeFile(cut, crlf({"actor hip:1", "\t{", "\t}", "actor hip:1", "\t{", "", "\tchannels", "\t\t{",
                       "\t\ttargetGeom A", "\t\t\t{", "\t\t\tname A", "\t\t\tinterpStyleLocked 0", "\t\t\t}",
                       "\t\ttargetGeom B", "\t\t\t{", "\t\t\tname B"}));
  EXPECT_EQ(morph::ScanPartChannels(cut, " hip:1"), (Lines{"", "\tA"}));
}

TEST_F(ChannelViewerTest, MouseEventsOfTheChannelList) {
  viewChannels("chest");
  EventArgs left;
  fire("ListChannels", EventKind::Press, left);
  EXPECT_FALSE(f.ListChannelsDragOn);
  EXPECT_EQ(f.DragSource, "Channels");

  f.PictureTrash.setBackColor(ui::kToolOn);
  fire("ListChannels", EventKind::Press, left);
  fire("ListChannels", EventKind::Release, left);
  EXPECT_TRUE(f.ListChannelsDragOn);

  f.ListChannels.setItem(0, "ALL CHANNELS");
  services.expect(
      "Note!", "Please choose a body part, to list just the channels for that part, before using this tool.");
  fire("ListChannels", EventKind::Release, left);
  EXPECT_FALSE(f.ListChannelsDragOn);
  EXPECT_EQ(services.messages().back().icon, ui::Icon::Critical);
  // With all channels listed a double-click does nothing.
  f.ListChannels.setListIndex(4);
  fire("ListChannels", EventKind::DblClick);
  EXPECT_EQ(f.ListChannelsReorderByPart.listCount(), 0);

  f.ListChannels.setItem(0, "Channels for  chest:1");
  fire("ListChannels", EventKind::DblClick);
  EXPECT_EQ(f.ListChannelsReorderByPart.items(), (Lines{"\tRound"}));

  f.PictureMirror.setBackColor(ui::kToolOn);
  services.expect("Note", "Now doubleclick the body part to transfer this morph to.");
  fire("ListChannels", EventKind::DblClick);
  EXPECT_EQ(f.MirrorMorph, "Round");

  f.LabelX.setVisible(true);
  fire("ListChannels", EventKind::MouseMove);
  EXPECT_FALSE(f.LabelX.visible());
  EXPECT_EQ(services.pending(), 0u);
}

TEST_F(ChannelViewerTest, RightClickExplains) {
  services.expect(
      "Information",
      "Click this button to view channels for a body part and enable re-naming and copying them.");
  fire("PictureViewChannels", EventKind::RightClick);
  EXPECT_EQ(services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
