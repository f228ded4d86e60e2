// Every disk operation of the channel tools' rewrites fails in turn (a full disk, an I/O
// error, a refused permission): the figures stay as they were or become exactly what
// the tool makes, no other file is left beside them, and the tool works again after.
#include <gtest/gtest.h>

#include <cerrno>

#include "fault_walk.h"
#include "morph_fixture.h"

namespace tolvane::test {
namespace {

using ui::Answer;

// dest.cr2 and source.cr2 in the user's folder; each tool's preparation opens the
// destination as Open leaves it and selects what the tool works on.
struct Workbench : MorphFixture {
  Workbench() : source(copyFigure("source.cr2")) { dest = copyFigure("dest.cr2"); }
  TestProgram& program() { return tp; }
  std::filesystem::path userFolder() { return tp.files(); }
  void dragToTrash(const std::string& list) {
    if (f.PictureTrash.backColor() != ui::kToolOn) fire("PictureTrash", EventKind::Click);
    fire(list, EventKind::Press);
    fire(list, EventKind::Release);
    drop("PictureTrash", list);
  }
  // The first click offers the kinds; a failed rename leaves them offered.
  void chooseRenameKind(bool bodyPart) {
    if (!f.OptionBodyPartRename.visible()) fire("PictureRenameMorph", EventKind::Click);
    (bodyPart ? f.OptionBodyPartRename : f.OptionChannelRename).setValue(true);
  }
  // Each question answered Yes or OK, the save dialog with the destination.
  void answerAndSave(int questionsBefore, int after = 0) {
    for (int i = 0; i < questionsBefore; ++i) services.answer(Answer::Yes);
    services.dialog(dest);
    for (int i = 0; i < after; ++i) services.answer(Answer::OK);
  }
  // dials.cr2 as the destination, with its parts listed and one selected.
  void openDials(const std::string& part) {
    openDestination(copyFigure("dials.cr2"));
    f.ListActors.setItems({" BODY:1 * 7", "    hip:1 * 11", "    lThigh:1 * 16"});
    selectActor(part);
  }
  std::string source;
};

struct Tool {
  const char* name;
  Step<Workbench> prepare, run;
};

const Tool kTools[] = {
    {"MorphCopy",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.openSource(w.source);
       w.viewChannels("hip");
       w.selectChannels({"\tNarrow"});
     },
     [](Workbench& w) {
       w.services.answer(Answer::OK);  // the geometry note
       w.services.answer(Answer::OK);  // the same obj: go on
       w.answerAndSave(1);
       w.fire("PictureCopyToDest", EventKind::Click);
     }},
    {"MorphRename",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.viewChannels("neck");
       w.selectChannels({"\tSquare"});
       w.chooseRenameKind(false);
     },
     [](Workbench& w) {
       w.services.input("Boxy");
       w.answerAndSave(1);
       w.fire("PictureRenameMorph", EventKind::Click);
     }},
    {"BodyPartRename",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.selectActor("chest");
       w.chooseRenameKind(true);
     },
     [](Workbench& w) {
       w.services.input("torso");
       w.answerAndSave(1);
       w.fire("PictureRenameMorph", EventKind::Click);
     }},
    {"MorphRemoval",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.viewChannels("chest");
       w.selectChannels({"\tRound"});
     },
     [](Workbench& w) {
       w.answerAndSave(1);
       w.dragToTrash("ListChannels");
     }},
    {"BodyPartRemoval",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.selectActor("abdomen");
     },
     [](Workbench& w) {
       w.answerAndSave(1, 1);  // the note on the NULL references follows the save
       w.dragToTrash("ListActors");
     }},
    {"ChannelReorder",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.f.ListChannelsReorder.setItems({"chest:1*Bust^ 267@Bust", "chest:1*Round^ 267@Round",
                                         "chest:1*GetStringRes(1028,3)^ 267@Flat",
                                         "chest:1*Square^ 267@Square"});
       w.selectActor("chest");
       w.fire("ListActors", EventKind::DblClick);
       for (const char* entry : {"chest:1*Round^ 267@Round", "chest:1*Bust^ 267@Bust"}) {
         w.f.ListChannelsReorderByPart.setListIndex(w.f.ListChannelsReorderByPart.indexOf(entry));
         w.drop("ListChannelsReorderNewOrder", "ListChannelsReorderByPart");
       }
     },
     [](Workbench& w) {
       w.services.dialog(w.dest);
       w.fire("PictureChannelReorderDone", EventKind::Click);
     }},
    {"HideDial", [](Workbench& w) { w.openDials("hip"); },
     [](Workbench& w) {
       w.services.answer(Answer::Yes);
       w.services.answer(Answer::OK);
       w.fire("LabelX", EventKind::Click);
     }},
    {"Bending", [](Workbench& w) { w.openDials("hip"); },
     [](Workbench& w) {
       w.services.answer(Answer::OK);
       w.fire("MenuBendOff", EventKind::Click);
     }},
    {"IKRemoval", [](Workbench& w) { w.openDials("hip"); },
     [](Workbench& w) {
       w.services.answer(Answer::Yes);
       w.services.answer(Answer::OK);
       w.fire("MenuDumpIK", EventKind::Click);
     }},
    {"TrackingSpeed",
     [](Workbench& w) {
       w.openDials("hip");
       w.f.ListChannelsReorder.setItems({"hip:1*ytran^ 48@ytran"});
       w.f.ListChannelsReorder.setListIndex(0);
       w.fire("ListChannelsReorder", EventKind::DblClick);
       w.f.TextTrackingSpeed.setText("0.5");
     },
     [](Workbench& w) {
       w.services.answer(Answer::OK);
       EventArgs enter;
       enter.keyCode = 13;
       w.fire("TextTrackingSpeed", EventKind::Key, enter);
     }},
    {"MaterialColour",
     [](Workbench& w) {
       w.openDials("hip");
       w.f.ListMaterials.setItems({"skin", "lips"});
       w.f.ListMaterials.setListIndex(1);
     },
     [](Workbench& w) {
       w.services.queue(ui::ScriptedAnswer::colourAnswer(0x0080FF));
       w.answerAndSave(0, 1);
       w.fire("PictureMatColor", EventKind::DblClick);
     }},
    {"JointTransfer",
     [](Workbench& w) {
       w.openDestination(w.dest);
       w.openSource(w.copyFigure("joints_source.cr2"));
       w.f.ListChannels.setItems({"BODY PARTS", "    hip:1 * 66"});
       w.f.ListChannels.setListIndex(1);
       w.selectActor("hip");
     },
     [](Workbench& w) {
       w.answerAndSave(0);
       w.fire("PictureJoints", EventKind::Click);
     }},
};

void PrintTo(const Tool& tool, std::ostream* os) { *os << tool.name; }

class MorphFaults : public ::testing::TestWithParam<Tool> {};

TEST_P(MorphFaults, FiguresStayWholeWhateverOperationFails) {
  for (int error : {ENOSPC, EIO, EACCES}) {
    SCOPED_TRACE("errno " + std::to_string(error));
    walkFaults<Workbench>(error, GetParam().run, GetParam().prepare);
  }
}

INSTANTIATE_TEST_SUITE_P(Tools, MorphFaults, ::testing::ValuesIn(kTools),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tolvane::test
