// Every disk operation of the workspace's writers fails in turn (a full disk, an I/O
// error, a refused permission): the user's files stay as they were or become exactly
// what the writer makes, and no other file is left beside them.
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>

#include "fault_walk.h"
#include "text/figure_text.h"
#include "workspace_fixture.h"

namespace tolvane::test {
namespace {

const std::filesystem::path kSave = std::filesystem::path(TOLVANE_TEST_DATA) / "workspace" / "save";
const int kErrors[] = {ENOSPC, EIO, EACCES};

// A figure opened on the figure page, its folder the user's.
struct OpenedFigure {
  OpenedFigure() {
    file = copyInto(kSave / "figure.cr2", w.t.files());
    w.open(file, {kMoreThanOneMap});
  }
  TestProgram& program() { return w.t; }
  std::filesystem::path userFolder() { return w.t.files(); }
  void handEdit(ui::TextBox& box, const std::string& text) {
    box.setText(text);
    fireEvent(*w.t, "Opening", box.name(), EventKind::DblClick);
  }
  WorkspaceFixture w;
  std::filesystem::path file;
};

// The same figure with bare line feeds, not yet opened.
struct LineFeedFigure {
  LineFeedFigure() {
    file = w.t.files() / "fig.cr2";
    writeFile(file, text::Replace(readFile(kSave / "figure.cr2"), "\r\n", "\n"));
  }
  TestProgram& program() { return w.t; }
  std::filesystem::path userFolder() { return w.t.files(); }
  WorkspaceFixture w;
  std::filesystem::path file;
};

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
    for (int error : kErrors) {
      SCOPED_TRACE(std::string(w.name) + " with errno " + std::to_string(error));
      walkFaults<Notebook>(error, w.run, w.prepare);
    }
  }
}

TEST(WorkspaceFaults, SaveAndSaveAsOfThePathBoxes) {
  for (const char* menu : {"MenuFileSave", "MenuFileSaveAs"}) {
    for (int error : kErrors) {
      SCOPED_TRACE(std::string(menu) + " with errno " + std::to_string(error));
      walkFaults<OpenedFigure>(error, [menu](OpenedFigure& f) {
        f.handEdit(f.w.form().TextMainBump, "C:\\tex\\b.jpg");
        f.w.t.services.dialog(f.file.string());
        fireEvent(*f.w.t, "Opening", menu, EventKind::Click);
      });
    }
  }
}

// The same figure with a line that begins with blanks, which Open chops.
struct BlankFigure {
  BlankFigure() {
    file = w.t.files() / "fig.cr2";
    writeFile(file, text::Replace(readFile(kSave / "figure.cr2"), "\r\nversion\r\n", "\r\n  version\r\n"));
  }
  TestProgram& program() { return w.t; }
  std::filesystem::path userFolder() { return w.t.files(); }
  WorkspaceFixture w;
  std::filesystem::path file;
};

TEST(WorkspaceFaults, OpenThatChopsLeadingBlanks) {
  for (int error : kErrors) {
    SCOPED_TRACE("errno " + std::to_string(error));
    walkFaults<BlankFigure>(error, [](BlankFigure& f) {
      f.w.t.services.dialog(f.file.string());
      f.w.t.services.answer(ui::Answer::OK);  // more than one texture map
      fireEvent(*f.w.t, "Opening", "MenuFileOpen", EventKind::Click);
    });
  }
}

TEST(WorkspaceFaults, OpenWithTheLineEndingRepair) {
  const Step<LineFeedFigure> none,
      olderBackup = [](LineFeedFigure&f) { writeFile(f.w.t.files() / "figCR2.bak", "an older backup"); };
  for (const auto* prepare : {&none, &olderBackup}) {
    for (int error : kErrors) {
      SCOPED_TRACE(std::string(*prepare ? "with" : "without") + " an older backup, errno " +
                   std::to_string(error));
      walkFaults<LineFeedFigure>(
          error,
          [](LineFeedFigure& f) {
            ui::ScriptedServices& s = f.w.t.services;
            s.dialog(f.file.string());
            s.answer(ui::Answer::OK);  // back up and continue
            s.answer(ui::Answer::OK);  // please wait
            s.answer(ui::Answer::OK);  // converted
            s.answer(ui::Answer::OK);  // more than one texture map
            fireEvent(*f.w.t, "Opening", "MenuFileOpen", EventKind::Click);
          },
          *prepare);
    }
  }
}

}  // namespace
}  // namespace tolvane::test
