#include "workspace/startup.h"

#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "workspace/workspace.h"
#include "workspace/workspace_events.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace {

constexpr const char* kStartup = "Startup";
constexpr const char* kMRUFiles = "MRUFiles";
constexpr std::size_t kMRULimit = 10;

// Scratch files of the OBJ workbench removed at start, and all removed at exit.
const char* const kStartScratch[] = {"FArray.txt", "VTArray.txt", "VArray.txt"};
const char* const kExitScratch[] = {"UV.txt",       "group.txt",  "groupsave.txt", "groupvert.txt",
                                    "groupvertex.txt", "groupface.txt", "FArray.txt", "VArray.txt",
                                    "VTArray.txt",  "secmapsave.txt", "Param.obj"};

// A settings store that cannot be written is told once per command, and the command
// goes on without the value stored.
void saveSetting(Program& program, const std::string& section, const std::string& key, const std::string& value) {
  try {
    program.settings.save(kAppName, section, key, value);
  } catch (const text::RuntimeError& e) {
    ui::msgBox(program.services,
               "The settings could not be stored (" + e.text() + "). Tolvane goes on without them.", "Error!",
               ui::Buttons::OK, ui::Icon::Critical);
  }
}

// Deletes the files of a folder whose names match `prefix`*`suffix`, with errors ignored.
void deleteMatching(const std::filesystem::path& folder, const std::string& prefix, const std::string& suffix) {
  std::error_code ec;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    std::string lower = text::LCase(name);
    if (lower.size() >= prefix.size() + suffix.size() && lower.compare(0, prefix.size(), text::LCase(prefix)) == 0 &&
        lower.compare(lower.size() - suffix.size(), suffix.size(), text::LCase(suffix)) == 0)
      text::deleteIgnoringErrors(it->path());
  }
}

std::filesystem::path resolveAgainst(const Program& program, const std::string& text) {
  std::filesystem::path p = text::nativePath(text);
  return p.is_relative() ? program.currentDir / p : p;
}

void askForPoser(Program& program) {
  std::string chosen = ui::openDialog(program.services, program.currentDir).value_or("");
  // An empty answer leaves nothing to cut nine characters from: error 5.
  std::string ploc = text::Left(chosen, static_cast<long long>(chosen.size()) - 9);
  saveSetting(program, kStartup, "PLoc", ploc);
  saveSetting(program, kStartup, "Ver", "5.0");
  deleteMatching(resolveAgainst(program, ploc), "Tolvane4", ".exe");
}

// The date and time as the run-time's Now prints them: 11/22/2026 7:38:39 AM.
std::string nowText(Program& program) {
  std::time_t t = std::chrono::system_clock::to_time_t(program.services.now());
  std::tm tm{};
  localtime_r(&t, &tm);
  int hour = tm.tm_hour % 12 == 0 ? 12 : tm.tm_hour % 12;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%d/%d/%d %d:%02d:%02d %s", tm.tm_mon + 1, tm.tm_mday, tm.tm_year + 1900, hour,
                tm.tm_min, tm.tm_sec, tm.tm_hour < 12 ? "AM" : "PM");
  return buf;
}

}  // namespace

void OpeningLoad(Program& program) {
  ui::Opening& form = program.opening;
  std::string ploc = program.settings.get(kAppName, kStartup, "PLoc", "0");
  if (ui::isUnset(ploc)) askForPoser(program);

  if (ui::isUnset(program.settings.get(kAppName, kStartup, "TolvaneLoc", "0")))
    saveSetting(program, kStartup, "TolvaneLoc", program.appPath);

  // The value read before the first-run question: "0" on the very first start, so the
  // folder appears from the second start on.
  ::mkdir(resolveAgainst(program, ploc + "\\cr2install").c_str(), 0777);

  form.MRUCount = 0;
  form.ListMRU.clear();
  for (int i = 0;; ++i) {
    std::string value = program.settings.get(kAppName, kMRUFiles, std::to_string(i), "");
    if (value.empty()) break;
    AddToMRU(program, value);
  }

  program.services.yield();
  form.MenuCR2Tools.setEnabled(false);
  for (const char* name : kStartScratch) text::deleteIgnoringErrors(program.workFile(name));

  form.OpenFilePath = program.commandLine;
  if (!program.commandLine.empty()) LoadWithoutDialog(program, program.commandLine);
}

void AddToMRU(Program& program, const std::string& path) {
  ui::ListBox& list = program.opening.ListMRU;
  std::string wanted = text::UCase(path);
  for (int i = 0; i <= program.opening.MRUCount && i < list.listCount(); ++i)
    if (text::UCase(list.list(i)) == wanted) return;
  list.addItem(path);
  ++program.opening.MRUCount;
  if (static_cast<std::size_t>(list.listCount()) > kMRULimit) {
    list.removeItem(0);
    --program.opening.MRUCount;
  }
}

void SaveMRU(Program& program) {
  ui::ListBox& list = program.opening.ListMRU;
  for (int i = 0; i < program.opening.MRUCount; ++i)
    saveSetting(program, kMRUFiles, std::to_string(i), i < list.listCount() ? list.list(i) : std::string());
}

void ListMRUClick(Program& program) {
  ui::Opening& form = program.opening;
  int index = form.ListMRU.listIndex();
  if (index < 0) return;
  form.OpenFilePath = form.ListMRU.list(index);
  form.ListMRU.setVisible(false);
  if (!text::fileExists(text::nativePath(form.OpenFilePath))) {
    ui::msgBox(program.services, "This file has been moved or deleted.", "Error!", ui::Buttons::OK,
               ui::Icon::Critical);
    // The count stays: the exit then writes an empty value in the last key, so the
    // removed file does not come back at the next start.
    form.ListMRU.removeItem(index);
    return;
  }
  if (form.OpenFilePath.empty()) return;
  AddToMRU(program, form.OpenFilePath);
  form.SkipOpenDialog = -1;
  OpenFile(program);
}

void AppendNotes(Program& program, const std::string& notesFile) {
  ui::TextBox& box = program.opening.TextOpeningNotes;
  if (box.text().empty()) return;
  text::LineWriter out(text::nativePath(notesFile), text::LineWriter::Mode::Append);
  out.WriteLine("**** " + nowText(program) + " ****");
  out.WriteLine("** " + std::string() + " **");
  out.WriteLine(box.text());
  out.close();
  box.setText("");
  box.setVisible(false);
}

void OpeningUnload(Program& program) {
  ui::Opening& form = program.opening;
  if (form.PathsDirty == 1 &&
      ui::msgBox(program.services, "Save path changes before exit?", "Alert!", ui::Buttons::YesNo,
                 ui::Icon::Question) == ui::Answer::Yes)
    WritePathChanges(program, PathWriteVariant::Exit);
  text::deleteIgnoringErrors(program.workFile("color.txt"));
  // The exit path names the notes file without a separator after the program's folder.
  if (!form.TextOpeningNotes.text().empty()) {
    std::string notes = program.appPath + "Notes.txt";
    try {
      AppendNotes(program, notes);
    } catch (const text::RuntimeError& e) {
      // A folder that cannot be written must not keep the user from leaving.
      ui::msgBox(program.services, "The notes could not be written to " + notes + " (" + e.text() + ").", "Error!",
                 ui::Buttons::OK, ui::Icon::Critical);
    }
  }
  SaveMRU(program);
  form.ListMRU.setVisible(false);
  for (ui::Form* f : program.forms())
    if (f != &form) f->setVisible(false);
  for (const char* name : kExitScratch) text::deleteIgnoringErrors(program.workFile(name));
  if (form.windowState() == ui::WindowState::Normal) {
    for (ui::Control* c : form.controls()) c->setVisible(false);
    program.services.tileClose();
    program.services.playSound(program.services.systemFolder() / "Quillmere3.wav");
  }
  program.quitRequested = true;
}

void MenuAboutClick(Program& program) {
  ui::msgBox(program.services,
             "Tolvane\r\nVer. 5.0\r\n\r\nA workbench for Poser figure, pose, hair, prop and scene files.",
             "About Tolvane", ui::Buttons::OK, ui::Icon::Information);
}

void MenuAttribClick(Program& program) {
  auto chosen = ui::openDialog(program.services, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::string extension = text::Right(*chosen, 3);
  std::vector<std::filesystem::path> matches;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(program.currentDir, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (it->is_regular_file(ec) && text::LCase(text::Right(name, 4)) == "." + text::LCase(extension))
      matches.push_back(it->path());
  }
  // The folder's own order, as the home platform lists it: by name, letter case ignored.
  std::sort(matches.begin(), matches.end(), [](const std::filesystem::path& a, const std::filesystem::path& b) {
    return text::LCase(a.filename().string()) < text::LCase(b.filename().string());
  });
  int count = 0;
  for (std::size_t i = 0; i < matches.size(); ++i) {
    if (!text::isReadOnly(matches[i])) continue;
    text::clearReadOnly(matches[i]);
    if (i > 0) ++count;  // the first match is never counted
  }
  ui::msgBox(program.services,
             "ReadOnly removed from" + text::StrInteger(count) + " files with " + extension + " extensions.",
             "Note!", ui::Buttons::OK, ui::Icon::Information);
}

namespace {

void showFormNotes(Program& program) {
  std::filesystem::path notes = program.workFile("Notes.txt");
  if (!text::fileExists(notes)) text::LineWriter(notes, text::LineWriter::Mode::Append).close();
  std::ifstream in(notes, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  program.formNotes.RichTextBox1.setText(text.str());
  program.formNotes.setVisible(true);
}

// The notebook's text is written beside the notes file and then replaces it in one
// step: a write that fails (a full disk) leaves the older notes as they were.
void saveFormNotes(Program& program) {
  std::filesystem::path scratch = program.workFile("Notes.tmp");
  text::deleteIgnoringErrors(scratch);
  try {
    text::LineWriter out(scratch, text::LineWriter::Mode::Output);
    out.write(program.formNotes.RichTextBox1.text());
    out.close();
    text::replaceAtomically(scratch, program.workFile("Notes.txt"));
  } catch (...) {
    text::deleteIgnoringErrors(scratch);
    throw;
  }
}

void hidePopUps(Program& program, bool fileMenu) {
  ui::Opening& form = program.opening;
  if (fileMenu) {
    form.ListMRU.setVisible(false);
    form.ListAllTexMaps.setVisible(false);
  }
  for (ui::Control* c : std::initializer_list<ui::Control*>{&form.FrameMash, &form.OptionMashOBJ,
                                                            &form.OptionMashMorph, &form.PictureMirror})
    c->setVisible(false);
}

}  // namespace

void registerStartupEvents(EventTable& table) {
  const std::string o = "Opening";
  table.add(o, o, EventKind::Load, [](Program& p, const EventArgs&) { OpeningLoad(p); });
  table.add(o, o, EventKind::Unload, [](Program& p, const EventArgs&) { OpeningUnload(p); });
  table.add(o, "MenuFileExit", EventKind::Click, [](Program& p, const EventArgs&) { OpeningUnload(p); });
  table.add(o, "MenuFile", EventKind::Click, [](Program& p, const EventArgs&) { hidePopUps(p, true); });
  table.add(o, "MenuCR2Tools", EventKind::Click, [](Program& p, const EventArgs&) { hidePopUps(p, false); });
  table.add(o, "menuRecent", EventKind::Click,
            [](Program& p, const EventArgs&) { p.opening.ListMRU.setVisible(true); });
  table.add(o, "ListMRU", EventKind::Click, [](Program& p, const EventArgs&) { ListMRUClick(p); });
  table.add(o, "MenuAbout", EventKind::Click, [](Program& p, const EventArgs&) { MenuAboutClick(p); });
  table.add(o, "MenuAttrib", EventKind::Click, [](Program& p, const EventArgs&) { MenuAttribClick(p); });
  table.add(o, "MenuPropObjRel", EventKind::Click, [](Program&, const EventArgs&) {});
  table.add(o, "MenuPropTexRel", EventKind::Click, [](Program&, const EventArgs&) {});
  table.add(o, "MenuNotepad", EventKind::Click,
            [](Program& p, const EventArgs&) { p.opening.TextOpeningNotes.setVisible(true); });
  // The double click closes the notepad: written when it holds text, hidden either way.
  table.add(o, "TextOpeningNotes", EventKind::DblClick, [](Program& p, const EventArgs&) {
    AppendNotes(p, p.workFile("Notes.txt").string());
    p.opening.TextOpeningNotes.setVisible(false);
  });
  table.add(o, "TextOpeningNotes", EventKind::RightClick, [](Program& p, const EventArgs&) {
    ui::msgBox(p.services, "Doubleclick to hide this notepad.", "Info", ui::Buttons::OK, ui::Icon::Information);
  });
  table.add(o, "MenuNotebook", EventKind::Click, [](Program& p, const EventArgs&) { showFormNotes(p); });
  table.add("FormNotes", "CommandSave", EventKind::Click, [](Program& p, const EventArgs&) { saveFormNotes(p); });
  table.add("FormNotes", "CommandClose", EventKind::Click,
            [](Program& p, const EventArgs&) { p.formNotes.setVisible(false); });
}

}  // namespace tolvane
