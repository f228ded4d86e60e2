// The builder driven as the user drives it: PictureEMC, the kind in DialogERC, Ready,
// then double clicks and Enter in FormECM. The lists each step fills, the figure name
// warnings, and the joint-controlled joint whose ratio comes from the dials' limits.
#include "erc/ecm_form.h"

#include <gtest/gtest.h>

#include "erc/ecm_lists.h"
#include "erc_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using ui::ErcKind;

const Lines kRotations = {"xrot BODY:1 xrot [X]", "yrot hip:1 GetStringRes(1028,10) [Y]",
                          "xrot lShldr:1 bend [X]", "zrot lShldr:1 side [Z]"};

class BuilderFormTest : public ErcTest {
 protected:
  ui::FormECM& form() { return tp->formECM; }
  void start(ErcKind kind) {
    fire("Opening", "PictureEMC", EventKind::Click);
    ASSERT_TRUE(tp->dialogERC.visible());
    tp->dialogERC.option(kind).setValue(true);
    fire("DialogERC", "LabelDone", EventKind::Click);
    ASSERT_TRUE(form().visible());
  }
  void pick(ui::ListBox& list, const std::string& line) { dblClick("FormECM", list, line); }
};

TEST_F(BuilderFormTest, EachKindShowsItsLabelRatioAndList) {
  struct Case {
    ErcKind kind;
    const char* ratio;
    Lines list;
  };
  const Lines translations = {"xtran hip:1 xTran [X]", "ytran lShldr:1 yTran [Y]"};
  const Case cases[] = {{ErcKind::PBM, "1.000000", {"Wide", "Belly", "Lift"}},
                        {ErcKind::JCM, "0.010000", {"Wide:1", "Belly:1", "Lift:1"}},
                        {ErcKind::MCM, "0.010000", {"Wide:1", "Belly:1", "Lift:1"}},
                        {ErcKind::JCJ, "1.000000", kRotations},
                        {ErcKind::MCJ, "0.010000", kRotations},
                        {ErcKind::JCT, "0.001000", translations},
                        {ErcKind::MCT, "0.010000", translations},
                        {ErcKind::TCM, "0.010000", translations},
                        {ErcKind::TCJ, "1.000000", translations}};
  for (const Case& c : cases) {
    SCOPED_TRACE(ui::ercKindInfo(c.kind).caption);
    start(c.kind);
    EXPECT_EQ(form().visibleKind(), c.kind);
    EXPECT_EQ(form().kindLabel(c.kind).caption(), ui::ercKindInfo(c.kind).caption);
    EXPECT_EQ(form().TextPBMRatio.text(), c.ratio);
    EXPECT_EQ(form().ListControlledMorph.items(), c.list);
    EXPECT_TRUE(form().LabelMCControled.visible());
    EXPECT_FALSE(form().TextPBMRatio.visible());
  }
  EXPECT_EQ(form().ListMinMax.listCount(), 6);
  EXPECT_EQ(form().ListMinMax.list(1), "xtran hip:1 xTran [X]*\t\t\tmin -1");
  EXPECT_EQ(form().ListMinMax.list(2), "xtran hip:1 xTran [X]*\t\t\tmax 1");
  EXPECT_TRUE(services.messages().empty()) << lastMessage();
}

TEST_F(BuilderFormTest, AConformingMorphNeedsOtherFigures) {
  services.answer(Answer::OK);
  start(ErcKind::CM);
  EXPECT_EQ(lastMessage(), "Note!|There are no morphs in the other figures for CM to work with!");
  EXPECT_EQ(form().ListControlledMorph.listCount(), 0);
}

// The whole road of a joint-controlled morph, saved under a new name.
TEST_F(BuilderFormTest, AJointControlledMorphStepByStep) {
  start(ErcKind::JCM);
  pick(form().ListControlledMorph, "Lift:1");
  EXPECT_EQ(form().TextPBM1.text(), "Lift:1");
  EXPECT_TRUE(form().ListConFigECM.visible());
  EXPECT_FALSE(form().LabelMCControled.visible());
  fire("FormECM", "TextPBM1", EventKind::Enter);
  EXPECT_EQ(form().ListConFigECM.items(), Lines{"Ava"});
  pick(form().ListConFigECM, "Ava");
  EXPECT_EQ(form().TextPBM2.text(), "Ava");
  EXPECT_TRUE(form().LabelMCMaster.visible());
  EXPECT_FALSE(form().ListConFigECM.visible());
  EXPECT_EQ(form().ListControlledMorph.items(), kRotations);  // the dials of its own figure
  pick(form().ListControlledMorph, "xrot lShldr:1 bend [X]");
  EXPECT_EQ(form().TextPBM3.text(), "xrot lShldr");
  EXPECT_EQ(form().MasterFigure, "1 bend [X]");
  // The body parts are read by fields: the BODY declaration's tab-only line is empty,
  // so the list holds the single blank of the definitions.
  EXPECT_EQ(form().ListActorsECM.items(), Lines{" "});
  pick(form().ListActorsECM, " ");
  EXPECT_EQ(form().TextPBM4.text(), " ");
  EXPECT_TRUE(form().TextPBMRatio.visible());
  std::string saved = (tp.files() / "jcm.cr2").string();
  services.dialog(saved);
  fire("FormECM", "TextPBMRatio", EventKind::Enter);
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(readFile(saved), expectedWith("\t\ttargetGeom Lift",
                                          {"valueOpDeltaAdd", "Ava", " ", "xrot", "deltaAddDelta 0.010000"}));
  EXPECT_TRUE(form().LabelDone.visible());
  fire("FormECM", "LabelDone", EventKind::Click);
  EXPECT_FALSE(form().visible());
  EXPECT_TRUE(tp->dialogERC.visible());
  EXPECT_EQ(tp->dialogERC.selectedKind(), ErcKind::JCM);
}

TEST_F(BuilderFormTest, APartialBodyMorphTakesTheFigureNameAndWarns) {
  Lines lines = linesOf(dest);
  std::replace(lines.begin(), lines.end(), std::string("\tname Ava"), std::string("\tname Figure 1"));
  writeFile(dest, crlf(lines));
  start(ErcKind::PBM);
  services.answer(Answer::OK);
  pick(form().ListControlledMorph, "Wide");
  EXPECT_EQ(form().TextPBM2.text(), "Figure 1");
  EXPECT_EQ(
      lastMessage(),
      "Note!|You should not use Figure 1, Figure 2 etc for the name of the controlling figure. If the figure "
      "is renamed later, the EMC won't work. Be careful.");
  services.answer(Answer::OK);
  form().ListConFigECM.setItems({"figure 2"});
  pick(form().ListConFigECM, "figure 2");
  EXPECT_EQ(
      lastMessage(),
      "Note!|You should not use figure 1, figure 2 etc for the name of the controlling figure. If the figure "
      "is renamed later, the ECM won't work.  Be careful.");
  EXPECT_EQ(services.pending(), 0u);
}

// The ratio of a joint-controlled joint: each row holding a key gives the low value
// seven characters behind its "*" and the row behind it the high one; later rows win.
TEST_F(BuilderFormTest, AJointControlledJointComputesItsRatioAndBuildsAtOnce) {
  start(ErcKind::JCJ);
  pick(form().ListControlledMorph, "yrot hip:1 GetStringRes(1028,10) [Y]");
  pick(form().ListConFigECM, "Ava");
  pick(form().ListControlledMorph, "zrot lShldr:1 side [Z]");
  services.dialog(dest);
  pick(form().ListActorsECM, " ");
  // Master: the last row with "zrot lShldr" holds max 40, the row behind it is past
  // the list (1). Slave: the last hip row holds max 45, the row behind it has no "*"
  // and no number (1). (1 - 45) / (1 - 40).
  EXPECT_EQ(form().TextPBMRatio.text(), "1.12820512820513");
  EXPECT_EQ(form().LabelPBMRatio.caption(), "Changing this ratio is not recommended.");
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  EXPECT_EQ(readFile(dest), expectedWith("\t\trotateY yrot",
                                         {"valueOpDeltaAdd", "Ava", "", "zrot", "deltaAddDelta 1.12820512820513"}));
}

TEST(JointRatio, LimitsAndZeros) {
  struct Case {
    const char* name;
    Lines rows;
    double ratio;
  };
  auto dial = [](const std::string& d, const std::string& min, const std::string& max) {
    return Lines{d, d + "*\t\t\tmin " + min, d + "*\t\t\tmax " + max};
  };
  const Case cases[] = {
      // The master's last row is followed by the slave's dial line: its high value is 1.
      {"master first", join({dial("M", "-10", "30"), dial("S", "-5", "5")}), (1 - 5.0) / (1 - 30.0)},
      {"slave first", join({dial("S", "-5", "5"), dial("M", "-10", "30")}), (1 - 5.0) / (1 - 30.0)},
      {"zero limits count as 1", join({dial("S", "0", "0"), dial("M", "0", "2")}), (1 - 1.0) / (1 - 2.0)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_DOUBLE_EQ(erc::jointRatio(c.rows, "M", "S"), c.ratio);
  }
  // A limit beyond the double range overflows.
  EXPECT_EQ(runTimeErrorOf([&] { erc::jointRatio(join({dial("S", "1", "2"), dial("M", "1e400", "3")}), "M", "S"); }),
            6);
  // Equal master values leave no range.
  EXPECT_EQ(
      runTimeErrorOf([&] { erc::jointRatio(join({dial("S", "1", "2"), dial("M", "1", "0")}), "M", "S"); }), 11);
}

TEST_F(BuilderFormTest, ListsOfTheFile) {
  EXPECT_EQ(erc::ownFigureNumber(dest), "1");
  EXPECT_EQ(erc::listFigureNames(dest), Lines{"Ava"});
  EXPECT_EQ(erc::listBodyParts(dest), Lines{" "});
  // With declarations whose second field holds text, each part is listed.
  Lines lines = linesOf(dest);
  lines[8] = "\tstorageOffset 0 0 0";
  writeFile(dest, crlf(lines));
  EXPECT_EQ(erc::listBodyParts(dest), (Lines{"BODY:1", "hip:1", "lShldr:1", " "}));
  // Conforming morphs come from the other figures only.
  std::replace(lines.begin(), lines.end(), std::string("\tparent BODY:1"), std::string("\tparent BODY:2"));
  writeFile(dest, crlf(lines));
  EXPECT_EQ(erc::listMorphs(dest, ErcKind::CM), (Lines{"Wide:2", "Belly:2"}));
  // A file without a figure block has no number to read.
  writeFile(dest, crlf({"{", "actor BODY:1", "}"}));
  EXPECT_EQ(runTimeErrorOf([&] { erc::ownFigureNumber(dest); }), 62);
}

TEST_F(BuilderFormTest, PicturesExplainAndCancelCloses) {
  services.answer(Answer::OK);
  fire("Opening", "PictureEMC", EventKind::RightClick);
  EXPECT_EQ(lastMessage(), "Information|Click this to work with Extended Remote Control Morphs.");
  tp->opening.PictureTrash.setBackColor(ui::kToolOn);
  fire("Opening", "PictureEMC", EventKind::Click);
  EXPECT_EQ(tp->opening.PictureTrash.backColor(), ui::kToolRest);
  fire("DialogERC", "LabelCancel", EventKind::Click);
  EXPECT_FALSE(tp->dialogERC.visible());
}

}  // namespace
}  // namespace tolvane::test
