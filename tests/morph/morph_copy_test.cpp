#include <gtest/gtest.h>

#include "text/scratch_file.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

struct Message {
  std::string title, text;
  Answer answer = Answer::OK;
};

const Message kFigureNote{
    "Note!",
    "Note that your source EMC\\ERC morph uses \tFigure 1 as a figure name. This probably "
    "does not agree with the name in your destination file, be sure to edit this."};
const Message kGeometry{"Error!",
                        "You must use figures based on the same geometry; they must have the same main obj."};
const Message kSameObj{"Note!", "If you know it is the same obj..."};
// A source's figureResFile line is compared from the word "Geometries:" on, TextMainOBJ
// holds the text behind it: every run with such a line asks once.
const std::vector<Message> kGeometryAsked{kGeometry, kSameObj};
const Message kTransferNote{"Error!", "Note that the channel may not have transfered properly!"};
const Message kError62{kAppName, "Run-time error '62':..."};
const Message kError5{kAppName, "Run-time error '5':\r\n\r\nInvalid procedure call or argument"};

class MorphCopyTest : public DestinationTest {
 protected:
  std::string successQuestion(const std::string& source) const {
    return "Channel/s in " + source + " inserted into " + dest + ".  Save changes?";
  }
  // Opens a copy of the figure as the source, lists the part and selects the lines.
  void expectAll(const std::vector<Message>& messages) {
    for (const auto& m : messages) services.expect(m.title, m.text, m.answer);
  }
  std::string listSource(const std::string& figure, const std::string& part, const Lines& selected) {
    std::string source = copyFigure(figure);
    openSource(source);
    viewChannels(part);
    selectChannels(selected);
    return source;
  }
};

TEST_F(MorphCopyTest, WritesTheSelectedBlockIntoTheDestination) {
  struct Case {
    const char *name, *source, *part;  // name: the expected output's folder
    Lines selected;
    std::vector<Message> notes;  // messages before the question
  };
  const Message numberNote{
      "Error!",
      "Unexpected figure number in the source.  This will be fixed, but it is possible the morph "
      "will not work."};
  const std::vector<Message> noteAndAsk{kFigureNote, kGeometry, kSameObj};
  const Case cases[] = {
      // Both figures are built on ava.obj, and still the geometry question comes.
      {"copy_plain", "source.cr2", "hip", {"\tNarrow"}, kGeometryAsked},
      // No figureResFile: nothing to compare the geometry with, the copy goes on.
      {"copy_plain", "source_no_figureres.cr2", "hip", {"\tNarrow"}, {}},
      {"copy_control_block", "source.cr2", "abdomen", {"\tMaster: PBMBreathe"}, noteAndAsk},
      {"copy_control_block", "source.cr2", "abdomen", {"\tdeltaAddDelta 0.500000"}, noteAndAsk},
      // The first Twin of the file is hip's, though abdomen is listed.
      {"copy_first_match", "source.cr2", "abdomen", {"\tTwin"}, kGeometryAsked},
      // Each selected line starts again from the destination on disk: only Tuck stays.
      // Told to go on at the first line, the run does not ask again at the second.
      {"copy_two_selected", "source.cr2", "abdomen", {"\tTwin", "\tTuck"}, kGeometryAsked},
      {"copy_figure_number", "source_figure2.cr2", "hip", {"\tNarrow"}, {kGeometry, kSameObj, numberNote}},
      {"copy_plain", "source_other_obj.cr2", "hip", {"\tNarrow"}, kGeometryAsked},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " from " + c.source + " " + c.selected.front());
    openDestination(copyFigure("dest.cr2"));
    std::string source = listSource(c.source, c.part, c.selected);
    services.clearRecords();
    expectAll(c.notes);
    services.expect("Success!", successQuestion(source), Answer::Yes);
    services.dialog(dest);
    EXPECT_TRUE(fire("PictureCopyToDest", EventKind::Click));
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(differenceFrom(dest, c.name), "");
    EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);
    EXPECT_EQ(services.dialogs().back().fileName, dest);
    EXPECT_FALSE(text::fileExists(tp.work() / "SaveMorph.txt"));
    EXPECT_FALSE(text::fileExists(tp.work() / "InsertMorph.txt"));
  }
}

TEST_F(MorphCopyTest, DestinationStaysUntilYesAndAChosenName) {
  std::string source = listSource("source.cr2", "hip", {"\tNarrow"});
  auto expectRun = [&](Answer save) {
    expectAll(kGeometryAsked);
    services.expect("Success!", successQuestion(source), save);
  };
  expectRun(Answer::No);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(differenceFrom(tp.work() / "InsertMorph.txt", "copy_plain"), "");

  expectRun(Answer::Yes);
  services.cancelDialog();
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(f.PictureCopyToDest.backColor(), ui::kToolRest);

  // Another name: the copy goes there and the destination stays as it was.
  std::string other = (tp.files() / "copy.cr2").string();
  expectRun(Answer::Yes);
  services.dialog(other);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(readFile(dest), original);
  EXPECT_EQ(differenceFrom(other, "copy_plain"), "");
  EXPECT_EQ(f.LabelFileNameForEditor.caption(), dest);
}

TEST_F(MorphCopyTest, RefusalsAndMissingKeysLeaveTheDestination) {
  struct Refusal {
    const char *what, *source;  // source: nullptr for none opened
    Lines list;
    int selected;
    std::vector<Message> messages;
    bool leftOn = false;  // the tool stays lit
  };
  const Message noSource{"Information",
                         "To copy a morph channel you must have a source file open in the righthand pane."};
  const Message emcLine{
      "Alert!", "You cannot delete or transfer a morph by choosing the EMC line, please choose another."};
  const char* src = "source.cr2";
  Message cancel = kSameObj;
  cancel.answer = Answer::Cancel;
  const std::vector<Message> askThen62{kGeometry, kSameObj, kError62};
  const Refusal refusals[] = {
      {"no source", nullptr, partList("hip:1", {"\tWide"}), 2, {noSource}},
      {"head line", src, partList("hip:1", {"\tNarrow"}), 0, {{"Note!", "Click on a morph to copy."}}},
      // The alert leaves the tool lit.
      {"EMC line", src, partList("abdomen:1", {"\tEMC Channel", "\tSlave: Slim"}), 2, {emcLine}, true},
      {"empty line only", src, partList("hip:1", {"\tNarrow"}), 1, {kTransferNote}},
      {"no such actor", src, partList("foot:1", {"\tNarrow"}), 2, {kGeometry, kSameObj, kTransferNote}},
      {"same geometry", src, partList("hip:1", {"\tNarrow"}), 2, {kGeometry, cancel}},
      {"other geometry", "source_other_obj.cr2", partList("hip:1", {"\tNarrow"}), 2, {kGeometry, cancel}},
      // "figureResFile :Runtime:Geom:Tolvane:ava.obj": the text from position 0 is an
      // invalid argument.
      {"no Geometries:", "source_no_geometries_word.cr2", partList("hip:1", {"\tNarrow"}), 2, {kError5}},
      // A name that is no targetGeom id, as a file changed since it was listed shows.
      {"no such morph", src, partList("hip:1", {"\tGone"}), 2, askThen62},
      // A group whose control block is not in the source.
      {"no control block", src, emcGroup("abdomen:1", "Slim", "PBMOther", "0.500000"), 4, {kError62}},
      // No Slim channel stands behind the destination's neck to take the control block.
      {"no dest slave",
       src,
       emcGroup("neck:1", "Slim", "PBMBreathe", "0.500000"),
       3,
       {kFigureNote, kGeometry, kSameObj, kError62}},
      // A slave with rot and tran is sought by its name line "name  rotXtranY" (see
      // below); where no such line stands the search runs past the end.
      {"rot and tran slave", src, emcGroup("hip:1", "rotXtranY", "Dial", "1"), 4, askThen62},
  };
  for (const auto& r : refusals) {
    SCOPED_TRACE(r.what);
    openDestination(dest);
    if (r.source) openSource(copyFigure(r.source));
    f.ListChannels.setItems(r.list);
    f.ListChannels.setSelected(r.selected, true);
    expectAll(r.messages);
    fire("PictureCopyToDest", EventKind::Click);
    EXPECT_EQ(services.pending(), 0u);
    EXPECT_EQ(readFile(dest), original);
    EXPECT_EQ(f.PictureCopyToDest.backColor(), r.leftOn ? ui::kToolOn : ui::kToolRest);
    EXPECT_FALSE(f.busy());
    EXPECT_FALSE(f.ListEMCs.visible());
  }
}

TEST_F(MorphCopyTest, SlaveWithRotAndTranIsSoughtByItsNameLine) {
  // Such a group keeps its mode, and the key is the name line with the slave's blank:
  // two blanks behind "name".
  std::string source = (tp.files() / "rottran.cr2").string();
  writeFile(source,
            crlf({"figureResFile :Runtime:Geometries:Tolvane:ava.obj", "actor hip:1", "\t{", "", "\tchannels",
                  "\t\t{", "\t\ttargetGeom rotXtranY", "\t\t\t{", "\t\t\tname  rotXtranY",
                  "\t\t\tinitValue 0", "\t\t\t}", "\t\ttwistY hip_twisty", "\t\t}", "\t}"}));
  openSource(source);
  f.ListChannels.setItems(emcGroup("hip:1", "rotXtranY", "Dial", "1"));
  f.ListChannels.setSelected(4, true);
  expectAll(kGeometryAsked);
  services.expect("Success!", successQuestion(source), Answer::No);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  std::string inserted = readFile(tp.work() / "InsertMorph.txt");
  EXPECT_NE(inserted.find(crlf({"\tchannels", "\t\t{", "\t\t\tname  rotXtranY", "\t\t\tinitValue 0",
                                "\t\t\t}", "\t\ttargetGeom Wide"})),
            std::string::npos);
}

TEST_F(MorphCopyTest, AFileWithoutEmptyLinesTakesNoFurtherCopy) {
  // The copy drops the empty line that follows the brace of each definition, so the
  // line behind the two copied ones is no longer the name line.
  std::string source = listSource("source.cr2", "hip", {"\tNarrow"});
  expectAll(kGeometryAsked);
  services.expect("Success!", successQuestion(source), Answer::Yes);
  services.dialog(dest);
  fire("PictureCopyToDest", EventKind::Click);
  std::string once = readFile(dest);
  expectAll(kGeometryAsked);
  services.expect(kTransferNote.title, kTransferNote.text);
  fire("PictureCopyToDest", EventKind::Click);
  EXPECT_EQ(services.pending(), 0u);
  EXPECT_EQ(readFile(dest), once);
}

}  // namespace
}  // namespace tolvane::test
