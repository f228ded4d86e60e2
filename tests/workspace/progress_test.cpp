// Long work on a large figure tells how far it is: File, Open (with and without the
// line-ending repair) and File, Save report each pass over the file with rising byte
// counts while the program is busy, and leave the program at rest.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "generator/generator.h"
#include "progress_check.h"
#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

namespace fs = std::filesystem;

struct ProgressTest : ::testing::Test {
  void SetUp() override {
    figure = w.poser / "Runtime" / "Libraries" / "Character" / "big.cr2";
    fs::create_directories(figure.parent_path());
    gen::LargeFigureOptions options;
    options.targetBytes = 24ull << 20;
    gen::writeLargeFigure(figure, options);
    reportEveryStep(w.t);
  }

  // File, Open answering every message of the readers (the generated figure's geometry
  // and maps are not on disk) with OK.
  void open(const std::vector<Prompt>& prompts = {}) {
    w.t.services.dialog(figure.string());
    for (const Prompt& p : prompts) w.expect(p);
    for (int i = 0; i < 10; ++i) w.t.services.answer(ui::Answer::OK);
    ASSERT_TRUE(fireEvent(*w.t, "Opening", "MenuFileOpen", EventKind::Click));
    w.t.services.dropAnswers();
    ASSERT_EQ(w.form().LabelFileNameForEditor.caption(), figure.string());
  }

  std::uint64_t size() const { return fs::file_size(figure); }
  const auto& reports() { return w.t.services.progressReports(); }

  WorkspaceFixture w;
  fs::path figure;
};

TEST_F(ProgressTest, OpenReportsTheSharedReadOfTheFigure) {
  open();
  ASSERT_FALSE(reports().empty());
  EXPECT_EQ(progressPasses(reports()), std::vector<std::uint64_t>{size()});
  EXPECT_GE(w.t.services.yields(), static_cast<int>(reports().size()));
  expectAtRest(w.t);
}

// A packed figure reports the unpacking of the packed bytes, then the read of the text.
TEST_F(ProgressTest, OpenOfAPackedFigureReportsTheUnpackingFirst) {
  const std::uint64_t plain = size();
  fs::path packed = figure.parent_path() / "big.crz";
  writeFile(packed, gzipBytes(readFile(figure)));
  figure = packed;
  open();
  EXPECT_EQ(progressPasses(reports()), (std::vector<std::uint64_t>{fs::file_size(packed), plain}));
  expectAtRest(w.t);
}

TEST_F(ProgressTest, RepairThenOpenReportTheirOwnFiles) {
  // The same figure with bare line feeds: the open repairs it first.
  std::string text;
  {
    std::ifstream in(figure, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(in), {});
  }
  std::string bare;
  bare.reserve(text.size());
  for (char c : text)
    if (c != '\r') bare.push_back(c);
  writeFile(figure, bare);
  open({{"Sorry!",
         "Tolvane may not be able to process this file, due to its unconventional construction.  Click OK "
         "to backup and continue, or Cancel."},
        {"Note!", "Unconventional line ending! ..."},
        {"Success!", "..."}});
  EXPECT_NE(size(), bare.size()) << "the figure was repaired";
  std::vector<std::uint64_t> passes = progressPasses(reports());
  ASSERT_FALSE(passes.empty());
  EXPECT_EQ(passes.front(), bare.size()) << "the repair reads the bare file";
  EXPECT_EQ(passes.back(), size()) << "the lists read the repaired one";
  expectAtRest(w.t);
}

TEST_F(ProgressTest, SaveReportsTheCopyOfTheFigure) {
  open();
  w.t.services.clearRecords();
  w.t.services.dialog(figure.string());
  ASSERT_TRUE(fireEvent(*w.t, "Opening", "MenuFileSave", EventKind::Click));
  EXPECT_EQ(w.t.services.pending(), 0u);
  EXPECT_TRUE(w.t.services.messages().empty());
  ASSERT_FALSE(reports().empty());
  EXPECT_EQ(progressPasses(reports()), std::vector<std::uint64_t>{size()});
  expectAtRest(w.t);
}

// A save that fails on the way ends busy all the same: the window's bar goes away.
TEST_F(ProgressTest, AFailedSaveEndsAtRest) {
  open();
  w.t.services.clearRecords();
  w.t.services.dialog((w.t.files() / "no folder" / "big.cr2").string());
  w.t.services.expect(kAppName, "Run-time error '76':...");
  ASSERT_TRUE(fireEvent(*w.t, "Opening", "MenuFileSave", EventKind::Click));
  EXPECT_EQ(w.t.services.pending(), 0u);
  EXPECT_FALSE(reports().empty());
  expectAtRest(w.t);
}

}  // namespace
}  // namespace tolvane::test
