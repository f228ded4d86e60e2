// Every disk operation of the library file writers fails in turn (a full disk, an I/O
// error, a refused permission): the user's files stay as they were or become exactly
// what the tool makes, no other file is left beside them, and the tool works again after.
#include <gtest/gtest.h>

#include "fault_walk.h"

namespace tolvane::test {

namespace {

using ui::Answer;

std::filesystem::path sample(const std::string& relative) {
  return std::filesystem::path(TOLVANE_SAMPLES) / "Runtime" / "Libraries" / relative;
}

// The sample figure, scene and pose in the user's folder, which is also the Poser folder.
struct Library : ToolBench {
  Library() {
    copyInto(sample("Pose/Tolvane/Wave.pz2"), t.files());
    poserAt(t.files());
  }
  std::filesystem::path figure = copyInto(sample("Character/Tolvane/Ava.cr2"), t.files());
  std::filesystem::path scene = copyInto(sample("Scene/Tolvane/Duet.pz3"), t.files());
};

struct Tool {
  const char* name;
  Step<Library> prepare, run;
};

const Tool kTools[] = {
    // The sample figure ends two lines behind its last "displayMode USEPARENT" line, too
    // soon for a master; the scene's first figure has the lines.
    {"MasterCR2", [](Library& l) { l.open(l.scene); },
     [](Library& l) {
       l.t.services.answer(Answer::OK);
       l.click("MenuAnyMasterStandard");
     }},
    {"MasterCR2NoFBM", [](Library& l) { l.open(l.scene); },
     [](Library& l) {
       l.t.services.answer(Answer::OK);
       l.click("MenuAnyMasterNoFBM");
     }},
    {"NullFigure", [](Library& l) { l.open(l.figure); },
     [](Library& l) {
       l.t.services.answer(Answer::OK);
       l.click("menuNullFig");
     }},
    {"MTL", [](Library& l) { l.open(l.scene); },
     [](Library& l) {
       l.t.services.answer(Answer::OK);
       l.click("MenuMakeMTL");
     }},
    {"SceneToFigure", [](Library& l) { l.open(l.scene); },
     [](Library& l) {
       l.t.services.dialog((l.t.files() / "Duet-figure.cr2").string());
       l.click("MenuPZ3Cr2Conv");
     }},
    {"PoseFile",
     [](Library& l) {
       // Pose.txt is appended to, not deleted first: a copy that a failed removal left
       // in the Work folder stands in front of the next pose, as the tool defines. The
       // walk's runs each start without one.
       std::filesystem::remove(l.t.work() / "Pose.txt");
       l.open(l.figure);
       l.click("MenuPoseFile");
       for (const char* actor : {"hip", "head"}) l.t->formPZ2.ListActorsWanted.addItem(actor);
     },
     [](Library& l) {
       l.t.services.answer(Answer::OK);
       l.fire("FormPZ2", "LabelDonePZ2");
     }},
    {"MaterialFile",
     [](Library& l) {
       l.open(l.figure);
       l.click("menuMatFile");
       l.t->formPZ2.CheckAllMat.setValue(true);
     },
     [](Library& l) {
       l.t.services.dialog((l.t.files() / "Mat.pz2").string());
       l.fire("FormPZ2", "LabelDonePZ2");
     }},
    {"MorFile",
     [](Library& l) {
       l.open(l.figure);
       l.click("MenuMor");
     },
     [](Library& l) {
       l.t.services.dialog((l.t.files() / "Mor.pz2").string());
       l.fire("FormMOR", "LabelDone");
     }},
    {"Welder",
     [](Library& l) {
       auto morphPose = [&l](const std::string& name, const std::string& morph, const std::string& value) {
         auto path = l.t.files() / name;
         writeFile(path, crlf({"{", "actor hip:1", "\t{", "\tchannels", "\t\t{", "\t\ttargetGeom " + morph,
                               "\t\t\t{", "\t\t\tkeys", "\t\t\t\t{", "\t\t\t\tk 0 " + value, "\t\t\t\t}",
                               "\t\t\t}", "\t\t}", "\t}", "}"}));
         return path;
       };
       l.open(morphPose("first.pz2", "Wide", "0"));
       l.click("menuCombinePZ2");
       l.t.services.dialog(morphPose("second.pz2", "Narrow", "0.5").string());
       l.fire("FormPZ2Combine", "LabelOpenSecond");
       for (int i = 0; i < l.t->formPZ2Combine.ListFile2.listCount(); ++i)
         l.t->formPZ2Combine.ListFile2.setSelected(i, true);
     },
     [](Library& l) {
       l.t.services.answer(Answer::No);  // the list of inserted morphs is not printed
       l.t.services.dialog((l.t.files() / "Welded.pz2").string());
       l.fire("FormPZ2Combine", "LabelDone");
     }},
};

void PrintTo(const Tool& tool, std::ostream* os) { *os << tool.name; }

class LibraryFaults : public ::testing::TestWithParam<Tool> {};

TEST_P(LibraryFaults, FilesStayWholeWhateverOperationFails) {
  walkEveryFault<Library>(GetParam().run, GetParam().prepare);
}

INSTANTIATE_TEST_SUITE_P(Tools, LibraryFaults, ::testing::ValuesIn(kTools),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tolvane::test
