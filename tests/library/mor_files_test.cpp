#include "library/mor_files.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace tolvane::test {
namespace {

// A channel of a pose file with its key.
Lines channel(const std::string& kind, const std::string& name, const std::string& key) {
  return {"\t\t" + kind + " " + name, "\t\t\t{", "\t\t\tkeys", "\t\t\t\t{", "\t\t\t\tk 0 " + key, "\t\t\t\t}",
          "\t\t\t}"};
}
Lines actor(const std::string& name, const Lines& channels) {
  return join({{"actor " + name + ":1", "\t{", "\tchannels", "\t\t{"}, channels, {"\t\t}", "\t}"}});
}
// A channel as the MOR skeleton and the welder's insertion write it.
Lines written(const std::string& kind, const std::string& name, const std::string& keyLine) {
  return {"\t\t" + kind + " " + name, "\t\t\t{", "\t\t\tkeys", "\t\t\t{", keyLine, "\t\t\t}", "\t\t\t}"};
}

struct MorTest : ::testing::Test, ToolBench {
  MorTest() { poserAt(t.files()); }
};

const Lines kFigure = {"{", "version", "\t{", "\tnumber 4.01", "\t}", "figureResFile :x.obj", "actor BODY:1", "\t{",
                       "\tstorageOffset 0 0 0", "\t}", "figureResFile :x.obj", "actor BODY:1", "\t{", "\tname BODY",
                       "\tchannels", "\t\t{", "\t\tvalueParm PBMCC_01", "\t\t\t{", "\t\t\tname fbm", "\t\t\t}",
                       "\t\t}", "\t}", "actor hip:1", "\t{", "\tname hip", "\tchannels", "\t\t{",
                       "\t\ttargetGeom Narrow", "\t\t\t{", "\t\t\t}", "\t\ttwist xrot", "\t\t\t{", "\t\t\t}", "\t\t}",
                       "\t}", "actor chest:1", "\t{", "\tname chest", "\t}", "figure", "\t{", "\tmaterial skin", "\t}",
                       "}"};

TEST_F(MorTest, TheSkeletonTakesAValuePerMorph) {
  open(file("fig.cr2", kFigure));
  click("MenuMor");
  ui::FormMOR& f = t->formMOR;
  ASSERT_TRUE(f.visible());
  EXPECT_EQ(f.caption(), "PZ2 Editor -- MOR Files");
  EXPECT_EQ(f.ListMorphs.items(), (Lines{" PBMCC_01", " Narrow"}));
  EXPECT_EQ(f.ListValues.items(), (Lines{"0", "0"}));
  auto skeleton = [](const std::string& fbm, const std::string& narrow) {
    return crlf(join({{"{", "version", "\t{", "\tnumber 4.01", "\t}", "actor BODY:1", "\t{", "\tchannels", "\t\t{"},
                      written("valueParm", "PBMCC_01", "\t\t\tk 0 " + fbm),
                      {"\t\t}", "\t}", "actor hip:1", "\t{", "\tchannels", "\t\t{"},
                      written("targetGeom", "Narrow", "\t\t\tk 0 " + narrow),
                      {"\t\t}", "\t}", "actor chest:1", "\t{", "\tchannels", "\t\t{", "\t\t}", "\t}", "}"}}));
  };
  EXPECT_EQ(readFile(t.work() / "Mor.txt"), skeleton("0", "0"));

  const std::pair<int, const char*> values[] = {{1, ".5"}, {0, "-.5"}};
  for (const auto& [index, value] : values) {
    f.ListMorphs.setListIndex(index);
    fire("FormMOR", "ListMorphs");
    EXPECT_EQ(f.TextValue.text(), "0");
    f.TextValue.setText(value);
    fire("FormMOR", "TextValue", EventKind::Enter);
  }
  EXPECT_EQ(f.ListValues.items(), (Lines{"-.5", ".5"}));
  auto output = t.files() / "fig.pz2";
  t.services.dialog(output.string());
  fire("FormMOR", "LabelDone");
  EXPECT_EQ(readFile(output), skeleton("-.5", "0.5"));
  EXPECT_EQ(t.services.dialogs().back().filter, "PZ2(*.pz2)");
  EXPECT_FALSE(std::filesystem::exists(t.work() / "Mor.txt"));
  EXPECT_FALSE(std::filesystem::exists(t.work() / "Mor1.txt"));
  EXPECT_FALSE(f.visible());

  open(t.files() / "pose.pz2");
  t.services.expect("Error!", "CR2 files only!");
  click("MenuMor");
  EXPECT_FALSE(f.visible());
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(MorTest, TheWelderAppliesCheckedSettingsAndInsertsTheMissingOnes) {
  Lines body = channel("valueParm", "PBMCC_01", "0");
  auto first = file("first.pz2", join({{"{"}, actor("BODY", body),
                                       actor("hip", join({channel("targetGeom", "NarrowHip", "0"),
                                                          channel("targetGeom", "Wide", "0")})),
                                       actor("chest", {}), {"}"}}));
  auto second = file("second.pz2", join({{"{"},
                                         actor("hip", join({channel("targetGeom", "Narrow", "0.7"),
                                                            channel("targetGeom", "Wide", "0.3")})),
                                         actor("chest", channel("valueParm", "Bust", "1")), {"}"}}));
  open(first);
  click("menuCombinePZ2");
  ui::FormPZ2Combine& f = t->formPZ2Combine;
  ASSERT_TRUE(f.visible());
  EXPECT_EQ(f.caption(), "PZ2 Welder");
  EXPECT_EQ(f.ListFile1.items(), (Lines{" PBMCC_01", " NarrowHip", " Wide"}));
  EXPECT_EQ(f.ListKeyLinesFirst.items(), (Lines(3, "\t\t\t\tk 0 0")));
  t.services.dialog(second.string());
  fire("FormPZ2Combine", "LabelOpenSecond");
  EXPECT_EQ(f.LabelFileSecond.caption(), second.string());
  EXPECT_EQ(f.ListFile2.items(), (Lines{" Narrow", " Wide", " Bust"}));
  EXPECT_EQ(f.ListActors2.items(), (Lines{"hip:1", "hip:1", "chest:1"}));
  EXPECT_EQ(f.ListTGVP.items(), (Lines{"TG", "TG", "VP"}));
  f.ListFile2.setListIndex(2);
  fire("FormPZ2Combine", "ListFile2");
  EXPECT_EQ(f.LabelKey2.caption(), "\t\t\t\tk 0 1");

  // Narrow is part of NarrowHip, so its setting goes there, and Narrow itself is missing.
  f.ListFile2.setSelected(0, true);
  f.ListFile2.setSelected(2, true);
  t.services.expect("Error!",
                    "These morphs do not exist in " + first.string() +
                        ", but were inserted.  If you would you like to use them, you will need to be sure the "
                        "geometry to support them exists in the target CR2.  Print the list?",
                    ui::Answer::Yes);
  t.services.queue(ui::ScriptedAnswer::print((t.files() / "list.pdf").string()));
  auto output = t.files() / "welded.pz2";
  t.services.dialog(output.string());
  fire("FormPZ2Combine", "LabelDone");
  EXPECT_EQ(f.ListNotFound.items(), (Lines{" Narrow* 0", " Bust* 2"}));
  EXPECT_EQ(readFile(output),
            crlf(join({{"{"}, actor("BODY", body),
                       {"actor hip:1", "\t{", "\tchannels", "\t\t{"},
                       written("targetGeom", "Narrow", "\t\t\t\tk 0 0.7"),
                       channel("targetGeom", "NarrowHip", "0.7"),
                       channel("targetGeom", "Wide", "0"),
                       {"\t\t}", "\t}", "actor chest:1", "\t{", "\tchannels", "\t\t{"},
                       written("valueParm", "Bust", "\t\t\t\tk 0 1"),
                       {"\t\t}", "\t}", "}"}})));
  ASSERT_EQ(t.services.printed().size(), 1u);
  EXPECT_EQ(t.services.printed()[0].fontFamily, "Courier");
  EXPECT_EQ(t.services.printed()[0].text, std::string(15, ' ') + "Morphs not present in  " + first.string() +
                                              "\r\n         " + " Narrow* 0\r\n         " + " Bust* 2\r\n");
  EXPECT_EQ(t.services.dialogs().back().startFolder, t.files());
  EXPECT_FALSE(std::filesystem::exists(t.work() / "Combine.pz2"));
  EXPECT_FALSE(f.visible());
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(MorTest, WelderRefusalsAndAnActorTheFirstFileLacks) {
  auto first = file("first.pz2", join({{"{"}, actor("hip", channel("targetGeom", "Wide", "0")), {"}"}}));
  auto second = file("second.pz2", join({{"{"}, actor("foot", channel("targetGeom", "Toe", "1")), {"}"}}));
  open(t.files() / "fig.cr2");
  t.services.expect("Error!", "PZ2 files only!");
  click("menuCombinePZ2");
  open(first);
  click("menuCombinePZ2");
  t.services.dialog((t.files() / "fig.cr2").string());
  t.services.expect("Error!", "PZ2 files only!");
  fire("FormPZ2Combine", "LabelOpenSecond");
  t.services.dialog(second.string());
  fire("FormPZ2Combine", "LabelOpenSecond");
  t->formPZ2Combine.ListFile2.setSelected(0, true);
  // The missing channel's actor is not in the first file: the insertion runs off its end.
  t.services.answerRunTimeErrors(true);
  std::string before = readFile(first);
  fire("FormPZ2Combine", "LabelDone");
  EXPECT_EQ(t.services.runTimeErrorReports(), 1);
  EXPECT_EQ(readFile(first), before);
  EXPECT_FALSE(std::filesystem::exists(t.work() / "CombineNF.pz2"));
  fire("FormPZ2Combine", "LabelCancel");
  EXPECT_FALSE(t->formPZ2Combine.visible());
  EXPECT_EQ(t->formPZ2Combine.ListFile1.listCount(), 0);
  EXPECT_EQ(t.services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
