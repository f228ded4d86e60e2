#include "obj/obj_save.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

using text::hasPrefix;

// Fields of the OBJ, each with one leading blank taken off.
template <class Each>
void eachField(const std::filesystem::path& file, Each each) {
  text::LineReader in(file);
  std::string line;
  while (in.readField(line)) {
    if (hasPrefix(line, " ")) line.erase(0, 1);
    each(line);
  }
  in.close();
}

bool selectedEntry(const ui::ListBox& list, const std::string& wanted) {
  for (int i = 0; i < list.listCount(); ++i)
    if (list.selected(i) && text::Trim(list.list(i)) == wanted) return true;
  return false;
}

// The chosen groups' faces, each group with the material it had, and every vertex line.
void writeGroups(const std::filesystem::path& source, text::LineWriter& out, const ui::ListBox& chosen) {
  bool print = false, entered = false;
  std::string material;
  eachField(source, [&](const std::string& line) {
    if (print && entered && !hasPrefix(line, "u")) {
      entered = false;
      out.WriteLine(material);
    }
    if (line != "g" && hasPrefix(line, "v")) return out.WriteLine(line);
    if (line == "g") out.WriteLine(line);
    if (hasPrefix(line, "u")) material = line;
    if (hasPrefix(line, "g")) {
      print = selectedEntry(chosen, text::Mid(line, 3));
      entered = entered || print;
    }
    if (print) out.WriteLine(line);
  });
}

// Everything but the "usemtl" lines of the materials not chosen.
void writeMaterials(const std::filesystem::path& source, text::LineWriter& out, const ui::ListBox& chosen) {
  bool print = false;
  eachField(source, [&](const std::string& line) {
    if (!hasPrefix(line, "u")) return out.WriteLine(line);
    print = false;
    for (int i = 0; i < chosen.listCount(); ++i)
      if (chosen.selected(i) && line == "usemtl " + text::Trim(chosen.list(i))) print = true;
    if (print) out.WriteLine(line);
  });
}

// A line renamed by the pending list: the name behind `prefix` matched against the
// trimmed old names.
std::string renamedLine(const std::string& line, std::size_t nameStart, const std::string& prefix,
                        const ui::ListBox& pending) {
  std::string name = text::Mid(line, static_cast<long long>(nameStart));
  std::string result = line;
  for (const std::string& item : pending.items()) {
    std::size_t star = item.find('*');
    if (text::Trim(item.substr(0, star)) == name) result = prefix + item.substr(star + 1);
  }
  return result;
}

}  // namespace

void offerSave(Program& program, const std::filesystem::path& scratch) {
  auto chosen = ui::saveDialog(program.services, program.currentDir, "");
  if (!chosen || chosen->empty()) return;  // the cancel error: the file stays in the work folder
  program.setCurrentDirFromFile(*chosen);
  text::moveScratchInto(scratch, filePath(program, *chosen), true);
}

bool SaveSelected(Program& program, ListKind kind) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.ListGrpRen.listCount() > 0) {
    const char* text =
        kind == ListKind::Groups
            ? "You must save the file by exiting the OBJ Screen before saving groups from the file, "
              "since you have renamed some."
            : "You must save the file by exiting the OBJ Screen before saving materials from the "
              "file, since you have renamed some materials.";
    ui::msgBox(program.services, text, "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return false;
  }
  std::filesystem::path scratch = program.workFile("newobj.obj");
  text::deleteIgnoringErrors(scratch);
  {
    text::LineWriter out(scratch, text::LineWriter::Mode::Append);
    std::filesystem::path source = filePath(program, f.captionPath());
    if (kind == ListKind::Groups)
      writeGroups(source, out, f.ListGroupsSave);
    else
      writeMaterials(source, out, f.ListMaterialsSave);
    out.close();
  }
  offerSave(program, scratch);
  return true;
}

void RewriteWithRenames(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  std::filesystem::path first = program.workFile("newobj.txt"), second = program.workFile("newobj1.txt");
  text::deleteIgnoringErrors(first);
  {
    text::LineWriter out(first, text::LineWriter::Mode::Append);
    eachField(filePath(program, f.captionPath()), [&](const std::string& line) {
      std::string written = line;
      if (hasPrefix(line, "g"))
        written = renamedLine(line, 3, "g ", f.ListGrpRen);
      else if (hasPrefix(line, "u"))
        written = renamedLine(line, 8, "usemtl ", f.ListMatRen);
      // Any line of these two kinds that holds NULL goes, a name that holds it too.
      if ((hasPrefix(line, "g") || hasPrefix(line, "u")) && text::contains(written, "NULL")) return;
      out.WriteLine(written);
    });
    out.close();
  }
  // Renames may have made neighbouring groups equal: their runs become one.
  text::deleteIgnoringErrors(second);
  {
    text::LineWriter out(second, text::LineWriter::Mode::Append);
    std::string lastGroup;
    bool anyGroup = false;
    eachField(first, [&](const std::string& line) {
      if (hasPrefix(line, "g")) {
        if (anyGroup && line == lastGroup) return;
        lastGroup = line;
        anyGroup = true;
      }
      out.WriteLine(line);
    });
    out.close();
  }
  text::deleteIgnoringErrors(first);
  text::renameFile(second, first);
  offerSave(program, first);
}

}  // namespace tolvane::obj
