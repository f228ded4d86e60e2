#include "morph/channel_viewer.h"

#include <gtest/gtest.h>

#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ChannelViewerTest = DestinationTest;

TEST_F(ChannelViewerTest, ListsThePartsChannelsInTheirFixedLayout) {
  struct Case {
    const char *figure, *part;  // figure empty: the destination itself
    Lines expected;
  };
  const Case cases[] = {
      // The resource name shows only up to its comma.
      {"", "chest",
       partList("chest:1", {"\tBust", "", "\tRound", "", "\tGetStringRes(1028", "", "\tSquare"})},
      {"source.cr2", "abdomen",
       partList("abdomen:1",
                {"\tEMC Channel", "\tSlave: Slim", "\tMaster: PBMBreathe", "\tFigure: Figure 1",
                 "\tMaster Part: BODY:1", "\tdeltaAddDelta 0.500000", "", "\tTwin", "", "\tTuck"})},
      // The figure number comes from the source; a valueParm's block takes the last morph as its slave.
      {"source_figure2.cr2", "hip",
       partList("hip:2", {"\tNarrow", "", "\tEMC Channel", "\tSlave: Narrow", "\tMaster: Narrow",
                          "\tFigure: Figure 2", "\tMaster Part: hip:1", "\tdeltaAddDelta 1.000000"})},
      // A part without morphs says so in red.
      {"source.cr2", "neck", {"Channels for  neck:1", "NO MORPH CHANNELS FOR THIS PART"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.figure) + " " + c.part);
    openDestination(dest);
    if (*c.figure) openSource(copyFigure(c.figure));
    viewChannels(c.part);
    EXPECT_EQ(f.ListChannels.items(), c.expected);
    EXPECT_EQ(f.SelectedPart, c.expected.front().substr(13));
    EXPECT_TRUE(f.PictureCopyToDest.visible());
    EXPECT_TRUE(f.PictureRenameMorph.visible());
  }
  EXPECT_EQ(f.ListChannels.foreColor(), ui::kRed);
}

TEST_F(ChannelViewerTest, RefusalsAndScanFaultsChangeNothing) {
  struct Case {
    const char* what;
    std::string source;  // empty: none opened
    int actor;           // -1: none chosen
    const char *title, *text;
  };
  // A "hip:" line ending in its colon leaves the part without a figure number.
  std::string colon = (tp.files() / "colon.cr2").string();
  writeFile(colon,
            crlf({"{", "\tcomment hip:", "actor hip:1", "\t{", "\t}", "actor hip:1", "\t{", "", "\t}", "}"}));
  const char* choose = "Choose a bodypart first, from the left pane.";
  const Case cases[] = {
      {"no part chosen", "", -1, "Note!", choose},
      {"BODY line", "", 0, "Note!", choose},
      // Two digits are cut to the last one, and no "actor hip:2" stands in the file.
      {"two-digit figure number", copyFigure("source_figure12.cr2"), 1, kAppName, "Run-time error '62':..."},
      {"part name ending in a colon", colon, 1, kAppName, "Run-time error '91':..."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    openDestination(dest);
    if (!c.source.empty()) openSource(c.source);
    f.ListActors.setListIndex(c.actor);
    services.expect(c.title, c.text);
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
  // A drop after the refused drag removes nothing.
  f.ListChannels.setSelected(4, true);
  drop("PictureTrash", "ListChannels");
  EXPECT_EQ(readFile(dest), original);
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

TEST_F(ChannelViewerTest, RightClicksOfTheChannelToolsExplain) {
  const std::pair<const char*, const char*> cases[] = {
      {"PictureViewChannels",
       "Click this button to view channels for a body part and enable re-naming and copying them."},
      {"PictureCopyToDest", "Click this to copy a morph from the source to destination file."},
      {"PictureTrash", "Click this button and then drag things to it."},
  };
  for (const auto& [control, text] : cases) {
    SCOPED_TRACE(control);
    services.expect("Information", text);
    EXPECT_TRUE(fire(control, EventKind::RightClick));
    EXPECT_EQ(services.pending(), 0u);
  }
}

}  // namespace
}  // namespace tolvane::test
