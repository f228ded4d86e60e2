// The body part transfer, driven through its events: the tool's picture, the
// double-click in ListActors, the drop of a target, the OBJ pick, the name, the chain
// and its place. The open figure (source.cr2) gives its part "tail"; the target's new
// copy is compared with the expected text; refusals leave every file as it was.
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

#include "fault_walk.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;
using TransferStep = ui::Opening::TransferStep;

const char* const kNewPart = "tail2";

// The user's folder: the open figure, three targets (one cut short), a notes file and Geom/newfig.obj.
struct TransferBench : MorphFixture {
  TransferBench() {
    folder = tp.files();
    openDestination(copyInto(data("transfer/source.cr2"), folder).string());
    f.ListActors.setItems({" BODY:1 * 6", "    hip:1 * 10", "    tail:1 * 15", "    horn:1 * 20"});
    copyInto(data("transfer/target.cr2"), folder);
    copyInto(data("transfer/target_custom.cr2"), folder);
    std::filesystem::create_directories(folder / "Geom");
    writeFile(folder / "Geom" / "newfig.obj", "v 0 0 0\r\n");
    writeFile(folder / "Geom" / "readme.txt", "notes\r\n");
    // A target cut short before its figure section.
    const std::string whole = readFile(folder / "target.cr2");
    writeFile(folder / "broken.cr2", whole.substr(0, whole.find("figure\r\n")));
  }
  TestProgram& program() { return tp; }
  std::filesystem::path userFolder() { return folder; }

  void cutOut(const std::string& part) {
    fire("PictureTransferParts", EventKind::Click);
    selectActor(part);
    fire("ListActors", EventKind::DblClick);
  }
  void browse(const std::filesystem::path& to) {
    f.DirTransferParts.setText(to.string());
    fire("DirTransferParts", EventKind::Change);
  }
  // A name the list does not show leaves it without a choice, as after a failed step.
  void pick(const std::string& file) { f.FileTransferParts.setListIndex(f.FileTransferParts.indexOf(file)); }
  void dropTarget(const std::string& target) {
    services.expect("Next...", "Browse to the modified obj file and click it.");
    browse(folder);
    pick(target);
    drop("PictureTransferParts", "FileTransferParts");
  }
  void pickObj(const std::string& file) {
    browse(folder / "Geom");
    pick(file);
    fire("FileTransferParts", EventKind::Click);
  }
  void giveName() {
    f.TextMorphRename.setText(kNewPart);
    EventArgs enter;
    enter.keyCode = 13;
    fire("TextMorphRename", EventKind::Key, enter);
  }
  // Up to the name, with the questions that follow it answered as queued by the caller.
  void runToName(const std::string& target) {
    services.expect("Next...", "Now choose your destination CR2 and drag it to the picture.");
    cutOut("tail");
    dropTarget(target);
    services.expect("Next...", "Enter a name for the new body part.");
    pickObj("newfig.obj");
  }
  std::filesystem::path result(const std::string& target) const { return folder / ("New-" + target); }

  std::filesystem::path folder;
};

struct BodyPartTransferTest : ::testing::Test, TransferBench {
  void expectAtRest() {
    EXPECT_EQ(f.Transfer.step, TransferStep::Rest);
    EXPECT_EQ(f.ToolMode, 0);
    EXPECT_FALSE(f.FileTransferParts.visible());
    EXPECT_FALSE(f.ListTransferChains.visible());
  }
};

// The whole transfer: without a chain, and with the new link put in the middle of one
// chain and at the end of another (the blank last row).
struct WholeCase {
  const char* name;
  int chain;  // -1: the IK question answered No
  const char* placeRow;
  const char* expected;
  std::vector<std::string> weights;
};

const WholeCase kWhole[] = {
    {"NoChain", -1, "", "expected_plain.cr2", {}},
    {"ChainMiddle", 0, "addLink\tchest:1", "expected_chain_middle.cr2", {"hip:1\t0.2", "Your Link\t.4", "chest:1\t0.6"}},
    {"ChainLast", 1, "", "expected_chain_last.cr2", {"hip:1\t0.5", "Your Link\t.5"}},
};

class WholeTransfer : public BodyPartTransferTest, public ::testing::WithParamInterface<WholeCase> {};

TEST_P(WholeTransfer, WritesTheNewFigureBesideTheTarget) {
  const WholeCase& c = GetParam();
  const std::string target = readFile(folder / "target.cr2");
  const std::string source = readFile(dest);
  runToName("target.cr2");
  ASSERT_EQ(f.Transfer.step, TransferStep::AwaitName) << lastMessage();
  EXPECT_TRUE(f.TextMorphRename.visible());
  EXPECT_EQ(readFile(tp.work() / "bp.txt"), readFile(data("transfer/expected_bp.txt")));
  services.expect("Next...", "Is the new body part involved in the IK chain?", c.chain < 0 ? Answer::No : Answer::Yes);
  if (c.chain < 0) {
    services.expect("Finished!", "New CR2 saved as " + result("target.cr2").string() + ".");
    giveName();
  } else {
    giveName();
    ASSERT_EQ(f.ListTransferChains.items(), (Lines{"inkyChain spineChain", "inkyChain otherChain"}));
    services.expect("Next...", "Click where you want to put your part in the IK chain.");
    f.ListTransferChains.setListIndex(c.chain);
    fire("ListTransferChains", EventKind::DblClick);
    ASSERT_EQ(f.Transfer.step, TransferStep::AwaitPlace) << lastMessage();
    EXPECT_EQ(f.ListTransferChains.items().back(), "");
    services.expect("Note!", "Here are the link weights for this chain. The new one at the end may need to be "
                             "manually modified, Tolvane has taken its best guess at what should be there.");
    services.expect("Finished!", "New CR2 saved as " + result("target.cr2").string() + ".");
    f.ListTransferChains.setListIndex(f.ListTransferChains.indexOf(c.placeRow));
    fire("ListTransferChains", EventKind::Click);
    EXPECT_EQ(f.ListTransferWeights.items(), c.weights);
  }
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  EXPECT_EQ(firstDifference(result("target.cr2"), data(std::string("transfer/") + c.expected)), "");
  // The part's morphs stay behind; its own otherActor line names it by its new name.
  const std::string written = readFile(result("target.cr2"));
  EXPECT_EQ(written.find("targetGeom"), std::string::npos);
  EXPECT_NE(written.find("\totherActor tail2:1\r\n"), std::string::npos);
  EXPECT_EQ(readFile(folder / "target.cr2"), target);
  EXPECT_EQ(readFile(dest), source);
  EXPECT_FALSE(std::filesystem::exists(tp->currentDir / "newcr2.doc"));
  EXPECT_EQ(f.Transfer.step, TransferStep::Rest);
  EXPECT_FALSE(f.TextMorphRename.visible());
}

INSTANTIATE_TEST_SUITE_P(Cases, WholeTransfer, ::testing::ValuesIn(kWhole),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BodyPartTransferTest, APartWithEmbeddedGeometryIsRefusedAtOnce) {
  const auto before = snapshot(folder);
  services.expect("Error!", "Can't use this body part, it has geometry embedded in the CR2.");
  cutOut("horn");
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  EXPECT_FALSE(std::filesystem::exists(tp.work() / "bp.txt"));
  EXPECT_EQ(snapshot(folder), before);
  expectAtRest();
  // A drop with nothing cut out does nothing.
  browse(folder);
  pick("target.cr2");
  drop("PictureTransferParts", "FileTransferParts");
  EXPECT_EQ(services.messages().size(), 1u);
}

TEST_F(BodyPartTransferTest, OnlyAnObjPickEndsTheWait) {
  services.expect("Next...", "Now choose your destination CR2 and drag it to the picture.");
  cutOut("tail");
  EXPECT_EQ(f.ToolMode, 0);
  dropTarget("target.cr2");
  EXPECT_TRUE(f.FileTransferParts.visible());
  browse(folder / "Geom");
  // The list shows the OBJ files only; a name of another kind still keeps the wait.
  EXPECT_EQ(f.FileTransferParts.items(), Lines{"newfig.obj"});
  f.FileTransferParts.setItems({"readme.txt", "newfig.obj"});
  pick("readme.txt");
  fire("FileTransferParts", EventKind::Click);
  EXPECT_EQ(f.Transfer.step, TransferStep::AwaitObj);
  services.expect("Next...", "Enter a name for the new body part.");
  pick("newfig.obj");
  fire("FileTransferParts", EventKind::Click);
  EXPECT_EQ(f.Transfer.step, TransferStep::AwaitName);
  EXPECT_EQ(f.Transfer.objLine, "figureResFile:Runtime:Geometries:Geom:newfig.obj");
  // The list is back on the figures.
  EXPECT_EQ(f.FileTransferParts.items(), Lines{});
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
}

// Every way out before the write leaves the user's files as they were.
struct StopCase {
  const char* name;
  const char* target;
  std::function<void(TransferBench&)> stop;
};

const StopCase kStops[] = {
    {"AlertNo", "target_custom.cr2",
     [](TransferBench& b) {
       b.services.expect("Alert!",
                         "gem:1 has geometry embedded in the CR2.  If it is a parent or child in the hierarchy of your "
                         "new body part, the transfer won't work properly.  Do you want to continue?",
                         Answer::No);
       b.giveName();
     }},
    {"NameCancelled",
     "target.cr2",
     [](TransferBench& b) {
       EventArgs escape;
       escape.keyCode = 27;
       b.fire("TextMorphRename", EventKind::Key, escape);
     }},
    {"TargetWithoutFigureSection", "broken.cr2",
     [](TransferBench& b) {
       b.services.answerRunTimeErrors(true);
       b.giveName();
       EXPECT_EQ(b.services.runTimeErrorReports(), 1);
     }},
};

class TransferStops : public BodyPartTransferTest, public ::testing::WithParamInterface<StopCase> {};

TEST_P(TransferStops, WriteNothing) {
  runToName(GetParam().target);
  const auto before = snapshot(folder);
  GetParam().stop(*this);
  EXPECT_EQ(services.pending(), 0u) << lastMessage();
  EXPECT_EQ(snapshot(folder), before);
  EXPECT_FALSE(std::filesystem::exists(tp->currentDir / "newcr2.doc"));
  expectAtRest();
  EXPECT_FALSE(f.TextMorphRename.visible());
}

INSTANTIATE_TEST_SUITE_P(Cases, TransferStops, ::testing::ValuesIn(kStops),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BodyPartTransferTest, TheRenameToolKeepsTheNameBoxWhenNoTransferWaits) {
  f.RenameWaitState = 48;
  EventArgs enter;
  enter.keyCode = 13;
  fire("TextMorphRename", EventKind::Key, enter);
  EXPECT_EQ(f.RenameWaitState, 49);
  EXPECT_TRUE(fire("MenuTransferParts", EventKind::Click));
  EXPECT_EQ(f.ToolMode, 0);
}

// A disk fault anywhere in the run (bp.txt, newcr2.doc, the move beside the target)
// leaves the user's files whole and no scratch copy beside them.
TEST(BodyPartTransferFaults, FilesStayWholeWhateverOperationFails) {
  Step<TransferBench> run = [](TransferBench& b) {
    b.tp->currentDir = b.folder;
    b.services.answerRunTimeErrors(true);
    b.runToName("target.cr2");
    b.services.dropAnswers();
    b.services.answerRunTimeErrors(true);
    b.services.answer(Answer::No);
    b.services.answer(Answer::OK);
    b.giveName();
    b.services.dropAnswers();
  };
  for (int error : {ENOSPC, EIO}) walkFaults<TransferBench>(error, run, {});
}

}  // namespace
}  // namespace tolvane::test
