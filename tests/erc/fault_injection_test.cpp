// Every disk operation of the remote-control tools' writes fails in turn (a full disk,
// an I/O error, a refused permission): the figure stays as it was or becomes exactly
// what the tool makes, no scratch file is left beside it, and the tool works after.
#include <gtest/gtest.h>

#include "erc_fixture.h"
#include "fault_walk.h"

namespace tolvane::test {
namespace {

using ui::Answer;

struct Bench : ErcFixture {
  Bench() { openDestination("figure.cr2"); }
  TestProgram& program() { return tp; }
  std::filesystem::path userFolder() { return tp.files(); }
};

// The unique name writes into the work folder, which is then the folder to watch.
struct WorkBench : Bench {
  std::filesystem::path userFolder() { return tp.work(); }
};

TEST(ErcFaults, RatioChange) {
  Step<Bench> prepare = [](Bench& b) {
    b.fire("Opening", "PictureChangeRatio", EventKind::Click);
    b.tp->formListEMCs.ListEMCs.setListIndex(8);
    b.fire("FormListEMCs", "ListEMCs", EventKind::Click);
  };
  Step<Bench> run = [](Bench& b) {
    b.services.answer(Answer::Yes);
    b.services.dialog(b.dest);
    b.tp->formListEMCs.Text1.setText("0.25");
    b.fire("FormListEMCs", "Text1", EventKind::Enter);
  };
  walkEveryFault<Bench>(run, prepare);
}

TEST(ErcFaults, ControlledMorphBuilder) {
  Step<Bench> run = [](Bench& b) {
    auto& f = b.tp->formECM;
    f.reset();
    f.LabelMCM.setVisible(true);
    f.TextPBM1.setText("Wide:1");
    f.TextPBM2.setText("Ava");
    f.TextPBM3.setText("Lift");
    f.TextPBM4.setText("lShldr");
    f.TextPBMRatio.setText("0.010000");
    b.services.dialog(b.dest);
    b.fire("FormECM", "TextPBMRatio", EventKind::Enter);
  };
  walkEveryFault<Bench>(run);
}

TEST(ErcFaults, UniqueName) {
  Step<WorkBench> run = [](WorkBench& b) {
    b.tp->opening.TextERCUnique.setText("Ava");
    b.services.answer(Answer::OK);
    b.fire("Opening", "TextERCUnique", EventKind::Enter);
  };
  walkEveryFault<WorkBench>(run);
}

}  // namespace
}  // namespace tolvane::test
