// The five path boxes of the main form: browsing by a click on a label, hand edits
// ended by a double click, and WritePathChanges, which Save, Save As, Open and exit
// use to put the boxes with red labels into the file through cr2temp.txt.
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "workspace/workspace.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

using text::contains;

namespace {

constexpr ui::Colour kPathBlue = 0xC00000;
constexpr const char* kDefaultP4Map = "Default P4 Map";
constexpr const char* kDefaultP4Resource = "GetStringRes(1029,53)";

struct PathBox {
  ui::Label* label;
  ui::TextBox* box;
};

PathBox boxOf(ui::Opening& f, const std::string& name) {
  if (name == "TextMainOBJ" || name == "LabelMainOBJPath") return {&f.LabelMainOBJPath, &f.TextMainOBJ};
  if (name == "TextMainTex" || name == "LabelMainTex") return {&f.LabelMainTex, &f.TextMainTex};
  if (name == "TextMainBump" || name == "LabelMainBump") return {&f.LabelMainBump, &f.TextMainBump};
  if (name == "TextMainReflect" || name == "LabelMainReflect")
    return {&f.LabelMainReflect, &f.TextMainReflect};
  if (name == "TextMainTrans" || name == "LabelMainTrans") return {&f.LabelMainTrans, &f.TextMainTrans};
  return {nullptr, nullptr};
}

bool isRed(const ui::Label& l) { return l.foreColor() == ui::kRed; }

// A chosen texture file in the boxes' form: the drive letter, then the path from its
// third character with colons for backslashes ("C:\P\a.tif" -> "C:P:a.tif"). A path of
// this platform has no drive: every separator of it becomes a colon.
std::string textureBoxForm(const std::string& chosen) {
  if (chosen.size() >= 2 && chosen[1] == ':')
    return chosen.substr(0, 1) + text::Replace(text::Mid(chosen, 3), "\\", ":");
  return text::Replace(text::Replace(chosen, "\\", ":"), "/", ":");
}

}  // namespace

void LabelMainOBJPathClick(Program& program) {
  ui::Opening& f = program.opening;
  std::string saved = f.LabelFileNameForEditor.caption();
  auto chosen = ui::openDialog(program.services, program.currentDir, {}, "");
  if (!chosen || chosen->empty() || *chosen == saved) return;
  program.setCurrentDirFromFile(*chosen);
  std::string text;
  try {
    text = text::ToPoserPath(*chosen);
  } catch (const text::RuntimeError&) {
    ui::msgBox(program.services, "Geometry files must be in the Runtime folders!", "Error!", ui::Buttons::OK,
               ui::Icon::Critical);
    return;
  }
  f.NewObjLine = "figureResFile :" + text;
  f.TextMainOBJ.setText(text);
  f.LabelMainOBJPath.setForeColor(ui::kRed);
  f.PathsDirty = 1;
}

void MapLabelClick(Program& program, const std::string& label) {
  ui::Opening& f = program.opening;
  PathBox pb = boxOf(f, label);
  if (pb.label == nullptr) return;
  pb.label->setForeColor(ui::kRed);
  std::string kept = pb.box->text();
  auto chosen = ui::openDialog(program.services, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::string text = textureBoxForm(*chosen);
  if (text == kept) return;
  pb.box->setText(text);
  pb.label->setForeColor(ui::kRed);
  f.PathsDirty = 1;
}

void PathBoxDblClick(Program& program, const std::string& name) {
  ui::Opening& f = program.opening;
  PathBox pb = boxOf(f, name);
  if (pb.box == nullptr) return;
  if (contains(pb.box->text(), "/")) {
    ui::msgBox(program.services, "You used a forward instead of back slash!", "ERROR!", ui::Buttons::OK,
               ui::Icon::Critical);
    program.services.beep();
    return;
  }
  std::string text = text::Replace(pb.box->text(), "\\", ":");
  if (pb.box == &f.TextMainOBJ) f.NewObjLine = "figureResFile :" + text;
  pb.box->setText(text);
  pb.label->setForeColor(ui::kRed);
  f.PathsDirty = 1;
}

namespace {

struct Working {
  std::string obj, tex, bump, reflect, trans;
};

Working workingValues(ui::Opening& f) {
  Working w;
  if (isRed(f.LabelMainOBJPath)) w.obj = f.TextMainOBJ.text();
  if (isRed(f.LabelMainTex))
    w.tex = f.TextMainTex.text() == kDefaultP4Map ? kDefaultP4Resource : f.TextMainTex.text();
  if (isRed(f.LabelMainBump)) w.bump = f.TextMainBump.text();
  if (isRed(f.LabelMainReflect)) w.reflect = f.TextMainReflect.text();
  if (isRed(f.LabelMainTrans)) w.trans = f.TextMainTrans.text();
  return w;
}

// A map line of the second stretch: its first `keep` characters and the box value.
void replaceMap(std::string& line, std::size_t keep, const std::string& value, ui::Label& label) {
  if (!value.empty()) line = text::Left(line, static_cast<long long>(keep)) + value;
  label.setForeColor(kPathBlue);
}

// Copies the file into the scratch file with the boxes' values in place.
void writeScratch(Program& program, PathWriteVariant variant, Working w,
                  const std::filesystem::path& scratch) {
  ui::Opening& f = program.opening;
  text::StreamRewrite out(scratch, true);
  text::FigureScanner in(filePath(program, f.OpenFilePath));
  const char* keyword = variant == PathWriteVariant::Open ? "figResFile" : "figureResFile";
  std::string objValue = variant == PathWriteVariant::Exit ? f.NewObjLine : w.obj;
  int replaced = 0;
  std::string_view view;
  while (in.rawLine(view)) {
    std::string line(view);
    if (contains(line, keyword) && replaced < 2 && !objValue.empty()) {
      line = std::string(keyword) + objValue;
      f.LabelMainOBJPath.setForeColor(kPathBlue);
      ++replaced;
    }
    out.WriteLine(line);
    if (contains(line, "material skin")) break;
  }
  while (in.rawLine(view)) {
    std::string line(view);
    if (contains(line, "transparencyMap")) replaceMap(line, 17, w.trans, f.LabelMainTrans);
    if (contains(line, "reflectionMap")) replaceMap(line, 15, w.reflect, f.LabelMainReflect);
    if (contains(line, "bumpMap")) replaceMap(line, 9, w.bump, f.LabelMainBump);
    if (contains(line, "textureMap")) {
      if (line == "textureMap") {
        out.WriteLine(line);
        line.assign(in.ReadRawLine());
        if (!w.tex.empty()) line = w.tex;
        w.tex.clear();
      }
      replaceMap(line, 12, w.tex, f.LabelMainTex);
    }
    out.WriteLine(line);
    if (contains(line, "presetMaterial")) break;
  }
  while (in.rawLine(view)) out.WriteLine(view);
  out.close();
}

// Whether the chosen name's old file goes before the scratch file takes its name.
bool deleteTarget(Program& program, PathWriteVariant variant, const std::filesystem::path& target) {
  if (!text::fileExists(target)) return false;
  if (variant != PathWriteVariant::Exit) return true;
  return (program.currentDir / target.filename()) == target;
}

void saveExtraMaterials(Program& program) {
  ui::Opening& f = program.opening;
  auto chosen = ui::saveDialog(program.services, program.currentDir, f.OpenFilePath);
  f.PathsDirty = 0;
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path target = filePath(program, *chosen);
  text::moveScratchInto(program.workFile("CR2.tmp"), target, true);
  f.LastOpenedPath = *chosen;
  f.ExtraMaterialsMode = false;
}

}  // namespace

void WritePathChanges(Program& program, PathWriteVariant variant) {
  ui::Opening& f = program.opening;
  if (variant == PathWriteVariant::SaveAs && f.ExtraMaterialsMode) {
    saveExtraMaterials(program);
    return;
  }
  std::filesystem::path scratch = program.workFile("cr2temp.txt");
  // Busy while the figure is copied and again while it takes its place: the window
  // shows how far a large figure is, and takes no other command meanwhile.
  program.setBusy(true);
  writeScratch(program, variant, workingValues(f), scratch);
  program.setBusy(false);
  auto chosen = ui::saveDialog(program.services, program.currentDir, f.OpenFilePath);
  if (!chosen || chosen->empty()) {
    // On exit the cancel is not trapped: the command ends with the run-time error.
    if (variant == PathWriteVariant::Exit) text::raiseError(text::kCancelSelected);
    f.PathsDirty = 0;
    return;
  }
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path target = filePath(program, *chosen);
  program.setBusy(true);
  text::moveScratchInto(scratch, target, deleteTarget(program, variant, target));
  program.setBusy(false);
  f.PathsDirty = 0;
}

}  // namespace tolvane
