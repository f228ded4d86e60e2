#include "library/master_cr2.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace tolvane::test {
namespace {

const Lines kHead = {"{", "version", "\t{", "\tnumber 4.01", "\t}", "figureResFile :Runtime:Geometries:x.obj",
                     "actor BODY:1", "\t{", "\tstorageOffset 0 0 0", "\tgeomHandlerGeom 13 BODY", "\t}",
                     "actor hip:3", "\t{", "\tstorageOffset 0 0 0", "\t}"};
const Lines kBody = {"figureResFile :Runtime:Geometries:x.obj", "actor BODY:1", "\t{", "\tname\tBODY", "\tchannels",
                     "\t\t{", "\t\tvalueParm PBMCC_01", "\t\t\t{", "\t\t\tname fbm", "\t\t\tinterpStyleLocked 0",
                     "\t\t\t}", "\t\ttargetGeom hip_M", "\t\t\t{", "\t\t\tname Round", "\t\t\tdeltas", "\t\t\t}",
                     "\t\ttwist twisty", "\t\t\t{", "\t\t\t}", "\t\t}", "\t}"};
const Lines kFigure = {"figure", "\t{", "\tname    Figure 2", "\troot\tBODY:3", "\tdisplayOn 1", "\tallowsBending 1",
                       "\tfigureType 1", "\torigFigureResFile :x", "\tmaterial skin", "\t\t{",
                       "\t\tKdColor 1 1 1 1", "\t\t}", "\tdisplayMode USEPARENT", "\ta", "\tb", "\tc", "\td", "\t}",
                       "}"};

struct LibraryTest : ::testing::Test, ToolBench {
  LibraryTest() {
    std::filesystem::create_directories(poser);
    poserAt(poser);
    open(figure);
  }
  std::filesystem::path poser = t.dir.path() / "poser";
  std::filesystem::path figure = file("fig.cr2", join({kHead, kBody, kFigure}));
};

TEST_F(LibraryTest, MastersKeepTheSkeletonAndNeverReplaceAnOldOne) {
  const Lines tail = {"\tdisplayMode USEPARENT", "\ta", "\tb", "\tc", "}"};
  const Lines upToMaterial(kFigure.begin(), kFigure.begin() + 8);
  struct Case {
    const char* menu;
    Lines expected;
  };
  Lines withoutMorphs = kBody;
  withoutMorphs.erase(withoutMorphs.begin() + 6, withoutMorphs.begin() + 16);  // valueParm to the target's end
  const Case cases[] = {
      {"MenuAnyMasterStandard", join({kHead, kBody, upToMaterial, tail})},
      {"MenuAnyMasterNoFBM", join({kHead, withoutMorphs, upToMaterial, tail})},
  };
  auto master = t.files() / "figMaster.cr2";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.menu);
    std::filesystem::remove(master);
    t.services.expect("Note!", "You have just created a Master CR2 file called " + (t.files() / "fig").string() +
                                   "Master.cr2");
    click(c.menu);
    EXPECT_EQ(readFile(master), crlf(c.expected));
    EXPECT_EQ(t->opening.MasterLibPath, "");
  }
  t.services.expect("Note!",
                    "You already have a MasterCR2 file for this!  If you wish to make another, move the present one "
                    "from this directory.");
  click("MenuAnyMasterStandard");
  EXPECT_EQ(readFile(master), crlf(cases[1].expected));
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(LibraryTest, StockFiguresComeFromTheLibraryRootAndBadSourcesWriteNothing) {
  auto root = poser / "Runtime" / "libraries" / "character";
  writeFile(root / "People" / "P3 Nude Man.cr2", readFile(figure));
  t.services.expect("Note!", "You have just created a Master CR2 file called P3MaleMasterCR2.cr2");
  click("MenuP3Male");
  EXPECT_TRUE(std::filesystem::exists(root / "P3MaleMasterCR2.cr2"));
  EXPECT_EQ(t->opening.MasterLibPath, poser.string() + "/Runtime\\libraries\\character\\");

  t.services.answerRunTimeErrors(true);
  click("MenuP3Female");  // no such stock figure
  EXPECT_EQ(t.services.runTimeErrorReports(), 1);
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST_F(LibraryTest, CutFiguresAreToldAndWriteNothing) {
  struct Case {
    const char* menu;
    Lines source;
    const char* missing;
    const char* what;
  };
  Lines displayModeOnly = join({kHead, kBody, kFigure});
  displayModeOnly.resize(displayModeOnly.size() - 5);  // cut inside the four tail lines
  Lines figureOne(kFigure.begin(), kFigure.begin() + 10);  // cut inside the first material
  figureOne[2] = "\tname    Figure 1";
  const Case cases[] = {
      {"MenuAnyMasterStandard", join({kHead, kBody, {"figure", "\tmaterial skin", "\t}"}}),
       "before its \"displayMode USEPARENT\" line", "Master CR2 file"},
      {"MenuAnyMasterNoFBM", displayModeOnly, "within the three lines behind its \"displayMode USEPARENT\" line",
       "Master CR2 file"},
      {"menuNullFig", join({kHead, kBody}), "before its \"figure\" line", "null figure"},
      {"menuNullFig", join({kHead, kBody, {"figure", "\t{", "\tname    Figure 1"}}), "before its \"displayOn\" line",
       "null figure"},
      {"menuNullFig", join({kHead, kBody, figureOne}), "before its \"displayMode\" line", "null figure"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.menu) + " " + c.missing);
    writeFile(figure, crlf(c.source));
    t.services.expect("Error!", figure.string() + " ends " + c.missing +
                                    ": the figure is cut short or is no figure. No " + c.what + " was written.");
    click(c.menu);
    EXPECT_EQ(readFile(figure), crlf(c.source));
    EXPECT_FALSE(std::filesystem::exists(t.files() / "figMaster.cr2"));
    EXPECT_FALSE(std::filesystem::exists(poser / "NullFig.cr2"));
    EXPECT_FALSE(std::filesystem::exists(t.work() / "MasterCR2.tmp"));
    EXPECT_FALSE(std::filesystem::exists(t.work() / "NullFig.tmp"));
    EXPECT_EQ(t.services.pending(), 0u);
  }
}

TEST_F(LibraryTest, NullFigureKeepsTheHierarchyAsFigureOne) {
  auto output = poser.string() + "/NullFig.cr2";
  t.services.expect("Note!",
                    "To use a null loader, your figure must be \"Figure 1\", your figure is called \"Figure 2\",be "
                    "sure to do a find/replace in the Editor to fix this.");
  t.services.expect("Note", "Null Figure CR2 saved as " + output);
  click("menuNullFig");
  EXPECT_EQ(readFile(output),
            crlf({"{", "version", "\t{", "\tnumber 4.01", "\t}", "actor BODY:1", "\t{", "\t}", "actor hip:1", "\t{",
                  "\t}", "figure", "\t{", "\tname    Figure 2", "\troot\tBODY:1", "\tdisplayOn 1",
                  "\tallowsBending 1", "\tfigureType 1", "\torigFigureResFile :1", "\tmaterial skin", "\ta", "\tb",
                  "\tc", "\td", "\t}", "}"}));

  open(t.files() / "pose.pz2");
  t.services.expect("Error!", "CR2 files only!");
  click("menuNullFig");
  EXPECT_EQ(t.services.pending(), 0u);
}

// The kind test compares the name's end as it stands, with the compressed kinds taken as
// the plain kind they hold: a gzip figure makes the same null figure, an upper-case name
// is refused as the plain one always was.
TEST_F(LibraryTest, NullFigureTakesACompressedFigureAsItsPlainKind) {
  auto output = poser.string() + "/NullFig.cr2";
  auto made = [&] {
    t.services.answer(ui::Answer::OK);
    t.services.expect("Note", "Null Figure CR2 saved as " + output);
  };
  made();
  click("menuNullFig");
  const std::string plain = readFile(output);
  std::filesystem::remove(output);

  for (const char* name : {"fig.crz", "fig.CR2"}) {
    SCOPED_TRACE(name);
    std::filesystem::path other = t.files() / name;
    writeFile(other, gzipBytes(readFile(figure)));
    t->opening.LabelFileNameForEditor.setCaption(other.string());
    const bool packed = std::string(name) == "fig.crz";
    if (packed) {
      made();
    } else {
      t.services.expect("Error!", "CR2 files only!");
    }
    click("menuNullFig");
    EXPECT_EQ(t.services.pending(), 0u);
    EXPECT_EQ(std::filesystem::exists(output), packed);
    if (packed) {
      EXPECT_EQ(readFile(output), plain);
    }
    std::filesystem::remove(output);
  }
}

}  // namespace
}  // namespace tolvane::test
