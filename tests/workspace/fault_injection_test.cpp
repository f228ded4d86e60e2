// Every disk operation of the workspace's writers fails in turn (a full disk, an I/O
// error, a refused permission): the user's files stay as they were or become exactly
// what the writer makes, and no other file is left beside them.
#include <gtest/gtest.h>

#include <chrono>

#include "fault_walk.h"
#include "text/figure_text.h"
#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

// The save tests' figure in the user's folder, its text changed by `Edit`, not yet opened.
template <std::string (*Edit)(const std::string&)>
struct FigureFile : WorkspaceFixture {
  FigureFile() { writeFile(file, Edit(readFile(kSaveData / "figure.cr2"))); }
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.files(); }
  std::filesystem::path file = t.files() / "fig.cr2";
};
// With bare line feeds, and with a line that begins with blanks, which Open chops.
std::string lineFeeds(const std::string& text) { return text::Replace(text, "\r\n", "\n"); }
std::string blankVersion(const std::string& text) {
  return text::Replace(text, "\r\nversion\r\n", "\r\n  version\r\n");
}
using LineFeedFigure = FigureFile<lineFeeds>;
using BlankFigure = FigureFile<blankVersion>;

// Notes kept over the years: the notebook in the Work folder and the exit's notes file
// beside it.
struct Notebook {
  Notebook() {
    t.services.setNow(std::chrono::system_clock::from_time_t(0));
    writeFile(t.work() / "Notes.txt", crlf({"**** older notes ****", "keep these"}));
    writeFile(t.work().string() + "Notes.txt", crlf({"**** older notes ****", "keep these too"}));
  }
  TestProgram& program() { return t; }
  std::filesystem::path userFolder() { return t.dir.path(); }
  TestProgram t;
};

TEST(WorkspaceFaults, Notes) {
  struct Writer {
    const char* name;
    Step<Notebook> prepare, run;
  };
  const Writer writers[] = {
      {"double click appends",
       {},
       [](Notebook& n) {
         n.t->opening.TextOpeningNotes.setText("fix the lShin morph");
         fireEvent(*n.t, "Opening", "TextOpeningNotes", EventKind::DblClick);
       }},
      {"the notebook saves",
       [](Notebook& n) { fireEvent(*n.t, "Opening", "MenuNotebook", EventKind::Click); },
       [](Notebook& n) {
         ui::TextBox& page = n.t->formNotes.RichTextBox1;
         page.setText(page.text() + "a new line\r\n");
         fireEvent(*n.t, "FormNotes", "CommandSave", EventKind::Click);
       }},
      {"the exit appends",
       {},
       [](Notebook& n) {
         n.t->opening.TextOpeningNotes.setText("remember");
         n.t.services.answer(ui::Answer::OK);  // the notes could not be written
         fireEvent(*n.t, "Opening", "Opening", EventKind::Unload);
       }},
  };
  for (const Writer& w : writers) {
    SCOPED_TRACE(w.name);
    walkEveryFault<Notebook>(w.run, w.prepare);
  }
}

TEST(WorkspaceFaults, SaveAndSaveAsOfThePathBoxes) {
  for (const char* menu : {"MenuFileSave", "MenuFileSaveAs"}) {
    SCOPED_TRACE(menu);
    walkEveryFault<OpenedFigure>([menu](OpenedFigure& f) {
      f.handEdit(f.form().TextMainBump, "C:\\tex\\b.jpg");
      f.click(menu, f.file);
    });
  }
}

TEST(WorkspaceFaults, OpenThatChopsLeadingBlanks) {
  walkEveryFault<BlankFigure>([](BlankFigure& f) {
    f.t.services.dialog(f.file.string());
    f.t.services.answer(ui::Answer::OK);  // more than one texture map
    fireEvent(*f.t, "Opening", "MenuFileOpen", EventKind::Click);
  });
}

TEST(WorkspaceFaults, OpenWithTheLineEndingRepair) {
  const Step<LineFeedFigure> none,
      olderBackup = [](LineFeedFigure& f) { writeFile(f.t.files() / "figCR2.bak", "an older backup"); };
  for (const auto* prepare : {&none, &olderBackup}) {
    SCOPED_TRACE(*prepare ? "with an older backup" : "without an older backup");
    walkEveryFault<LineFeedFigure>(
        [](LineFeedFigure& f) {
          f.t.services.dialog(f.file.string());
          // Back up and continue, please wait, converted, more than one texture map.
          for (int i = 0; i < 4; ++i) f.t.services.answer(ui::Answer::OK);
          fireEvent(*f.t, "Opening", "MenuFileOpen", EventKind::Click);
        },
        *prepare);
  }
}

}  // namespace
}  // namespace tolvane::test
