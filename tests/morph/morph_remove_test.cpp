#include <gtest/gtest.h>

#include <array>

#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "text/scratch_file.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

class MorphRemoveTest : public DestinationTest {
 protected:
  // The user turns the trash on and drags the selected lines from a list onto it.
  void dragToTrash(const std::string& list) {
    if (f.PictureTrash.backColor() != ui::kToolOn) fire("PictureTrash", EventKind::Click);
    fire(list, EventKind::Press);
    fire(list, EventKind::Release);
    drop("PictureTrash", list);
  }
};

TEST_F(MorphRemoveTest, RemovesMorphsAndControlBlocks) {
  struct Case {
    const char *name, *figure, *part;
    Lines selected;
    std::string question;  // with {} for the working path, before "  Save changes?"
    Lines list = {};       // empty: as the viewer lists the part
  };
  const Case cases[] = {
      {"remove_morph", "dest.cr2", "chest", {"\tRound"}, "Morph \"Round\" removed from {}."},
      {"remove_control_block",
       "source.cr2",
       "abdomen",
       {"\tFigure: Figure 1"},
       "A morph in \"Slim\" removed from {}."},
      {"remove_two_morphs",
       "dest.cr2",
       "chest",
       {"\tRound", "\tSquare"},
       "Multiple morphs removed from {}. Please remove any ERC channels using these morphs.",
       {"Channels for  chest:1", "\tRound", "\tSquare"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::string path = copyFigure(c.figure);
    openDestination(path);
    viewChannels(c.part);
    if (!c.list.empty()) f.ListChannels.setItems(c.list);
    selectChannels(c.selected);
    services.expect("Success!", text::Replace(c.question, "{}", path) + "  Save changes?", Answer::Yes);
    services.dialog(path);
    dragToTrash("ListChannels");
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(differenceFrom(path, c.name), "");
    EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolRest);
    EXPECT_FALSE(f.ListChannelsDragOn);
    if (c.list.empty()) {
      for (const auto& line : c.selected) EXPECT_EQ(f.ListChannels.indexOf(line), -1) << line;
    }
  }
  // After the first removal the next selected line moves up and is not visited.
  EXPECT_EQ(f.ListChannels.items(), (Lines{"Channels for  chest:1", "\tSquare"}));
}

TEST_F(MorphRemoveTest, NoLeavesTheFileAndTheList) {
  viewChannels("chest");
  selectChannels({"\tRound"});
  services.answer(Answer::No);
  dragToTrash("ListChannels");
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(differenceFrom(tp.work() / "XMorph.txt", "remove_morph"), "");
  EXPECT_NE(f.ListChannels.indexOf("\tRound"), -1);
}

TEST_F(MorphRemoveTest, RefusalsOfTheMorphRemoval) {
  struct Refusal {
    Lines list;
    int selected;
    const char *title, *text;
  };
  const Refusal refusals[] = {
      {partList("chest:1", {"\tRound"}), 1, "Note!", "No part clicked."},
      {partList("abdomen:1", {"\tEMC Channel"}), 2, "Alert!",
       "You cannot delete a morph by choosing the EMC line, please choose another."},
      // A slave holding "rot" and "tran" is sought as an actor named " rotXtranY".
      {emcGroup("chest:1", "rotXtranY", "X", "1"), 4, kAppName, "Run-time error '62':..."},
      // A group whose slave is a dial without targetGeom.
      {emcGroup("BODY:1", "PBMBreathe", "X", "1"), 3, "Error!",
       "This is a Full Body Morph, it cannot be removed!"},
  };
  viewChannels("chest");
  for (const auto& r : refusals) {
    SCOPED_TRACE(r.text);
    f.ListChannels.setItems(r.list);
    f.ListChannels.setSelected(r.selected, true);
    services.expect(r.title, r.text);
    dragToTrash("ListChannels");
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
  }
}

TEST_F(MorphRemoveTest, TrashClickTogglesTheDragOfThePaneThatCanGive) {
  struct Case {
    const char *head, *dragSource;
    bool channels, actors;
  };
  const Case cases[] = {{"ALL CHANNELS", "Actors", false, true},
                        {"ALL CHANNELS", "Channels", false, false},
                        {"Channels for  chest:1", "Actors", true, false},
                        {"BODY PARTS", "Actors", false, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.head) + " " + c.dragSource);
    f.ListChannels.setItems({c.head});
    f.DragSource = c.dragSource;
    fire("PictureTrash", EventKind::Click);
    EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolOn);
    EXPECT_EQ(f.ListChannelsDragOn, c.channels);
    EXPECT_EQ(f.ListActorsDragOn, c.actors);
    // A second click turns the tool off and ends every drag.
    fire("PictureTrash", EventKind::Click);
    EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolRest);
    EXPECT_FALSE(f.ListChannelsDragOn || f.ListActorsDragOn);
  }
}

TEST_F(MorphRemoveTest, RemovesBodyParts) {
  const std::string note =
      "Body part/s removed from CR2.  All additional references to the removed body part/s have been changed "
      "to NULL. Be aware that this may have implications in your parent/child hierarchy and in the weld "
      "lines.";
  const std::array<const char*, 3> cases[] = {{"remove_body_part", "abdomen", "    abdomen:1 * 16"},
                                              {"remove_last_body_part", "neck", "    neck:1 * 26"}};
  for (const auto& [name, part, entry] : cases) {
    SCOPED_TRACE(name);
    openDestination(copyFigure("dest.cr2"));
    selectActor(part);
    services.expect("Alert!", "You are about to remove one or more body parts.  Save changes?", Answer::Yes);
    services.dialog(dest);
    services.expect("Note!", note);
    dragToTrash("ListActors");
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(differenceFrom(dest, name), "");
    EXPECT_EQ(f.ListActors.listCount(), 4);
    EXPECT_EQ(f.ListActors.indexOf(entry), -1);
    EXPECT_EQ(f.LabelFileNameForEditor.caption(), dest);
    EXPECT_EQ(f.LabelFileName.caption(), displayPath(dest));
    EXPECT_EQ(f.LabelFileSize.caption(), " " + std::to_string(text::fileLength(dest)) + " bytes");
    EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolRest);
  }
}

TEST_F(MorphRemoveTest, SeveralBodyPartsLeaveTheFileButOnlyTheLastLeavesTheList) {
  f.ListActors.setSelected(2, true);
  f.ListActors.setSelected(4, true);
  services.expect("Alert!", "You are about to remove one or more body parts.  Save changes?", Answer::Yes);
  std::string saved = (tp.files() / "saved.cr2").string();
  services.dialog(saved);
  services.answer(Answer::OK);
  dragToTrash("ListActors");
  EXPECT_EQ(services.pending(), 0u);
  std::string text = readFile(saved);
  EXPECT_EQ(text.find("actor abdomen:1"), std::string::npos);
  EXPECT_EQ(text.find("actor neck:1"), std::string::npos);
  EXPECT_NE(text.find("actor chest:1"), std::string::npos);
  EXPECT_EQ(f.ListActors.items(),
            (Lines{" BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16", "    chest:1 * 21"}));
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(MorphRemoveTest, BodyPartRemovalRefusalsAndNo) {
  // The BODY line ends the drop quietly.
  f.ListActors.setSelected(0, true);
  dragToTrash("ListActors");
  EXPECT_EQ(services.messages().size(), 0u);
  // No keeps the destination; the scratch copy stays in the Work folder.
  f.ListActors.setSelected(0, false);
  selectActor("hip");
  services.expect("Alert!", "You are about to remove one or more body parts.  Save changes?", Answer::No);
  dragToTrash("ListActors");
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_TRUE(text::fileExists(tp.work() / "cr2.doc"));
  EXPECT_EQ(f.ListActors.listCount(), 5);
  // A part the file no longer holds is a run-time error before any question.
  f.ListActors.setItem(1, "    foot:1 * 11");
  services.expect(kAppName, "Run-time error '62':...");
  dragToTrash("ListActors");
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(f.PictureTrash.backColor(), ui::kToolRest);
}

}  // namespace
}  // namespace tolvane::test
