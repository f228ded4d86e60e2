// The channel listing of FormListEMCs and the change of one control ratio: the list
// and ratio table of a small figure, the refusals, what is written for any typed text,
// the save that only the listed file itself takes, and a file changed under the list.
#include "erc/emc_listing.h"

#include <gtest/gtest.h>

#include "erc_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

const Lines kListing = {"",
                        "\tWide",
                        "",
                        "\tEMC Channel",
                        "\tSlave: Belly",
                        "\tMaster: PBMBreathe",
                        "\tFigure: Figure 1",
                        "\tMaster Part: ODY",
                        "\tdeltaAddDelta 1.000000",
                        "",
                        "\tLift"};
constexpr int kRatioIndex = 8;
constexpr int kRatioLine = 115;  // the file's line of that ratio

class EmcListingTest : public ErcTest {
 protected:
  ui::FormListEMCs& form() { return tp->formListEMCs; }
  void openList() { fire("Opening", "PictureChangeRatio", EventKind::Click); }
  void chooseRatio() {
    form().ListEMCs.setListIndex(kRatioIndex);
    fire("FormListEMCs", "ListEMCs", EventKind::Click);
  }
  void enterRatio(const std::string& value) {
    form().Text1.setText(value);
    fire("FormListEMCs", "Text1", EventKind::Enter);
  }
  // The figure as it was, with the ratio line replaced.
  std::string withRatioLine(const std::string& line) {
    Lines lines = linesOf(data("figure.cr2"));
    lines[kRatioLine - 1] = line;
    return crlf(lines);
  }
};

TEST_F(EmcListingTest, ListsMorphsAndControlGroupsWithTheRatioTable) {
  openList();
  EXPECT_TRUE(form().visible());
  EXPECT_EQ(form().LabelTitle.caption(), dest);
  EXPECT_EQ(form().ListEMCs.items(), kListing);
  EXPECT_FALSE(form().Text1.visible());
  ASSERT_EQ(form().RatioTable.size(), size_t(kRatioIndex + 2));
  EXPECT_EQ(form().RatioTable[kRatioIndex + 1], "\t\t\tdeltaAddDelta 1.000000# 115");
  for (int i = 0; i <= kRatioIndex; ++i) EXPECT_EQ(form().RatioTable[i], "") << i;
}

TEST_F(EmcListingTest, AFileWithoutChannelsListsARedNote) {
  writeFile(dest, crlf({"{", "actor BODY:1", "\t{", "\t}", "}"}));
  openList();
  EXPECT_EQ(form().ListEMCs.items(), Lines{"NO CHANNELS IN CR2"});
  EXPECT_EQ(form().ListEMCs.foreColor(), 0x0000FFu);
}

TEST_F(EmcListingTest, ClicksAndEnterOutsideARatioLineAreRefused) {
  openList();
  for (int i = 0; i < 3; ++i) services.answer(Answer::OK);
  fire("FormListEMCs", "ListEMCs", EventKind::Click);
  EXPECT_EQ(lastMessage(), "Note!|Click on a ratio to be changed.");
  form().ListEMCs.setListIndex(4);
  fire("FormListEMCs", "ListEMCs", EventKind::Click);
  EXPECT_EQ(lastMessage(), "Note!|Click on the line that lists the ratio you want to change.");
  EXPECT_FALSE(form().Text1.visible());
  enterRatio("2");
  EXPECT_EQ(lastMessage(), "Error!|Click on a DELTA line to change the ratio.");
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(services.pending(), 0u);
}

// Whatever is typed is written as it stands, and the listed file takes it.
TEST_F(EmcListingTest, AnyTypedRatioIsWrittenAsItStands) {
  for (const char* value : {"0.5", "abc", "1e400", ""}) {
    SCOPED_TRACE(value);
    writeFile(dest, original);
    openList();
    chooseRatio();
    EXPECT_TRUE(form().Text1.visible());
    EXPECT_TRUE(form().Label1.visible());
    EXPECT_EQ(form().Text1.text(), "1.000000");
    services.queue(ui::ScriptedAnswer::message(
        "Note!", std::string("Control Ratio changed to ") + value + ".  Save changes?", Answer::Yes));
    services.dialog(dest);
    enterRatio(value);
    EXPECT_EQ(services.pending(), 0u) << lastMessage();
    EXPECT_EQ(readFile(dest), withRatioLine(std::string("\t\t\tdeltaAddDelta ") + value));
    EXPECT_FALSE(form().Text1.visible());
    EXPECT_EQ(form().Text1.text(), "");
    EXPECT_FALSE(std::filesystem::exists(tp.work() / "ChangeRatio.txt"));
    // The list is not rebuilt: it shows the old ratio.
    EXPECT_EQ(form().ListEMCs.list(kRatioIndex), "\tdeltaAddDelta 1.000000");
  }
}

TEST_F(EmcListingTest, OnlyTheListedFileTakesTheChange) {
  struct Case {
    const char* name;
    Answer answer;
    bool dialog;
    std::string chosen;
  };
  const Case cases[] = {{"No", Answer::No, false, ""},
                        {"cancelled dialog", Answer::Yes, true, ""},
                        {"another name", Answer::Yes, true, "other.cr2"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    openList();
    chooseRatio();
    services.answer(c.answer);
    if (c.dialog && c.chosen.empty()) services.cancelDialog();
    if (c.dialog && !c.chosen.empty()) services.dialog((tp.files() / c.chosen).string());
    enterRatio("7");
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
    EXPECT_FALSE(std::filesystem::exists(tp.files() / "other.cr2"));
    // The change stays in the scratch file.
    EXPECT_EQ(readFile(tp.work() / "ChangeRatio.txt"), withRatioLine("\t\t\tdeltaAddDelta 7"));
  }
}

TEST_F(EmcListingTest, AFileChangedSinceTheListingIsLeftAlone) {
  openList();
  chooseRatio();
  Lines lines = linesOf(dest);
  lines.insert(lines.begin() + 10, "\t");  // every line below moves down
  writeFile(dest, crlf(lines));
  std::string changed = readFile(dest);
  services.answerRunTimeErrors(true);
  enterRatio("3");
  EXPECT_EQ(services.runTimeErrorReports(), 1);
  EXPECT_NE(lastMessage().find("The file changed since it was listed"), std::string::npos) << lastMessage();
  EXPECT_EQ(readFile(dest), changed);
  EXPECT_FALSE(std::filesystem::exists(tp.work() / "ChangeRatio.txt"));
}

TEST_F(EmcListingTest, RightClickExplains) {
  services.answer(Answer::OK);
  fire("Opening", "PictureChangeRatio", EventKind::RightClick);
  EXPECT_EQ(lastMessage(), "Information|Click this to change the control ratio for an EMC morph.");
  EXPECT_FALSE(form().visible());
}

}  // namespace
}  // namespace tolvane::test
