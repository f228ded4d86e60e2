// The morph tools on a large figure tell how far they are: every pass over the figure
// reports rising byte counts of that file while the program is busy, the tool still
// replaces the figure, and the program is at rest when it ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "generator/generator.h"
#include "morph/morph_copy.h"
#include "morph/morph_remove.h"
#include "morph/morph_rename.h"
#include "progress_check.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;
using ui::Answer;

struct MorphProgress {
  MorphProgress() {
    dest = t.files() / "large.cr2";
    source = t.files() / "source.cr2";
    gen::LargeFigureOptions options;
    options.targetBytes = 24ull << 20;
    gen::writeLargeFigure(dest, options);
    fs::copy_file(dest, source);
    reportEveryStep(t);
  }

  // The destination in the left pane, the source or the destination in the right one,
  // the hip picked and `morph` selected among its channels.
  void select(bool withSource, const std::string& morph) {
    auto& f = t->opening;
    f.LabelFileName.setCaption("large.cr2");
    f.LabelFileNameForEditor.setCaption(dest.string());
    f.LabelChannelFileName.setCaption(withSource ? "source.cr2" : "large.cr2");
    f.LabelChannelFileNameForEditor.setCaption((withSource ? source : dest).string());
    f.TextMainOBJ.setText("Tolvane:large.obj");
    f.ListActors.setItems({" BODY:1 * 8", "    hip:1 * 12"});
    f.ListActors.setListIndex(1);
    f.ListChannels.setItems({"Channels for  hip:1", "", "\t" + morph});
    f.ListChannels.setSelected(2, true);
  }

  // "Save changes?" answered Yes and the save dialog with the figure itself.
  void saveAnswers() {
    t.services.answer(Answer::Yes);
    t.services.dialog(dest.string());
  }

  TestProgram t;
  fs::path dest;
  fs::path source;
};

TEST(MorphProgress, ToolsReportEachPassOverTheFigure) {
  // The copy reads the captured block besides the figure, and inserts it with the
  // pointer back to normal, as the tool is defined: those passes are not busy.
  struct Case {
    const char* tool;
    std::function<void(MorphProgress&)> run;
    bool onlyTheFigure = true;
  } cases[] = {
      {"rename",
       [](MorphProgress& m) {
         m.select(false, "hip_M2");
         morph::RenameMorphClick(*m.t);  // offers the two kinds
         m.t->opening.OptionChannelRename.setValue(true);
         m.t.services.input("hip_Renamed");
         m.saveAnswers();
         m.t.services.clearRecords();
         morph::RenameMorphClick(*m.t);
       }},
      {"removal",
       [](MorphProgress& m) {
         m.select(false, "hip_M3");
         m.saveAnswers();
         morph::RemoveMorphs(*m.t);
       }},
      {"copy",
       [](MorphProgress& m) {
         m.select(true, "hip_M1");
         m.t.services.answer(Answer::OK);  // the geometry question, twice
         m.t.services.answer(Answer::OK);
         m.saveAnswers();
         morph::CopyToDestClick(*m.t);
       },
       false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.tool);
    MorphProgress m;
    const std::uintmax_t before = fs::file_size(m.dest);
    c.run(m);
    EXPECT_EQ(m.t.services.pending(), 0u);
    EXPECT_NE(fs::file_size(m.dest), before) << "the tool replaced the figure";
    std::vector<std::uint64_t> passes = progressPasses(m.t.services.progressReports(), c.onlyTheFigure);
    ASSERT_FALSE(passes.empty());
    EXPECT_EQ(passes.front(), before) << "the first pass reads the figure as it was";
    if (c.onlyTheFigure) {
      for (std::uint64_t total : passes) EXPECT_EQ(total, before);
    } else {
      EXPECT_EQ(*std::max_element(passes.begin(), passes.end()), before);
    }
    expectAtRest(m.t);
  }
}

}  // namespace
}  // namespace tolvane::test
