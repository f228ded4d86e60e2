// The ten builder kinds, each from the form's fields to the block written into the
// destination: which channel it lands in, the block's five lines to the character,
// the keep and replace answers on a channel that has a block already, and a control
// block whose channel or actor is not in the file.
#include "erc/ecm_builder.h"

#include <gtest/gtest.h>

#include "erc_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using ui::ErcKind;

struct KindCase {
  ErcKind kind;
  // The fields as the steps leave them: slave, figure, master, part, ratio, and the keys.
  const char *slave, *figure, *master, *part, *ratio, *controllingKey, *controlledKey;
  const char* channel;  // the header of the channel the block goes into
  // The block's figure, part and master lines, which the block's first line and its
  // ratio line ("deltaAddDelta" and the ratio) frame.
  const char *writtenFigure, *writtenPart, *writtenMaster;
  // What follows the channel's interpStyleLocked line.
  Lines block() const {
    return {"valueOpDeltaAdd", writtenFigure, writtenPart, writtenMaster,
            std::string("deltaAddDelta ") + ratio};
  }
};

const KindCase kKinds[] = {
    {ErcKind::PBM, "Wide", "Ava", "PBMBreathe", "BODY", "1.000000", "", "", "\t\ttargetGeom Wide", "Ava",
     "BODY", "PBMBreathe"},
    {ErcKind::CM, "Wide:1", " Ava", "Narrow", " hip", "1.000000", "", "", "\t\ttargetGeom Wide", " Ava",
     " hip", "Narrow"},
    {ErcKind::JCM, "Lift:1", "Ava", "xrot lShldr", "lShldr", "0.010000", "", "", "\t\ttargetGeom Lift", "Ava",
     "lShldr", "xrot"},
    {ErcKind::MCM, "Wide:1", "Ava", "Lift", "lShldr", "0.5", "", "", "\t\ttargetGeom Wide", "Ava", "lShldr",
     "Lift"},
    {ErcKind::JCJ, "yrot hip:1 GetStringRes(1028,10) [Y]", " Ava ", "zrot lShldr", " lShldr ", "1.5",
     "zrot lShldr", "yrot hip:1 GetStringRes(1028,10) [Y]", "\t\trotateY yrot", "Ava", "lShldr", "zrot"},
    {ErcKind::MCJ, "yrot hip[Y]", "Ava ", "Lift", "lShldr", "0.010000", "", "yrot hip[Y]", "\t\trotateY yrot",
     "Ava", "lShldr", "Lift"},
    {ErcKind::JCT, "xtran hip:1 xTran [X]", "Ava", "zrot lShldr", "lShldr", "0.001000", "zrot lShldr",
     "xtran hip:1 xTran [X]", "\t\ttranslateX xtran", "Ava", "lShldr", "zrot"},
    {ErcKind::MCT, "xtran hip:1 xTran [X]", "Ava", "Lift", " lShldr", "0.010000", "", "xtran hip:1 xTran [X]",
     "\t\ttranslateX xtran", "Ava", "lShldr", "Lift"},
    {ErcKind::TCM, "Lift:1", "Ava", "ytran lShldr", "lShldr", "0.010000", "Lift:1", "ytran lShldr",
     "\t\ttargetGeom Lift", "Ava", "lShldr", "ytran"},
    {ErcKind::TCJ, "ytran lShldr:1 yTran [Y]", "Ava", "xtran hip", "hip", "1.000000", "",
     "ytran lShldr:1 yTran [Y]", "\t\ttranslateY ytran", "Ava", "hip", "xtran"},
};

void PrintTo(const KindCase& c, std::ostream* os) { *os << ui::ercKindInfo(c.kind).caption; }

class BuilderTest : public ErcTest {
 protected:
  ui::FormECM& form() { return tp->formECM; }
  void setUpForm(const KindCase& c) {
    form().reset();
    form().kindLabel(c.kind).setVisible(true);
    form().TextPBM1.setText(c.slave);
    form().TextPBM2.setText(c.figure);
    form().TextPBM3.setText(c.master);
    form().TextPBM4.setText(c.part);
    form().TextPBMRatio.setText(c.ratio);
    form().ControllingKey = c.controllingKey;
    form().ControlledKey = c.controlledKey;
  }
};

class BuilderKinds : public BuilderTest, public ::testing::WithParamInterface<KindCase> {};

TEST_P(BuilderKinds, WritesItsBlockIntoItsChannel) {
  const KindCase& c = GetParam();
  setUpForm(c);
  services.dialog(dest);
  fire("FormECM", "TextPBMRatio", EventKind::Enter);
  ASSERT_EQ(services.messages().size(), 0u) << lastMessage();
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), expectedWith(c.channel, c.block())) << firstDifference(dest, data("figure.cr2"));
  ASSERT_EQ(services.dialogs().size(), 1u);
  EXPECT_EQ(services.dialogs()[0].fileName, dest);
  EXPECT_TRUE(form().WorkDone);
  EXPECT_TRUE(form().LabelDone.visible());
  EXPECT_FALSE(form().LabelWait.visible());
  EXPECT_FALSE(std::filesystem::exists(tp.work() / "EMC.tmp"));
}

INSTANTIATE_TEST_SUITE_P(TenKinds, BuilderKinds, ::testing::ValuesIn(kKinds), [](const auto& info) {
  return std::string(ui::ercKindInfo(info.param.kind).option).substr(6);
});

// Belly carries a block already: the partial body morph replaces it, the joint
// controlled morph keeps it and adds its own behind.
TEST_F(BuilderTest, AnExistingBlockIsReplacedOrKeptByFamily) {
  const Lines existing = {"valueOpDeltaAdd", "Figure 1", "BODY", "PBMBreathe", "deltaAddDelta 1.000000"};
  struct Case {
    ErcKind kind;
    const char* question;
    std::size_t dropped;
    bool keeps;
  };
  const Case cases[] = {{ErcKind::PBM, "There is already a PBM here, do you want to add another?", 5, false},
                        {ErcKind::CM, "There is already a CM here, do you want to add another?", 5, false},
                        {ErcKind::JCM, "There is already a JCM here, do you want to add another?", 5, true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(ui::ercKindInfo(c.kind).caption);
    writeFile(dest, original);
    KindCase k{c.kind, "Belly:1", "Ava", "Grin", "head", "0.25", "", "", "", "", "", ""};
    setUpForm(k);
    services.queue(ui::ScriptedAnswer::message("Question", c.question, Answer::Yes));
    services.dialog(dest);
    fire("FormECM", "TextPBMRatio", EventKind::Enter);
    EXPECT_EQ(services.pending(), 0u) << lastMessage();
    EXPECT_EQ(services.messages().back().icon, ui::Icon::Exclamation);
    Lines block = {"valueOpDeltaAdd", "Ava", "head", "Grin", "deltaAddDelta 0.25"};
    if (c.keeps) block.insert(block.begin(), existing.begin(), existing.end());
    EXPECT_EQ(readFile(dest), expectedWith("\t\ttargetGeom Belly", block, c.dropped));
  }
}

TEST_F(BuilderTest, NoToTheQuestionLeavesEverything) {
  setUpForm({ErcKind::MCM, "Belly:1", "Ava", "Wide", "hip", "1", "", "", "", "", "", ""});
  services.queue(ui::ScriptedAnswer::message(
      "Question", "There is already a JCM here, do you want to add another?", Answer::No));
  fire("FormECM", "TextPBMRatio", EventKind::Enter);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_TRUE(services.dialogs().empty());
  EXPECT_EQ(readFile(dest), original);
  EXPECT_FALSE(std::filesystem::exists(tp.work() / "EMC.tmp"));
  EXPECT_FALSE(form().LabelWait.visible());
  EXPECT_FALSE(tp->formECM.busy());
}

// A control block for a channel, actor or figure the destination does not have.
TEST_F(BuilderTest, WhatIsNotInTheFileIsReported) {
  const KindCase cases[] = {
      {ErcKind::PBM, "Narrow", "Ava", "X", "BODY", "1", "", "", "", "", "", ""},
      {ErcKind::CM, "Wide:2", "Ava", "X", "BODY", "1", "", "", "", "", "", ""},
      {ErcKind::JCJ, "xrot chest:1 bend [X]", "Ava", "X", "BODY", "1", "", "xrot chest:1 bend [X]", "", "",
       "", ""},
      // No ":" in the dial.
      {ErcKind::JCJ, "xrot hip", "Ava", "X", "BODY", "1", "", "xrot hip", "", "", "", ""},
      {ErcKind::JCT, "ztran hip:1 zTran [Z]", "Ava", "X", "BODY", "1", "", "ztran hip:1 zTran [Z]", "", "",
       "", ""},
      {ErcKind::TCM, "Nose:1", "Ava", "X", "BODY", "1", "Nose:1", "xtran", "", "", "", ""},
  };
  for (const KindCase& c : cases) {
    SCOPED_TRACE(c.slave);
    setUpForm(c);
    services.answer(Answer::OK);
    fire("FormECM", "TextPBMRatio", EventKind::Enter);
    EXPECT_EQ(lastMessage(), "Error!|Something you entered was not found.");
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
    EXPECT_FALSE(std::filesystem::exists(tp.work() / "EMC.tmp"));
    EXPECT_FALSE(tp->formECM.busy());
  }
}

TEST_F(BuilderTest, AMissingDestinationIsReportedToo) {
  std::filesystem::remove(dest);
  setUpForm(kKinds[0]);
  services.answer(Answer::OK);
  fire("FormECM", "TextPBMRatio", EventKind::Enter);
  EXPECT_EQ(lastMessage(), "Error!|Something you entered was not found.");
  EXPECT_FALSE(std::filesystem::exists(dest));
}

}  // namespace
}  // namespace tolvane::test
