#include <gtest/gtest.h>

#include "core/list_readers.h"
#include "core/scratch_file.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using Lines = std::vector<std::string>;

class MorphRenameTest : public MorphTest {
 protected:
  void SetUp() override {
    openDestination(copyFigure("dest.cr2"));
    original = readFile(dest);
  }
  // The first click offers the kinds; the option is chosen before the second.
  void chooseKind(bool bodyPart) {
    fire("PictureRenameMorph", EventKind::Click);
    ASSERT_TRUE(f.OptionChannelRename.visible());
    ASSERT_TRUE(f.OptionBodyPartRename.visible());
    f.OptionChannelRename.setValue(!bodyPart);
    f.OptionBodyPartRename.setValue(bodyPart);
  }
  std::string original;
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
  EXPECT_EQ(f.LabelFileName.caption(), displayPath(dest));
  EXPECT_EQ(f.LabelFileSize.caption(), " " + std::to_string(core::fileLength(dest)) + " bytes");
  EXPECT_FALSE(f.TextMorphRename.visible());
  EXPECT_EQ(f.TextMorphRename.text(), "");
  EXPECT_FALSE(f.OptionChannelRename.visible());
}

TEST_F(MorphRenameTest, BodyPartRenameCutsEveryLineThatHoldsTheName) {
  selectActor("chest");
  chooseKind(true);
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
  EXPECT_TRUE(core::fileExists(tp.work() / "RenMorph.txt"));
  EXPECT_EQ(f.ListChannels.list(4), "\tRound");
  EXPECT_FALSE(f.OptionBodyPartRename.visible());

  // A cancelled typing ends the tool before the rewrite.
  core::deleteIgnoringErrors(tp.work() / "RenMorph.txt");
  chooseKind(false);
  services.queue(ui::ScriptedAnswer::inputCancel());
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_FALSE(core::fileExists(tp.work() / "RenMorph.txt"));
  EXPECT_FALSE(f.TextMorphRename.visible());
  EXPECT_FALSE(f.OptionChannelRename.visible());
}

TEST_F(MorphRenameTest, Refusals) {
  struct Refusal {
    const char* what;
    bool bodyPart;
    Lines channels;
    int channel;
    int actor;
    const char* title;
    const char* text;
  };
  const Refusal refusals[] = {
      {"head line",
       false,
       {"Channels for  hip:1", "", "\tWide"},
       0,
       1,
       "Note!",
       "Click on a morph to be renamed."},
      {"empty line",
       false,
       {"Channels for  hip:1", "", "\tWide"},
       1,
       1,
       "Note!",
       "Click on a morph to be renamed."},
      {"EMC group",
       false,
       {"Channels for  abdomen:1", "", "\tEMC Channel", "\tSlave: Slim", "\tMaster: B"},
       3,
       2,
       "Note!",
       "You cannot rename an EMC channel with this tool yet."},
      {"BODY line", true, {"ALL CHANNELS"}, -1, 0, "Note!", "Click on a body part to be renamed."},
      {"morph with BODY line",
       false,
       {"Channels for  hip:1", "", "\tWide"},
       2,
       0,
       "Note!",
       "Click on a body part to be renamed."},
  };
  for (const auto& r : refusals) {
    SCOPED_TRACE(r.what);
    setChannels(r.channels);
    if (r.channel >= 0) f.ListChannels.setListIndex(r.channel);
    f.ListActors.setListIndex(r.actor);
    chooseKind(r.bodyPart);
    services.expect(r.title, r.text);
    fire("PictureRenameMorph", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_FALSE(f.OptionChannelRename.visible());
    EXPECT_FALSE(f.TextMorphRename.visible());
  }
  openSource(copyFigure("source.cr2"));
  setChannels({"Channels for  hip:1", "", "\tNarrow"});
  f.ListChannels.setListIndex(2);
  chooseKind(false);
  services.expect(
      "Information",
      "To rename a morph channel in the righthand pane you must have the same file open in both panes.");
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(MorphRenameTest, KeyNotInTheFileEndsWithARunTimeError) {
  // The last line of a group passes the checks and is no targetGeom id.
  setChannels({"Channels for  abdomen:1", "", "\tEMC Channel", "\tSlave: Slim", "\tMaster: PBMBreathe",
               "\tFigure: Figure 1", "\tMaster Part: BODY:1", "\tdeltaAddDelta 0.500000", ""});
  f.ListChannels.setListIndex(7);
  selectActor("abdomen");
  chooseKind(false);
  services.input("New");
  services.expect(kAppName, "Run-time error '62':...");
  fire("PictureRenameMorph", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
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
