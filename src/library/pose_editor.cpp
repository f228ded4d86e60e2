#include "library/pose_editor.h"

#include <algorithm>
#include <cmath>

#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/list_scans.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"

namespace tolvane::library {

using text::contains;
using text::hasPrefix;

namespace {

ui::FormPZ2& form(Program& program) { return program.formPZ2; }

// A list entry, or "" behind the list's end, as a list box answers.
std::string entryOrBlank(const ui::ListBox& list, int index) {
  return index >= 0 && index < list.listCount() ? list.list(index) : std::string();
}

// Every close leaves the form in pose mode with its material controls hidden.
void closeForm(Program& program) {
  ui::FormPZ2& f = form(program);
  f.hideMaterialControls();
  f.setVisible(false);
}

// Pose mode: the name of each actor's real block, told from its short entry by the
// second field behind the actor line. Material mode: every actor field whole.
void loadActors(Program& program, const std::string& path, bool materialMode) {
  ui::ListBox& list = form(program).ListActorsPZ2;
  text::LineReader in(text::nativePath(path));
  std::string field, first, second;
  while (in.readField(field)) {
    if (!hasPrefix(field, "actor")) continue;
    if (materialMode) {
      list.addItem(field);
      continue;
    }
    first = in.ReadField();
    second = in.ReadField();
    if (second.empty() || contains(second, "Offset")) continue;
    std::string name = text::Mid(field, 7);
    std::size_t colon = name.find(':');
    if (colon != std::string::npos) list.addItem(name.substr(0, colon));
  }
}

// The materials of the figure section with the text of their KdColor lines: the scan
// of the main window's material lists, keeping the colour text as it stands.
void loadMaterials(Program& program, const std::string& path) {
  ui::FormPZ2& f = form(program);
  text::FigureScanner in(text::nativePath(path));
  text::MaterialScan scan = text::scanMaterials(in, text::FileKind(path), true);
  for (std::string& name : scan.names) f.ListMaterialsMAT.addItem(name);
  for (std::string& colour : scan.colours) f.ListMATColors.addItem(colour);
}

// The pose: the source's seven head lines, a scene's figureResFile line, then the
// wanted actors' blocks. The actor line that ends a copied block is neither written nor
// tested, so the actor right behind a copied one is always lost.
void writePose(text::LineReader& in, text::LineWriter& out, bool scene, const std::vector<std::string>& wanted) {
  for (int i = 0; i < 7; ++i) out.WriteLine(in.ReadRawLine());
  if (scene) {
    std::string field;
    do field = in.ReadField();
    while (!hasPrefix(field, "figureRes"));
    out.WriteLine(field);
  }
  std::string line;
  while (in.readRawLine(line)) {
    if (line == "figure ") return;
    if (!hasPrefix(line, "actor")) continue;
    std::string name = text::Mid(line, 7);
    std::size_t colon = name.find(':');
    name = colon == std::string::npos ? std::string() : name.substr(0, colon);
    if (std::find(wanted.begin(), wanted.end(), name) == wanted.end()) continue;
    out.WriteLine(line);
    while (in.readRawLine(line) && !hasPrefix(line, "actor")) {
      if (line == "figure ") return;
      out.WriteLine(line);
    }
  }
}

void savePose(Program& program) {
  ui::FormPZ2& f = form(program);
  program.setBusy(true);
  std::string path = f.LabelFNamePZ2.caption();
  // Pose.txt is opened for appending: what a crashed run left stays in front.
  text::StreamRewrite out(program.workFile("\\Pose.txt"), false);
  std::string output = text::Left(path, static_cast<long long>(text::InStr(path, ".")) - 1) + "New.pz2";
  try {
    text::LineReader in(text::nativePath(path));
    writePose(in, out.out(), text::PlainKind(path) == "pz3", f.ListActorsWanted.items());
    out.WriteLine("}");
    in.close();
    out.close();
    text::moveScratchInto(out.scratch(), text::nativePath(output), true);
  } catch (...) {
    out.discard();
    program.setBusy(false);
    throw;
  }
  program.setBusy(false);
  f.ListActorsPZ2.clear();
  f.SourcePath.clear();
  ui::msgBox(program.services, "New pose saved as " + output, "Note!");
  closeForm(program);
}

// The material blocks of the figure section, from the first tab-"material" line to the
// line that holds "preset" or "displayMode", changed as the check boxes say.
void writeMaterials(ui::FormPZ2& f, text::LineReader& in, text::LineWriter& out) {
  std::string line;
  do
    if (!in.readField(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  while (line != "figure");
  do
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  while (line.compare(0, 9, "\tmaterial") != 0);
  bool keep = f.CheckAllMat.value();
  int colour = 0;
  const std::vector<std::string>& wanted = f.ListMaterialsMATWanted.items();
  for (; !contains(line, "preset") && !contains(line, "displayMode");) {
    if (!f.CheckAllMat.value() && contains(line, "material")) {
      // A wanted name also takes every material whose name ends in it.
      keep = std::any_of(wanted.begin(), wanted.end(), [&line](const std::string& w) {
        return line.size() >= w.size() && line.compare(line.size() - w.size(), w.size(), w) == 0;
      });
    }
    if (!f.CheckIncludeMaps.value() && contains(line, "Map") && !contains(line, "NO_MAP")) line = withoutMap(line);
    if (f.CheckNoTrans.value() && contains(line, "transparency") && contains(line, "Map") && !contains(line, "NO_MAP"))
      line = withoutMap(line);
    if (f.CheckSetToWhite.value()) {
      for (const char* key : {"KdColor", "KaColor", "KsColor"})
        if (contains(line, key)) {
          line = std::string("\t\t") + key + " 1 1 1 1";
          break;
        }
    } else if (contains(line, "KdColor")) {
      // Paired by index with the colour list, which a moved material no longer matches.
      line = "\t\tKdColor " + entryOrBlank(f.ListMATColors, colour++);
    }
    if (keep) out.WriteLine(line);
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  }
}

void saveMaterials(Program& program) {
  ui::FormPZ2& f = form(program);
  std::filesystem::path scratch = program.workFile("\\Mat.pz2");
  text::StreamRewrite out(scratch, true);
  try {
    for (const char* head : {"{", " ", "Version", "\t{", "\tNumber 4.01", "\t}", "figure", "{"}) out.WriteLine(head);
    text::LineReader in(text::nativePath(f.LabelFNamePZ2.caption()));
    writeMaterials(f, in, out.out());
    out.WriteLine("}");
    out.WriteLine("}");
    in.close();
    out.close();
  } catch (...) {
    out.discard();
    throw;
  }
  if (f.ListMaterialsMATWanted.listCount() == 0 && !f.CheckAllMat.value()) {
    ui::msgBox(program.services,
               "No materials chosen.  Check off \"Include ALL Materials\", or choose at least one from the list. "
               "DOUBLE CLICK to choose.",
               "Error!", ui::Buttons::OK, ui::Icon::Critical);
    f.SaveFailed = true;
    return;
  }
  std::string ploc = program.posersFolder();
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.filter = "PZ2(*.pz2)";
  request.startFolder = text::nativePath(text::Left(ploc, static_cast<long long>(ploc.size()) - 1));
  auto chosen = program.services.fileDialog(request);
  if (!chosen || chosen->empty()) return;  // Mat.pz2 stays in the work folder
  program.setCurrentDirFromFile(*chosen);
  text::moveScratchInto(scratch, text::nativePath(*chosen), true);
  closeForm(program);
}

// Splits "r g b a" and gives the first three as a swatch colour (times 256, rounded,
// at most 255).
ui::Colour swatch(const std::string& entry) {
  ui::Colour colour = 0;
  std::size_t at = 0;
  for (int i = 0; i < 3; ++i) {
    std::size_t start = entry.find_first_not_of(' ', at);
    if (start == std::string::npos) break;
    at = entry.find(' ', start);
    double v = std::round(text::Val(entry.substr(start, at == std::string::npos ? at : at - start)) * 256);
    colour |= static_cast<ui::Colour>(std::clamp(v, 0.0, 255.0)) << (8 * i);
    if (at == std::string::npos) break;
  }
  return colour;
}

}  // namespace

std::string colourComponentText(int component) {
  std::string text = text::Trim(text::StrSingle(component / 256.0));
  if (!text.empty() && (text[0] < '0' || text[0] > '9')) text = "0" + text;
  if (text == "0.0" || text == "00") text = "0";
  return text;
}

std::string withoutMap(const std::string& line) {
  std::size_t blank = line.find(' ');
  return (blank == std::string::npos ? line : line.substr(0, blank + 1)) + "NO_MAP";
}

void ShowPoseEditor(Program& program, bool materialMode) {
  ui::FormPZ2& f = form(program);
  f.LabelMAT.setVisible(materialMode);
  std::string path = program.opening.LabelFileNameForEditor.caption();
  std::string kind = text::PlainKind(path);
  if (kind != "cr2" && kind != "pz3") {
    ui::msgBox(program.services, "CR2 or PZ3 files only!", "Error!", ui::Buttons::OK, ui::Icon::Exclamation);
    closeForm(program);
    return;
  }
  // A new session starts from empty lists, whatever the last one left.
  for (ui::ListBox* l : {&f.ListActorsPZ2, &f.ListActorsWanted, &f.ListMaterialsMAT, &f.ListMaterialsMATWanted,
                         &f.ListMATColors})
    l->clear();
  f.SaveFailed = false;
  f.ColorsChanged = false;
  if (materialMode) {
    for (ui::Control* c : std::initializer_list<ui::Control*>{
             &f.CheckIncludeMaps, &f.CheckSetToWhite, &f.ListMaterialsMAT, &f.CheckAllMat, &f.Frame1,
             &f.CheckNoTrans, &f.ListMaterialsMATWanted, &f.LabelChangeColor, &f.ShapePresentColor,
             &f.ShapeNewColor, &f.LabelPresent, &f.LabelNew})
      c->setVisible(true);
    loadMaterials(program, path);
  }
  f.LabelFNamePZ2.setCaption(path);
  f.SourcePath = path;
  program.setBusy(true);
  try {
    loadActors(program, path, materialMode);
  } catch (...) {
    program.setBusy(false);
    throw;
  }
  program.setBusy(false);
  f.setVisible(true);
}

void PoseActorsDblClick(Program& program) {
  ui::FormPZ2& f = form(program);
  int i = f.ListActorsPZ2.listIndex();
  if (i < 0) return;
  f.ListActorsWanted.addItem(f.ListActorsPZ2.list(i));
  f.ListActorsPZ2.removeItem(i);
}

void PoseMaterialsDblClick(Program& program) {
  ui::FormPZ2& f = form(program);
  int i = f.ListMaterialsMAT.listIndex();
  if (i < 0) return;
  // ListMATColors keeps its entries: from here on the indexes of the two lists drift.
  f.ListMaterialsMATWanted.addItem(f.ListMaterialsMAT.list(i));
  f.ListMaterialsMAT.removeItem(i);
}

void PoseMaterialsClick(Program& program) {
  ui::FormPZ2& f = form(program);
  int i = f.ListMaterialsMAT.listIndex();
  if (i < 0) return;
  f.ShapePresentColor.setBackColor(swatch(entryOrBlank(f.ListMATColors, i)));
}

void PoseMaterialsRightRelease(Program& program) {
  ui::FormPZ2& f = form(program);
  int i = f.ListMaterialsMAT.listIndex();
  if (i < 0) return;
  auto chosen = program.services.chooseColour(f.ShapePresentColor.backColor());
  if (!chosen) return;
  ui::Colour c = *chosen & 0xFFFFFF;
  f.ShapeNewColor.setBackColor(c);
  std::string entry = colourComponentText(static_cast<int>(c & 0xFF)) + " " +
                      colourComponentText(static_cast<int>((c >> 8) & 0xFF)) + " " +
                      colourComponentText(static_cast<int>((c >> 16) & 0xFF)) + " 1";
  if (i < f.ListMATColors.listCount()) f.ListMATColors.setItem(i, entry);
  f.ColorsChanged = true;
}

void PoseChangeColorAdvice(Program& program, bool fromFrame) {
  ui::FormPZ2& f = form(program);
  if (f.CheckSetToWhite.value()) {
    ui::msgBox(program.services, "Please uncheck Set Colors to White.", "Note!");
    return;
  }
  ui::msgBox(program.services,
             std::string("LEFT click and then RIGHT click the material you wish to set the color for.") +
                 (fromFrame ? " " : "  ") +
                 "Be sure to change colors BEFORE choosing the materials to save to the file.",
             "Info", ui::Buttons::OK, ui::Icon::Information);
}

void PoseDone(Program& program) {
  if (form(program).materialMode())
    saveMaterials(program);
  else
    savePose(program);
}

void PoseCancel(Program& program) {
  ui::FormPZ2& f = form(program);
  f.ListActorsPZ2.clear();
  f.SourcePath.clear();
  closeForm(program);
}

void PoseUnload(Program& program) { form(program).hideMaterialControls(); }

}  // namespace tolvane::library
