#include "workspace/startup.h"

#include <gtest/gtest.h>

#include "text/scratch_file.h"
#include "program/events.h"
#include "test_support.h"

namespace tolvane::test {
namespace {

TEST(Startup, FirstStartAsksForPoserAndCr2installAppearsOnTheSecond) {
  TestProgram t;
  auto poser = t.dir / "Poser";
  writeFile(poser / "Poser.exe", "MZ");
  writeFile(poser / "Tolvane4old.exe", "MZ");
  t.services.dialog((poser / "Poser.exe").string());
  fireEvent(*t, "Opening", "Opening", EventKind::Load);
  EXPECT_EQ(t.settings.get(kAppName, "Startup", "PLoc", "0"), (poser / "").string());
  EXPECT_EQ(t.settings.get(kAppName, "Startup", "Ver", "0"), "5.0");
  EXPECT_EQ(t.settings.get(kAppName, "Startup", "TolvaneLoc", "0"), t->appPath);
  EXPECT_FALSE(std::filesystem::exists(poser / "Tolvane4old.exe"));
  EXPECT_FALSE(std::filesystem::exists(poser / "cr2install"));
  EXPECT_FALSE(t->opening.MenuCR2Tools.enabled());

  TestProgram second;
  second.settings.save(kAppName, "Startup", "PLoc", (poser / "").string());
  fireEvent(*second, "Opening", "Opening", EventKind::Load);  // no dialog this time
  EXPECT_TRUE(std::filesystem::is_directory(poser / "cr2install"));
}

TEST(Startup, CancelledFirstRunIsAnErrorAndTheProgramGoesOn) {
  TestProgram t;
  t.services.cancelDialog();
  t.services.expect("Tolvane", "Run-time error '5':...");
  EXPECT_TRUE(fireEvent(*t, "Opening", "Opening", EventKind::Load));
  EXPECT_EQ(t.settings.get(kAppName, "Startup", "PLoc", "0"), "0");
}

TEST(Startup, StartDeletesTheObjScratchArrays) {
  TestProgram t;
  t.settings.save(kAppName, "Startup", "PLoc", "/nowhere/");
  for (const char* n : {"FArray.txt", "VArray.txt", "VTArray.txt", "UV.txt"}) writeFile(t.work() / n, "x");
  fireEvent(*t, "Opening", "Opening", EventKind::Load);
  EXPECT_FALSE(std::filesystem::exists(t.work() / "FArray.txt"));
  EXPECT_FALSE(std::filesystem::exists(t.work() / "VTArray.txt"));
  EXPECT_TRUE(std::filesystem::exists(t.work() / "UV.txt"));
}

TEST(RecentFiles, KeepTenComparedWithoutCaseAndAreReadBackToTheFirstEmptyValue) {
  TestProgram t;
  t.settings.save(kAppName, "Startup", "PLoc", "/nowhere/");
  for (int i = 0; i < 10; ++i) AddToMRU(*t, "/f/file" + std::to_string(i) + ".cr2");
  AddToMRU(*t, "/F/FILE3.CR2");
  EXPECT_EQ(t->opening.ListMRU.listCount(), 10);
  AddToMRU(*t, "/f/file10.cr2");
  EXPECT_EQ(t->opening.ListMRU.listCount(), 10);
  EXPECT_EQ(t->opening.MRUCount, 10);
  EXPECT_EQ(t->opening.ListMRU.list(0), "/f/file1.cr2");
  EXPECT_EQ(t->opening.ListMRU.list(9), "/f/file10.cr2");
  fireEvent(*t, "Opening", "Opening", EventKind::Unload);
  EXPECT_TRUE(t->quitRequested);

  // Clearing by hand leaves the later keys; reading stops at the first empty value.
  t.settings.save(kAppName, "MRUFiles", "5", "");
  TestProgram again;
  again.settings = t.settings;
  fireEvent(*again, "Opening", "Opening", EventKind::Load);
  ASSERT_EQ(again->opening.ListMRU.listCount(), 5);
  EXPECT_EQ(again->opening.ListMRU.list(4), "/f/file5.cr2");
  EXPECT_EQ(again->opening.MRUCount, 5);
}

TEST(RecentFiles, AClickOnAVanishedFileRemovesItForGood) {
  TestProgram t;
  t.settings.save(kAppName, "Startup", "PLoc", "/nowhere/");
  t.settings.save(kAppName, "MRUFiles", "0", (t.files() / "kept.cr2").string());
  t.settings.save(kAppName, "MRUFiles", "1", (t.files() / "gone.cr2").string());
  fireEvent(*t, "Opening", "Opening", EventKind::Load);
  t->opening.ListMRU.setVisible(true);
  t->opening.ListMRU.setListIndex(1);
  t.services.expect("Error!", "This file has been moved or deleted.");
  fireEvent(*t, "Opening", "ListMRU", EventKind::Click);
  EXPECT_EQ(t->opening.ListMRU.listCount(), 1);
  EXPECT_FALSE(t->opening.ListMRU.visible());
  EXPECT_EQ(t.services.messages().at(0).icon, ui::Icon::Critical);
  // The last key is emptied at exit: the next start lists the kept file alone.
  fireEvent(*t, "Opening", "Opening", EventKind::Unload);
  TestProgram again;
  again.settings = t.settings;
  fireEvent(*again, "Opening", "Opening", EventKind::Load);
  ASSERT_EQ(again->opening.ListMRU.listCount(), 1);
  EXPECT_EQ(again->opening.ListMRU.list(0), (t.files() / "kept.cr2").string());
}

TEST(Notes, DoubleClickAppendsWithAHeadingAndHidesTheBox) {
  TestProgram t;
  t.services.setNow(std::chrono::system_clock::from_time_t(0));
  // An empty notepad only hides.
  t->opening.TextOpeningNotes.setVisible(true);
  fireEvent(*t, "Opening", "TextOpeningNotes", EventKind::DblClick);
  EXPECT_FALSE(t->opening.TextOpeningNotes.visible());
  EXPECT_FALSE(std::filesystem::exists(t.work() / "Notes.txt"));
  t->opening.TextOpeningNotes.setVisible(true);
  t->opening.TextOpeningNotes.setText("fix the lShin morph");
  fireEvent(*t, "Opening", "TextOpeningNotes", EventKind::DblClick);
  std::string notes = readFile(t.work() / "Notes.txt");
  EXPECT_EQ(notes.substr(0, 5), "**** ");
  EXPECT_NE(notes.find(" ****\r\n**  **\r\nfix the lShin morph\r\n"), std::string::npos) << notes;
  EXPECT_FALSE(t->opening.TextOpeningNotes.visible());
  EXPECT_EQ(t->opening.TextOpeningNotes.text(), "");
}

TEST(Exit, NotesGoNextToTheWorkFolderAndScratchFilesGo) {
  TestProgram t;
  t->opening.TextOpeningNotes.setText("remember");
  const char* const scratch[] = {"color.txt", "UV.txt", "group.txt", "Param.obj", "VArray.txt"};
  for (const char* n : scratch) writeFile(t.work() / n, "x");
  fireEvent(*t, "Opening", "Opening", EventKind::Unload);
  EXPECT_FALSE(std::filesystem::exists(t.work() / "Notes.txt"));
  EXPECT_NE(readFile(t.work().string() + "Notes.txt").find("remember"), std::string::npos);
  for (const char* n : scratch) EXPECT_FALSE(std::filesystem::exists(t.work() / n)) << n;
  EXPECT_EQ(t.services.tileCloses(), 1);
  ASSERT_EQ(t.services.sounds().size(), 1u);
  EXPECT_NE(t.services.sounds()[0].find("Quillmere3.wav"), std::string::npos);
}

TEST(Exit, MaximisedFormWithAnEmptyNotepadAndUnwritableSettings) {
  TestProgram t;
  t->opening.setWindowState(ui::WindowState::Maximized);
  // Settings that cannot be stored are told, and the exit goes on.
  AddToMRU(*t, "/f/a.cr2");
  t.settings.setReadOnly(true);
  t.services.expect("Error!", "The settings could not be stored...");
  fireEvent(*t, "Opening", "Opening", EventKind::Unload);
  EXPECT_FALSE(std::filesystem::exists(t.work().string() + "Notes.txt"));
  EXPECT_EQ(t.services.tileCloses(), 0);
  EXPECT_TRUE(t.services.sounds().empty());
  EXPECT_TRUE(t->quitRequested);
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST(Exit, NotesThatCannotBeWrittenAreToldAndTheExitGoesOn) {
  TestProgram t;
  t->appPath = (t.dir / "no such folder" / "x").string();
  t->opening.TextOpeningNotes.setText("remember");
  t.services.expect("Error!", "The notes could not be written to...");
  fireEvent(*t, "Opening", "Opening", EventKind::Unload);
  EXPECT_TRUE(t->quitRequested);
  EXPECT_EQ(t.services.pending(), 0u);
}

TEST(ReadOnlyTool, ClearsTheAttributeAndCountsFromTheSecondMatch) {
  TestProgram t;
  // "a.cr2" (writable) is the first match as the folder lists it, before "B.cr2":
  // both read-only files after it count.
  writeFile(t.files() / "a.cr2", "x");
  for (const char* n : {"B.cr2", "c.cr2", "d.pz2"}) {
    writeFile(t.files() / n, "x");
    text::setReadOnly(t.files() / n);
  }
  t.services.dialog((t.files() / "a.cr2").string());
  t.services.expect("Note!", "ReadOnly removed from 2 files with cr2 extensions.");
  fireEvent(*t, "Opening", "MenuAttrib", EventKind::Click);
  for (const char* n : {"a.cr2", "B.cr2", "c.cr2"}) EXPECT_FALSE(text::isReadOnly(t.files() / n)) << n;
  EXPECT_TRUE(text::isReadOnly(t.files() / "d.pz2"));
}

TEST(MainMenus, FileMenuClosesThePopUps) {
  TestProgram t;
  t->opening.ListMRU.setVisible(true);
  t->opening.FrameMash.setVisible(true);
  fireEvent(*t, "Opening", "MenuFile", EventKind::Click);
  EXPECT_FALSE(t->opening.ListMRU.visible());
  EXPECT_FALSE(t->opening.FrameMash.visible());
}

}  // namespace
}  // namespace tolvane::test
