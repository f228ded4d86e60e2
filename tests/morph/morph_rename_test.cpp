#include <gtest/gtest.h>

#include "workspace/list_readers.h"
#include "text/scratch_file.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

class MorphRenameTest : public DestinationTest {
 protected:
  // The first click offers the kinds; the user turns one option on before the second,
  // and that turns the other off.
  void chooseKind(bool bodyPart) {
    fire("PictureRenameMorph", EventKind::Click);
    ASSERT_TRUE(f.OptionChannelRename.visible());
    ASSERT_TRUE(f.OptionBodyPartRename.visible());
    (bodyPart ? f.OptionBodyPartRename : f.OptionChannelRename).setValue(true);
  }
};

TEST_F(MorphRenameTest, RenamesTheFirstMorphOfThatNameInTheFile) {
  viewChannels("neck");
  selectChannels({"\tSquare"});  // neck's Square; chest's stands first in the file
  chooseKind(false);
  services.input("Boxy");
  services.expect("Success!",
                  "Morph \"Square\" renamed in " + f.LabelFileName.caption() + " as \"Boxy\"  Save changes?",
                  Answer::Yes);
  services.dialog(dest);
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(differenceFrom(dest, "rename_morph"), "");
  EXPECT_EQ(f.ListChannels.items(), (Lines{"Channels for  neck:1", "", "\tBoxy"}));
  EXPECT_EQ(f.LabelFileSize.caption(), " " + std::to_string(text::fileLength(dest)) + " bytes");
  EXPECT_FALSE(f.TextMorphRename.visible());
  EXPECT_EQ(f.TextMorphRename.text(), "");
  EXPECT_FALSE(f.OptionChannelRename.visible());
}

TEST_F(MorphRenameTest, BodyPartRenameCutsEveryLineThatHoldsTheName) {
  selectActor("chest");
  ASSERT_TRUE(f.OptionChannelRename.value());  // as the form comes up
  chooseKind(true);
  EXPECT_FALSE(f.OptionChannelRename.value());
  services.input("torso");
  services.expect(
      "Success!",
      "Body Part \"chest\" renamed in " + f.LabelFileName.caption() + " as \"torso\"  Save changes?",
      Answer::Yes);
  std::string renamed = (tp.files() / "renamed.cr2").string();
  services.dialog(renamed);
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(differenceFrom(renamed, "rename_body_part"), "");
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(f.ListActors.list(3), "    torso:1 * 21");
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), renamed);
  EXPECT_EQ(f.LabelFileName.caption(), displayPath(renamed));
  EXPECT_EQ(f.LabelChannelFileName.caption(), f.LabelFileName.caption());
  EXPECT_EQ(f.RenameWaitState, 481);
}

TEST_F(MorphRenameTest, NoKeepsTheFileAndTheLists) {
  viewChannels("chest");
  selectChannels({"\tRound"});
  chooseKind(false);
  services.input("Ball");
  services.answer(Answer::No);
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_TRUE(text::fileExists(tp.work() / "RenMorph.txt"));
  EXPECT_EQ(f.ListChannels.list(4), "\tRound");
  EXPECT_FALSE(f.OptionBodyPartRename.visible());

  // A cancelled typing ends the tool before the rewrite.
  text::deleteIgnoringErrors(tp.work() / "RenMorph.txt");
  chooseKind(false);
  services.queue(ui::ScriptedAnswer::inputCancel());
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_FALSE(text::fileExists(tp.work() / "RenMorph.txt"));
  EXPECT_FALSE(f.TextMorphRename.visible());
  EXPECT_FALSE(f.OptionChannelRename.visible());
}

TEST_F(MorphRenameTest, RefusalsLeaveTheFile) {
  struct Refusal {
    const char* what;
    bool bodyPart, sourceOpen;
    Lines channels;
    int channel, actor;
    const char *title, *text;
    const char* typed = nullptr;  // the new name, where the tool gets that far
  };
  // The last line of a group passes the checks and is no targetGeom id.
  Lines group = emcGroup("abdomen:1", "Slim", "PBMBreathe", "0.500000");
  group.push_back("");
  const Lines hip = partList("hip:1", {"\tWide"});
  const char* morphFirst = "Click on a morph to be renamed.";
  const char* partFirst = "Click on a body part to be renamed.";
  const Refusal refusals[] = {
      {"head line", false, false, hip, 0, 1, "Note!", morphFirst},
      {"empty line", false, false, hip, 1, 1, "Note!", morphFirst},
      {"EMC group", false, false, partList("abdomen:1", {"\tEMC Channel", "\tSlave: Slim", "\tMaster: B"}), 3,
       2, "Note!", "You cannot rename an EMC channel with this tool yet."},
      {"BODY line", true, false, {"ALL CHANNELS"}, -1, 0, "Note!", partFirst},
      {"morph with BODY line", false, false, hip, 2, 0, "Note!", partFirst},
      {"other file in the source pane", false, true, partList("hip:1", {"\tNarrow"}), 2, 1, "Information",
       "To rename a morph channel in the righthand pane you must have the same file open in both panes."},
      {"key not in the file", false, false, group, 7, 2, kAppName, "Run-time error '62':...", "New"},
  };
  for (const auto& r : refusals) {
    SCOPED_TRACE(r.what);
    openDestination(dest);
    if (r.sourceOpen) openSource(copyFigure("source.cr2"));
    f.ListChannels.setItems(r.channels);
    if (r.channel >= 0) f.ListChannels.setListIndex(r.channel);
    f.ListActors.setListIndex(r.actor);
    chooseKind(r.bodyPart);
    if (r.typed) services.input(r.typed);
    services.expect(r.title, r.text);
    fire("PictureRenameMorph", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    // The run-time error leaves the options and the name box shown.
    EXPECT_EQ(f.OptionChannelRename.visible(), r.typed != nullptr);
    EXPECT_EQ(f.TextMorphRename.visible(), r.typed != nullptr);
    EXPECT_EQ(readFile(dest), original);
  }
}

TEST_F(MorphRenameTest, EnterInTheNameBoxEndsTheWait) {
  f.RenameWaitState = 48;
  EventArgs key;
  key.keyCode = 65;
  fire("TextMorphRename", EventKind::Key, key);
  EXPECT_EQ(f.RenameWaitState, 48);
  key.keyCode = 13;
  fire("TextMorphRename", EventKind::Key, key);
  EXPECT_EQ(f.RenameWaitState, 49);
}

}  // namespace
}  // namespace tolvane::test
