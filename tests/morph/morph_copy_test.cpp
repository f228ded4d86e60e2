#include <gtest/gtest.h>

#include "core/scratch_file.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using Lines = std::vector<std::string>;

class MorphCopyTest : public MorphTest {
 protected:
  void SetUp() override {
    openDestination(copyFigure("dest.cr2"));
    original = readFile(dest);
  }
  std::string successQuestion(const std::string& source) const {
    return "Channel/s in " + source + " inserted into " + dest + ".  Save changes?";
  }
  std::string original;
};

struct CopyCase {
  const char* name;  // the expected output's folder
  const char* source;
  const char* part;
  std::vector<std::string> selected;
  std::vector<std::pair<std::string, std::string>> notes;  // messages before the question
};

TEST_F(MorphCopyTest, WritesTheSelectedBlockIntoTheDestination) {
  const std::string figureNote =
      "Note that your source EMC\\ERC morph uses \tFigure 1 as a figure name. This probably does not agree "
      "with the "
      "name in your destination file, be sure to edit this.";
  const std::string numberNote =
      "Unexpected figure number in the source.  This will be fixed, but it is possible the morph will not "
      "work.";
  const CopyCase cases[] = {
      {"copy_plain", "source.cr2", "hip", {"\tNarrow"}, {}},
      // No figureResFile: nothing to compare the geometry with, the copy goes on.
      {"copy_plain", "source_no_figureres.cr2", "hip", {"\tNarrow"}, {}},
      {"copy_control_block", "source.cr2", "abdomen", {"\tMaster: PBMBreathe"}, {{"Note!", figureNote}}},
      {"copy_control_block", "source.cr2", "abdomen", {"\tdeltaAddDelta 0.500000"}, {{"Note!", figureNote}}},
      // The first Twin of the file is hip's, though abdomen is listed.
      {"copy_first_match", "source.cr2", "abdomen", {"\tTwin"}, {}},
      // Each selected line starts again from the destination on disk: only Tuck stays.
      {"copy_two_selected", "source.cr2", "abdomen", {"\tTwin", "\tTuck"}, {}},
      {"copy_figure_number", "source_figure2.cr2", "hip", {"\tNarrow"}, {{"Error!", numberNote}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " from " + c.source + " " + c.selected.front());
    openDestination(dest);
    f.ListChannels.setItems({"ALL CHANNELS"});
    f.PictureViewChannels.setBackColor(ui::kToolRest);
    std::string source = copyFigure(c.source);
    openSource(source);
    viewChannels(c.part);
    selectChannels(c.selected);
    services.clearRecords();
    for (const auto& [title, text] : c.notes) services.expect(title, text);
    services.expect("Success!", successQuestion(source), Answer::Yes);
    services.dialog(dest);
    EXPECT_TRUE(fire("PictureCopyToDest", EventKind::Click));
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(differenceFrom(dest, c.name), "");
    EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);
    EXPECT_EQ(services.dialogs().back().fileName, dest);
    EXPECT_FALSE(core::fileExists(tp.work() / "SaveMorph.txt"));
    EXPECT_FALSE(core::fileExists(tp.work() / "InsertMorph.txt"));
    writeFile(dest, original);
  }
}

TEST_F(MorphCopyTest, OtherGeometryAsksAndCancelStopsWithoutWriting) {
  std::string source = copyFigure("source_other_obj.cr2");
  openSource(source);
  viewChannels("hip");
  selectChannels({"\tNarrow"});
  services.expect("Error!",
                  "You must use figures based on the same geometry; they must have the same main obj.");
  services.expect("Note!", "If you know it is the same obj...", Answer::Cancel);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);
  EXPECT_FALSE(f.ListEMCs.visible());

  // OK goes on, and the geometry is not questioned again in the same run.
  services.expect("Error!",
                  "You must use figures based on the same geometry; they must have the same main obj.");
  services.expect("Note!", "If you know it is the same obj...", Answer::OK);
  services.expect("Success!", successQuestion(source), Answer::Yes);
  services.dialog(dest);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(differenceFrom(dest, "copy_plain"), "");
}

TEST_F(MorphCopyTest, DestinationStaysUntilYesAndAChosenName) {
  std::string source = copyFigure("source.cr2");
  openSource(source);
  viewChannels("hip");
  selectChannels({"\tNarrow"});

  services.expect("Success!", successQuestion(source), Answer::No);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(firstDifference(tp.work() / "InsertMorph.txt", data("copy_plain/expected.cr2")), "");

  services.expect("Success!", successQuestion(source), Answer::Yes);
  services.cancelDialog();
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);

  // Another name: the copy goes there and the destination stays as it was.
  std::string other = (tp.files() / "copy.cr2").string();
  services.expect("Success!", successQuestion(source), Answer::Yes);
  services.dialog(other);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(firstDifference(other, data("copy_plain/expected.cr2")), "");
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), dest);
}

TEST_F(MorphCopyTest, RefusalsLeaveEverything) {
  struct Refusal {
    const char* what;
    bool sourceOpen;
    std::vector<std::string> list;
    int current;
    const char* title;
    const char* text;
  };
  const Refusal refusals[] = {
      {"no source",
       false,
       {"Channels for  hip:1", "", "\tWide"},
       2,
       "Information",
       "To copy a morph channel you must have a source file open in the righthand pane."},
      {"head line", true, {"Channels for  hip:1", "", "\tNarrow"}, 0, "Note!", "Click on a morph to copy."},
      {"EMC line",
       true,
       {"Channels for  abdomen:1", "", "\tEMC Channel", "\tSlave: Slim"},
       2,
       "Alert!",
       "You cannot delete or transfer a morph by choosing the EMC line, please choose another."},
      {"empty line only",
       true,
       {"Channels for  hip:1", "", "\tNarrow"},
       1,
       "Error!",
       "Note that the channel may not have transfered properly!"},
      {"no such actor",
       true,
       {"Channels for  foot:1", "", "\tNarrow"},
       2,
       "Error!",
       "Note that the channel may not have transfered properly!"},
  };
  std::string source = copyFigure("source.cr2");
  for (const auto& r : refusals) {
    SCOPED_TRACE(r.what);
    openDestination(dest);
    if (r.sourceOpen) openSource(source);
    setChannels(r.list);
    f.ListChannels.setSelected(r.current, true);
    services.expect(r.title, r.text);
    fire("PictureCopyToDest", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
  }
}

TEST_F(MorphCopyTest, MissingKeysAreRunTimeErrorsThatLeaveTheDestination) {
  std::string source = copyFigure("source.cr2");
  openSource(source);
  const std::vector<std::vector<std::string>> lists = {
      // A name that is no targetGeom id, as a file changed since it was listed shows.
      {"Channels for  hip:1", "", "\tGone"},
      // A group whose control block is not in the source.
      {"Channels for  abdomen:1", "", "\tEMC Channel", "\tSlave: Slim", "\tMaster: PBMOther",
       "\tFigure: Figure 1", "\tMaster Part: BODY:1", "\tdeltaAddDelta 0.500000"},
  };
  for (const auto& list : lists) {
    SCOPED_TRACE(list.back());
    setChannels(list);
    f.ListChannels.setSelected(list.size() == 3 ? 2 : 4, true);
    services.expect(kAppName, "Run-time error '62':...");
    fire("PictureCopyToDest", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
    EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);
    EXPECT_FALSE(f.busy());
  }
}

TEST_F(MorphCopyTest, SlaveMissingFromTheDestinationActorIsARunTimeError) {
  // No Slim channel stands behind the destination's neck to take the control block.
  std::string source = copyFigure("source.cr2");
  openSource(source);
  setChannels({"Channels for  neck:1", "", "\tEMC Channel", "\tSlave: Slim", "\tMaster: PBMBreathe",
               "\tFigure: Figure 1", "\tMaster Part: BODY:1", "\tdeltaAddDelta 0.500000"});
  f.ListChannels.setSelected(3, true);
  services.answer(Answer::OK);  // the figure name note
  services.expect(kAppName, "Run-time error '62':...");
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(MorphCopyTest, SlaveWithRotAndTranIsSoughtByItsNameLine) {
  // Such a group keeps its mode, and the key is the name line with the slave's blank:
  // two blanks behind "name". Only a file that has that line gives a block.
  std::string source = (tp.files() / "rottran.cr2").string();
  writeFile(source,
            crlf({"figureResFile :Runtime:Geometries:Tolvane:ava.obj", "actor hip:1", "\t{", "", "\tchannels",
                  "\t\t{", "\t\ttargetGeom rotXtranY", "\t\t\t{", "\t\t\tname  rotXtranY",
                  "\t\t\tinitValue 0", "\t\t\t}", "\t\ttwistY hip_twisty", "\t\t}", "\t}"}));
  openSource(source);
  const Lines group = {"Channels for  hip:1",   "",
                       "\tEMC Channel",         "\tSlave: rotXtranY",
                       "\tMaster: Dial",        "\tFigure: Figure 1",
                       "\tMaster Part: BODY:1", "\tdeltaAddDelta 1"};
  setChannels(group);
  f.ListChannels.setSelected(4, true);
  services.expect("Success!", successQuestion(source), Answer::No);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  std::string inserted = readFile(tp.work() / "InsertMorph.txt");
  EXPECT_NE(inserted.find(crlf({"\tchannels", "\t\t{", "\t\t\tname  rotXtranY", "\t\t\tinitValue 0",
                                "\t\t\t}", "\t\ttargetGeom Wide"})),
            std::string::npos);

  // In the destination itself no such line stands: the search runs past the end.
  openSource(copyFigure("source.cr2"));
  f.ListChannels.setSelected(4, true);
  services.expect(kAppName, "Run-time error '62':...");
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), original);
}

TEST_F(MorphCopyTest, AFileWithoutEmptyLinesTakesNoFurtherCopy) {
  // The copy drops the empty line that follows the brace of each definition, so the
  // line behind the two copied ones is no longer the name line.
  std::string source = copyFigure("source.cr2");
  openSource(source);
  viewChannels("hip");
  selectChannels({"\tNarrow"});
  services.expect("Success!", successQuestion(source), Answer::Yes);
  services.dialog(dest);
  fire("PictureCopyToDest", EventKind::Click);
  std::string once = readFile(dest);
  services.expect("Error!", "Note that the channel may not have transfered properly!");
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), once);
}

TEST_F(MorphCopyTest, RightClickExplains) {
  services.expect("Information", "Click this to copy a morph from the source to destination file.");
  EXPECT_TRUE(fire("PictureCopyToDest", EventKind::RightClick));
  EXPECT_EQ(services.pending(), 0u);
}

}  // namespace
}  // namespace tolvane::test
