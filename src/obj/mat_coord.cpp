#include "obj/mat_coord.h"

#include <algorithm>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/line_ending_repair.h"
#include "workspace/workspace.h"

namespace tolvane::obj {

using text::contains;

namespace {

bool holds(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Whether `line` heads the block of one of `names`: its last characters are the name.
bool headsBlockOf(const std::string& line, const std::vector<std::string>& names) {
  for (const std::string& n : names)
    if (!n.empty() && text::Right(line, static_cast<long long>(n.size())) == n) return true;
  return false;
}

// The removal pass: the document into CR2.tmp without the blocks of `removed`.
void removeBlocks(const std::filesystem::path& document, text::LineWriter& out,
                  const std::vector<std::string>& removed) {
  text::LineReader in(document);
  std::string line;
  bool welded = false, dropping = false;
  while (in.readRawLine(line)) {
    if (!welded) {
      welded = contains(line, "weld");
      out.WriteLine(line);
      continue;
    }
    if (contains(line, "material")) dropping = headsBlockOf(line, removed);
    else if (contains(line, "preset")) dropping = false;
    if (!dropping) out.WriteLine(line);
  }
}

// The addition pass: CR2.tmp into CR2-1.tmp with a default block for each added name in
// front of the figure's first material.
void addBlocks(const std::filesystem::path& from, text::LineWriter& out, const std::vector<std::string>& added) {
  text::LineReader in(from);
  std::string line;
  bool placed = added.empty();
  while (in.readRawLine(line)) {
    if (!placed && text::LCase(text::Left(line, 9)) == "\tmaterial") {
      std::string tabs = line.substr(0, line.find_first_not_of('\t'));
      for (const std::string& name : added)
        for (const std::string& l : defaultMaterialBlock(name, tabs)) out.WriteLine(l);
      placed = true;
    }
    out.WriteLine(line);
  }
}

std::string shortPath(const std::string& path) {
  return path.size() > 45 ? "..." + text::Right(path, 45) : path;
}

}  // namespace

FigureMaterials readFigureMaterials(const std::filesystem::path& figure) {
  FigureMaterials result;
  text::LineReader in(figure);
  std::string field;
  bool inFigure = false;
  while (in.readField(field)) {
    if (result.geometry.empty() && text::Left(field, 13) == "figureResFile") result.geometry = text::Mid(field, 15);
    if (!inFigure) {
      inFigure = field == "figure";
      continue;
    }
    if (text::Left(field, 8) == "material") {
      std::string name = text::Mid(field, 10);
      if (name != "Preview") result.names.push_back(name);
    }
  }
  return result;
}

std::vector<std::string> readObjMaterials(const std::filesystem::path& obj) {
  std::vector<std::string> names;
  text::LineReader in(obj);
  std::string line;
  while (in.readRawLine(line)) {
    if (!contains(line, "usemtl")) continue;
    std::string name = text::Mid(line, 8);
    if (name != "Preview" && !holds(names, name)) names.push_back(name);
  }
  return names;
}

std::vector<std::string> defaultMaterialBlock(const std::string& name, const std::string& tabs) {
  static const char* const kInner[] = {"KdColor 1 1 1 1",
                                       "KaColor 0 0 0 1",
                                       "KsColor 0.156863 0.129412 0.0980392 1",
                                       "TextureColor 1 1 1 1",
                                       "NsExponent 30",
                                       "tMin 0",
                                       "tMax 0",
                                       "tExpo 0.6",
                                       "bumpStrength 0",
                                       "ksIgnoreTexture 0",
                                       "reflectThruLights 1",
                                       "textureMap NO_MAP",
                                       "bumpMap NO_MAP",
                                       "reflectionMap NO_MAP",
                                       "transparencyMap NO_MAP",
                                       "ReflectionColor 1 1 1 1",
                                       "reflectionStrength 1"};
  std::vector<std::string> block = {tabs + "material " + name, tabs + "\t{"};
  for (const char* line : kInner) block.push_back(tabs + "\t" + line);
  block.push_back(tabs + "\t}");
  return block;
}

void MatCoordinator(Program& program) {
  ui::Opening& f = program.opening;
  std::string document = f.LabelFileNameForEditor.caption();
  if (text::PlainKind(document) != "cr2") {
    ui::msgBox(program.services, "CR2files only!", "Error!");
    return;
  }
  std::filesystem::path docPath = text::nativePath(document);
  FigureMaterials figure = readFigureMaterials(docPath);
  std::string objText = text::FromPoserPath(figure.geometry, program.posersFolder()).string();
  RepairLineEndings(program, objText);
  std::vector<std::string> objNames = readObjMaterials(text::nativePath(objText));
  ui::FormMatCoord& form = program.formMatCoord;
  form.ListMatRemoved.clear();
  form.ListMatAdded.clear();
  std::vector<std::string> removed, added;
  for (const std::string& n : figure.names)
    if (!holds(objNames, n) && !holds(removed, n)) removed.push_back(n);
  for (const std::string& n : objNames)
    if (!holds(figure.names, n)) added.push_back(n);
  form.ListMatRemoved.setItems(removed);
  form.ListMatAdded.setItems(added);
  form.setVisible(true);

  std::filesystem::path cr2tmp = program.workFile("CR2.tmp");
  {
    text::StreamRewrite scratch(cr2tmp, true);
    try {
      removeBlocks(docPath, scratch.out(), removed);
      scratch.close();
    } catch (...) {
      scratch.discard();
      throw;
    }
  }
  if (!removed.empty())
    ui::msgBox(program.services,
               "The materials on the left were not listed in the OBJ and were removed from the CR2.", "Note!");
  {
    text::StreamRewrite scratch(program.workFile("CR2-1.tmp"), true);
    try {
      addBlocks(cr2tmp, scratch.out(), added);
      scratch.replace(cr2tmp);
    } catch (...) {
      scratch.discard();
      throw;
    }
  }
  if (!added.empty())
    ui::msgBox(program.services,
               "The materials in the center list were not listed in the CR2 and were added to the CR2.", "Note!");
  if (removed.empty()) ui::msgBox(program.services, "There are no extra materials in the CR2.", "Note!");
  std::string before = f.LastOpenedPath;
  f.LastOpenedPath.clear();
  f.ExtraMaterialsMode = true;
  WritePathChanges(program, PathWriteVariant::SaveAs);
  f.ExtraMaterialsMode = false;
  std::string saved = f.LastOpenedPath;
  if (saved.empty()) {
    f.LastOpenedPath = before;  // cancelled: nothing saved, CR2.tmp waits in the Work folder
    return;
  }
  f.LabelFileName.setCaption(shortPath(saved));
  f.LabelFileNameForEditor.setCaption(saved);
  f.LabelFileSize.setCaption(
      text::StrInteger(static_cast<long long>(text::fileLength(text::nativePath(saved)))) + " bytes");
}

}  // namespace tolvane::obj
