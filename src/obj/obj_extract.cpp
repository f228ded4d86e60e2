#include "obj/obj_extract.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"

namespace tolvane::obj {

using text::contains;

namespace {

bool isPartLine(const std::string& field) {
  return text::Left(field, 5) == "actor" || text::Left(field, 4) == "prop";
}

// Asks before a file of that name is replaced; false on Cancel.
bool overwriteOK(Program& program, const std::string& name) {
  return ui::msgBox(program.services, "If you have a file called " + name + " it will be overwritten!", "ALERT!",
                    ui::Buttons::OKCancel) == ui::Answer::OK;
}

// One part's mesh: from the first "v " line behind the part's line up to the line before
// the first that begins with "}". Faces keep their numbers.
void exportPart(const std::filesystem::path& file, const std::string& part, text::LineWriter& out) {
  text::LineReader in(file);
  std::string field;
  do field = in.ReadField();
  while (!contains(field, part));
  do field = in.ReadField();
  while (text::Left(field, 2) != "v ");
  do {
    out.WriteLine(field);
    field = in.ReadField();
  } while (text::Left(field, 1) != "}");
}

// Writes the meshes of `parts` into one new file `target`, through a scratch file.
void exportParts(Program& program, const std::filesystem::path& file, const std::vector<std::string>& parts,
                 const std::filesystem::path& target) {
  text::StreamRewrite scratch(program.workFile("\\OBJExtract.tmp"), true);
  try {
    for (const std::string& part : parts) exportPart(file, part, scratch.out());
    scratch.close();
    text::moveScratchInto(scratch.scratch(), target, true);
  } catch (...) {
    scratch.discard();
    throw;
  }
}

void hideExtractList(ui::Opening& f) {
  for (ui::Control* c : std::initializer_list<ui::Control*>{&f.ListOBJExtract, &f.FrameExtractObj,
                                                           &f.OptionSepObjFiles, &f.OptionOneObjFile})
    c->setVisible(false);
}

std::string documentPath(Program& program) { return program.opening.LabelFileNameForEditor.caption(); }

}  // namespace

std::vector<std::string> embeddedParts(const std::filesystem::path& file) {
  std::vector<std::string> parts;
  text::LineReader in(file);
  std::string field, current;
  while (in.readField(field)) {
    if (isPartLine(field)) current = field;
    else if (text::Left(field, 10) == "geomCustom") parts.push_back(current);
  }
  return parts;
}

void OBJExtractRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to export the geometry embedded in this file, as a new OBJ file.",
             "Information");
}

void OBJExtractor(Program& program) {
  ui::Opening& f = program.opening;
  if (ui::msgBox(program.services,
                 "Would you like to export the embedded geometry to a new OBJ file? (Your original file will not be "
                 "harmed.)",
                 "Note!", ui::Buttons::YesNo) != ui::Answer::Yes)
    return;
  std::vector<std::string> rows = embeddedParts(text::nativePath(documentPath(program)));
  rows.push_back("DONE");
  f.ListOBJExtract.setItems(rows);
  for (ui::Control* c : std::initializer_list<ui::Control*>{&f.ListOBJExtract, &f.FrameExtractObj,
                                                           &f.OptionSepObjFiles, &f.OptionOneObjFile})
    c->setVisible(true);
}

void OBJExtractListClick(Program& program) {
  ui::Opening& f = program.opening;
  ui::ListBox& list = f.ListOBJExtract;
  if (list.listCount() == 0 || list.listIndex() != list.listCount() - 1) return;
  std::string document = documentPath(program);
  std::filesystem::path file = text::nativePath(document);
  std::vector<std::string> parts;
  for (int i : list.selectedIndexes())
    if (i < list.listCount() - 1) parts.push_back(list.list(i));
  if (f.OptionOneObjFile.value()) {
    std::size_t dot = document.rfind('.');
    std::string name = (dot == std::string::npos ? document + "." : document.substr(0, dot + 1)) + "obj";
    if (!overwriteOK(program, name)) return hideExtractList(f);
    exportParts(program, file, parts, text::nativePath(name));
  } else {
    for (const std::string& part : parts) {
      std::string name = part.substr(0, part.find(':')) + ".obj";
      if (!overwriteOK(program, name)) return hideExtractList(f);
      exportParts(program, file, {part}, program.currentDir / name);
    }
  }
  hideExtractList(f);
}

namespace {

// The new library file: the document with the reference line behind its version block
// and, in place of each embedded mesh, the block that names the external one.
class ExternalWriter {
 public:
  ExternalWriter(text::LineWriter& out, std::string kind, std::string reference)
      : m_out(out), m_kind(std::move(kind)), m_reference(std::move(reference)) {}

  void write(text::LineReader& in) {
    std::string line;
    bool versionDone = m_kind != "cr2", inVersion = false;
    while (in.readRawLine(line)) {
      if (!versionDone) {
        m_out.WriteLine(line);
        if (contains(line, "version")) inVersion = true;
        else if (inVersion && text::Left(text::Mid(line, static_cast<long long>(line.find_first_not_of('\t')) + 1), 1) == "}") {
          m_out.WriteLine("figureResFile " + m_reference);
          versionDone = true;
        }
        continue;
      }
      m_out.WriteLine(line);
      std::string field = line.substr(std::min(line.size(), line.find_first_not_of(" \t")));
      bool actor = text::Left(field, 5) == "actor";
      bool prop = text::Left(field, 4) == "prop" && (m_kind == "pp2" || m_kind == "hr2");
      if (!actor && !prop) continue;
      std::string name = text::Mid(field, actor ? 7 : 6);
      name = name.substr(0, name.find(':'));
      if (actor && name == "BODY") continue;
      replaceGeometry(in, name, actor);
    }
  }

 private:
  // Reads the part's block head; when the head holds geomCustom, writes the block that
  // names the external OBJ and passes over the embedded mesh to the block's end.
  void replaceGeometry(text::LineReader& in, const std::string& name, bool actor) {
    std::vector<std::string> head;
    std::string line;
    while (in.readRawLine(line)) {
      std::string field = line.substr(std::min(line.size(), line.find_first_not_of(" \t")));
      if (text::Left(field, 10) == "geomCustom") {
        m_out.WriteLine(head.empty() ? "\t{" : head.front());
        if (actor) {
          m_out.WriteLine("\tstorageOffset 0 0 0");
          m_out.WriteLine("\t\tgeomHandlerGeom 13 " + name);
        } else {
          m_out.WriteLine("\tstorageOffset 0 0.3487 0");
          m_out.WriteLine("\t\tobjFileGeom 0 0 " + m_reference);
        }
        m_out.WriteLine("\t}");
        skipToBlockEnd(in);
        return;
      }
      head.push_back(line);
      if (field != "{" && text::Left(field, 13) != "storageOffset") break;
    }
    for (const std::string& h : head) m_out.WriteLine(h);
  }

  // Passes over the geomCustom block and the rest of the part's block.
  static void skipToBlockEnd(text::LineReader& in) {
    int depth = 1;  // inside the part's block
    std::string line;
    while (depth > 0 && in.readRawLine(line)) {
      for (char c : line) depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    }
  }

  text::LineWriter& m_out;
  std::string m_kind;
  std::string m_reference;
};

}  // namespace

void NewCR2ExtOBJ(Program& program) {
  std::string document = documentPath(program);
  std::filesystem::path file = text::nativePath(document);
  std::vector<std::string> parts = embeddedParts(file);
  if (parts.empty()) {
    ui::msgBox(program.services, "There is no embedded geometry in this file!", "Error!", ui::Buttons::OK,
               ui::Icon::Critical);
    return;
  }
  std::size_t dot = document.rfind('.');
  std::string base = dot == std::string::npos ? document : document.substr(0, dot);
  std::string ext = dot == std::string::npos ? std::string() : document.substr(dot);
  std::string newName = base + "new" + ext;
  std::string objName = base + "new.obj";
  if (!overwriteOK(program, newName) || !overwriteOK(program, objName)) return;
  std::string stem = text::nativePath(base).filename().string();
  std::string objFile = text::nativePath(objName).filename().string();
  std::filesystem::path folder = text::nativePath(program.posersFolder() + "Runtime\\Geometries\\" + stem);
  folder = text::resolveCaseInsensitive(folder);
  std::error_code ec;
  if (!std::filesystem::is_directory(folder)) std::filesystem::create_directories(folder, ec);
  if (!std::filesystem::is_directory(folder)) text::raiseError(text::kPathNotFound, folder.string());
  exportParts(program, file, parts, folder / objFile);
  std::string reference = ":Runtime:Geometries:" + stem + ":" + objFile;

  text::StreamRewrite scratch(program.workFile("\\ExtOBJ.tmp"), true);
  try {
    text::LineReader in(file);
    ExternalWriter(scratch.out(), text::FileKind(document), reference).write(in);
    in.close();
    scratch.close();
    text::moveScratchInto(scratch.scratch(), text::nativePath(newName), true);
  } catch (...) {
    scratch.discard();
    throw;
  }
  ui::msgBox(program.services,
             "New CR2 saved as " + newName + ", you may place it where you wish in the Library.  The OBJ is located as " +
                 (folder / objFile).string(),
             "Note!");
}

}  // namespace tolvane::obj
