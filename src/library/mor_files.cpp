#include "library/mor_files.h"

#include <algorithm>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"

namespace tolvane::library {

using text::contains;
using text::hasPrefix;

namespace {

bool isMorphLine(const std::string& line) { return contains(line, "targetGeom") || contains(line, "valueParm"); }

std::string entryOrBlank(const ui::ListBox& list, int index) {
  return index >= 0 && index < list.listCount() ? list.list(index) : std::string();
}

// A save dialog on the pose files' filter; the scratch file takes the chosen name, or
// stays in the work folder on a cancel. Returns whether it was saved.
bool saveAs(Program& program, const std::filesystem::path& scratch, const std::filesystem::path& startFolder) {
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.filter = "PZ2(*.pz2)";
  request.startFolder = startFolder;
  auto chosen = program.services.fileDialog(request);
  if (!chosen || chosen->empty()) return false;
  program.setCurrentDirFromFile(*chosen);
  text::moveScratchInto(scratch, text::nativePath(*chosen), true);
  return true;
}

std::filesystem::path poserFolderWithoutSlash(Program& program) {
  std::string ploc = program.posersFolder();
  return text::nativePath(text::Left(ploc, static_cast<long long>(ploc.size()) - 1));
}

// The MOR skeleton: the head without its "fig" lines, then each actor of the figure
// section with a channels block that holds a zero key for each of its morphs.
void writeMorTemplate(text::LineReader& in, text::LineWriter& out, ui::FormMOR& f) {
  std::string line;
  while (!hasPrefix(line = in.ReadRawLine(), "actor"))
    if (!hasPrefix(line, "fig")) out.WriteLine(line);
  while (!hasPrefix(in.ReadRawLine(), "fig")) {
  }
  std::string lastActor;
  while (in.readRawLine(line)) {
    if (hasPrefix(line, "actor")) {
      if (line != lastActor && !lastActor.empty()) {
        out.WriteLine("\t\t}");
        out.WriteLine("\t}");
      }
      lastActor = line;
      out.WriteLine(line);
      out.WriteLine(in.ReadRawLine());
      in.ReadRawLine();
      out.WriteLine("\tchannels");
      out.WriteLine("\t\t{");
      if (!in.readRawLine(line)) break;
    }
    if (isMorphLine(line)) {
      f.ListMorphs.addItem(morphName(line));
      f.ListValues.addItem("0");
      out.WriteLine(line);
      for (const char* key : {"{", "keys", "{", "k 0 0", "}", "}"}) out.WriteLine(std::string("\t\t\t") + key);
    }
  }
  out.WriteLine("\t\t}");
  out.WriteLine("\t}");
  out.WriteLine("}");
}

}  // namespace

std::string morphName(const std::string& line) {
  return contains(line, "targetGeom") ? text::Mid(line, 13) : text::Mid(line, 12);
}

std::string morValue(const std::string& value) { return text::Left(value, 1) == "." ? "0" + value : value; }

void ShowMorEditor(Program& program) {
  ui::FormMOR& f = program.formMOR;
  std::string path = program.opening.LabelFileNameForEditor.caption();
  if (text::PlainKind(path) != "cr2") {
    ui::msgBox(program.services, "CR2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    f.setVisible(false);
    return;
  }
  f.LabelFileName.setCaption(path);
  f.ListMorphs.clear();
  f.ListValues.clear();
  f.TextValue.setText("");
  text::StreamRewrite out(program.workFile("\\Mor.txt"), true);
  try {
    text::LineReader in(text::nativePath(path));
    writeMorTemplate(in, out.out(), f);
    out.close();
  } catch (...) {
    out.discard();
    throw;
  }
  f.setVisible(true);
}

void MorMorphsClick(Program& program) {
  ui::FormMOR& f = program.formMOR;
  int i = f.ListMorphs.listIndex();
  if (i >= 0) f.TextValue.setText(entryOrBlank(f.ListValues, i));
}

void MorValueEnter(Program& program) {
  ui::FormMOR& f = program.formMOR;
  int i = f.ListMorphs.listIndex();
  if (i >= 0 && i < f.ListValues.listCount()) f.ListValues.setItem(i, f.TextValue.text());
}

void MorDone(Program& program) {
  ui::FormMOR& f = program.formMOR;
  std::filesystem::path mor = program.workFile("\\Mor.txt");
  text::StreamRewrite out(program.workFile("\\Mor1.txt"), true);
  try {
    text::LineReader in(mor);
    int index = 0;
    std::string line;
    while (in.readRawLine(line)) {
      out.WriteLine(line);
      if (!isMorphLine(line)) continue;
      for (int i = 0; i < 3; ++i) out.WriteLine(in.ReadRawLine());
      in.ReadRawLine();
      out.WriteLine("\t\t\tk 0 " + morValue(entryOrBlank(f.ListValues, index++)));
    }
    in.close();
    out.close();
  } catch (...) {
    out.discard();
    throw;
  }
  text::deleteIgnoringErrors(mor);
  if (!saveAs(program, out.scratch(), program.currentDir)) return;  // Mor1.txt stays
  f.setVisible(false);
}

void MorCancel(Program& program) {
  ui::FormMOR& f = program.formMOR;
  f.ListMorphs.clear();
  f.ListValues.clear();
  f.setVisible(false);
}

namespace {

// Each morph of a pose file with its key line: the second line behind its "keys" line.
// `actors` (may be null) gets, for each morph, the name of the actor it stands in.
void readMorphs(const std::string& path, ui::ListBox& names, ui::ListBox& keys, ui::ListBox* actors,
                ui::ListBox* kinds) {
  text::LineReader in(text::nativePath(path));
  std::string line, actor;
  while (in.readRawLine(line)) {
    if (hasPrefix(line, "actor")) actor = text::Mid(line, 7);
    if (!isMorphLine(line)) continue;
    if (kinds) kinds->addItem(contains(line, "targetGeom") ? "TG" : "VP");
    if (actors) actors->addItem(actor);
    names.addItem(morphName(line));
    while (!contains(in.ReadRawLine(), "keys")) {
    }
    in.ReadRawLine();
    keys.addItem(in.ReadRawLine());
  }
}

// The first file with the checked settings of the second put in; the checked morphs it
// does not hold go to ListNotFound.
void weld(ui::FormPZ2Combine& f, text::LineReader& in, text::LineWriter& out) {
  std::string line, actor;
  int next = 0;
  const std::vector<std::string>& second = f.ListFile2.items();
  while (in.readRawLine(line)) {
    out.WriteLine(line);
    if (hasPrefix(line, "actor")) actor = text::Mid(line, 7);
    if (!isMorphLine(line)) continue;
    f.ListActors1.addItem(actor);
    for (int i = 0; i < 3; ++i) out.WriteLine(in.ReadRawLine());
    std::string name = entryOrBlank(f.ListFile1, next++);
    // A checked morph whose name is part of a longer name of this file is applied there too.
    for (int j = 0; j < static_cast<int>(second.size()); ++j) {
      if (!contains(name, second[static_cast<std::size_t>(j)])) continue;
      f.ListFoundMorphs.addItem(name);
      if (!f.ListFile2.selected(j)) continue;
      in.ReadRawLine();
      out.WriteLine(entryOrBlank(f.ListKeyLines, j));
      f.ListFoundMorphs.addItem(name);
      break;
    }
  }
  const std::vector<std::string>& found = f.ListFoundMorphs.items();
  for (int j = 0; j < static_cast<int>(second.size()); ++j)
    if (f.ListFile2.selected(j) && std::find(found.begin(), found.end(), second[static_cast<std::size_t>(j)]) == found.end())
      f.ListNotFound.addItem(second[static_cast<std::size_t>(j)] + "*" + text::StrInteger(j));
}

// The missing channels, each behind the channels head of its actor, with its key line.
void insertMissing(ui::FormPZ2Combine& f, text::LineReader& in, text::LineWriter& out) {
  std::string line;
  for (const std::string& entry : f.ListNotFound.items()) {
    std::size_t star = entry.rfind('*');
    std::string name = entry.substr(0, star);
    int index = static_cast<int>(text::Val(text::Mid(entry, static_cast<long long>(star) + 3)));
    std::string actor = entryOrBlank(f.ListActors2, index);
    actor = actor.substr(0, actor.find(':'));
    do {
      line = in.ReadRawLine();
      out.WriteLine(line);
    } while (line.substr(0, line.find(':')) != "actor " + actor);
    for (int i = 0; i < 3; ++i) out.WriteLine(in.ReadRawLine());
    out.WriteLine(std::string("\t\t") + (entryOrBlank(f.ListTGVP, index) == "TG" ? "targetGeom" : "valueParm") + name);
    for (const char* key : {"{", "keys", "{"}) out.WriteLine(std::string("\t\t\t") + key);
    out.WriteLine(entryOrBlank(f.ListKeyLines, index));
    out.WriteLine("\t\t\t}");
    out.WriteLine("\t\t\t}");
  }
  while (in.readRawLine(line)) out.WriteLine(line);
}

void printNotFound(Program& program, ui::FormPZ2Combine& f) {
  ui::PrintJob job;
  job.title = "Morphs not present";
  job.text = std::string(15, ' ') + "Morphs not present in  " + f.LabelFileFirst.caption() + "\r\n";
  for (const std::string& entry : f.ListNotFound.items()) job.text += std::string(9, ' ') + entry + "\r\n";
  program.services.print(job);
}

}  // namespace

void ShowWelder(Program& program) {
  ui::FormPZ2Combine& f = program.formPZ2Combine;
  std::string path = program.opening.LabelFileNameForEditor.caption();
  if (text::PlainKind(path) != "pz2") {
    ui::msgBox(program.services, "PZ2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  f.clearAll();
  f.LabelFileFirst.setCaption(path);
  f.setVisible(true);
  readMorphs(path, f.ListFile1, f.ListKeyLinesFirst, nullptr, nullptr);
}

void WelderOpenSecond(Program& program) {
  ui::FormPZ2Combine& f = program.formPZ2Combine;
  auto chosen = ui::openDialog(program.services, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  if (text::PlainKind(*chosen) != "pz2") {
    ui::msgBox(program.services, "PZ2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  // The kinds list goes with the others, so that an index names the same morph in all.
  for (ui::ListBox* l : {&f.ListKeyLines, &f.ListFile2, &f.ListFoundMorphs, &f.ListNotFound, &f.ListActors2,
                         &f.ListTGVP})
    l->clear();
  f.LabelFileSecond.setCaption(*chosen);
  readMorphs(*chosen, f.ListFile2, f.ListKeyLines, &f.ListActors2, &f.ListTGVP);
}

void WelderFileClick(Program& program, bool second) {
  ui::FormPZ2Combine& f = program.formPZ2Combine;
  ui::ListBox& list = second ? f.ListFile2 : f.ListFile1;
  int i = list.listIndex();
  if (i < 0) return;
  (second ? f.LabelKey2 : f.LabelKey1).setCaption(entryOrBlank(second ? f.ListKeyLines : f.ListKeyLinesFirst, i));
}

void WelderDone(Program& program) {
  ui::FormPZ2Combine& f = program.formPZ2Combine;
  f.ListActors1.clear();
  f.ListFoundMorphs.clear();
  f.ListNotFound.clear();
  std::filesystem::path combine = program.workFile("\\Combine.pz2");
  {
    text::StreamRewrite out(combine, true);
    try {
      text::LineReader in(text::nativePath(f.LabelFileFirst.caption()));
      weld(f, in, out.out());
      in.close();
      out.close();
    } catch (...) {
      out.discard();
      throw;
    }
  }
  if (f.ListNotFound.listCount() > 0) {
    text::StreamRewrite out(program.workFile("\\CombineNF.pz2"), true);
    try {
      text::LineReader in(combine);
      insertMissing(f, in, out.out());
      in.close();
      out.close();
      text::moveScratchInto(out.scratch(), combine, true);
    } catch (...) {
      out.discard();
      throw;
    }
    ui::Answer answer = ui::msgBox(
        program.services,
        "These morphs do not exist in " + f.LabelFileFirst.caption() +
            ", but were inserted.  If you would you like to use them, you will need to be sure the geometry to "
            "support them exists in the target CR2.  Print the list?",
        "Error!", ui::Buttons::YesNo);
    if (answer == ui::Answer::Yes) printNotFound(program, f);
  }
  if (!saveAs(program, combine, poserFolderWithoutSlash(program))) return;  // Combine.pz2 stays
  f.setVisible(false);
}

void WelderCancel(Program& program) {
  ui::FormPZ2Combine& f = program.formPZ2Combine;
  f.clearAll();
  f.setVisible(false);
}

}  // namespace tolvane::library
