#include "library/geometry_switch.h"

#include <algorithm>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::library {

using text::contains;
using text::StrInteger;

namespace {

// The chosen actor: its name without a figure number, and the line its block starts on.
struct Choice {
  std::string name;
  long long line = 0;
};

bool choose(const ui::ListBox& list, Choice& c) {
  int i = list.listIndex();
  if (i < 0) return false;
  const std::string& entry = list.list(i);
  if (entry == "    ") return false;
  std::size_t star = entry.find('*');
  c.line = static_cast<long long>(text::Val(star == std::string::npos ? "" : entry.substr(star + 1)));
  std::string name = text::Trim(entry.substr(0, star));
  c.name = name.substr(0, name.find(':'));
  return true;
}

// Every alternate geometry from the actor's line to the end of the file.
std::vector<std::string> alternatesFrom(const std::filesystem::path& source, long long line) {
  std::vector<std::string> names;
  text::LineReader in(source);
  for (long long i = 0; i < line; ++i) in.ReadRawLine();
  for (std::string field; in.readField(field);)
    if (text::hasPrefix(field, "alternateGeom")) names.push_back(text::Trim(text::Mid(field, 15)));
  return names;
}

// Copies raw lines up to and including the first that `stop` accepts; returns it.
template <class Stop>
std::string copyUntil(text::LineReader& in, text::LineWriter& out, Stop stop) {
  for (;;) {
    std::string line = in.ReadRawLine();
    out.WriteLine(line);
    if (stop(line)) return line;
  }
}

void writeNewChannel(text::LineWriter& out, const std::string& name) {
  for (const std::string& l :
       {"\t\tgeomChan " + name + "Geom", std::string("\t\t\t{"), std::string("\t\t\tuniqueInterp"),
        "\t\t\tname " + name + " type", std::string("\t\t\tinitValue 0"), std::string("\t\t\thidden 0"),
        std::string("\t\t\tforceLimits 4"), std::string("\t\t\tmin 0"), "\t\t\tmax" + StrInteger(1),
        std::string("\t\t\ttrackingScale 0.045"), std::string("\t\t\tkeys"), std::string("\t\t\t\t{"),
        std::string("\t\t\t\tstatic 1"), std::string("\t\t\t\tk  0  0"), std::string("\t\t\t\t}"),
        std::string("\t\t\tinterpStyleLocked 1"), std::string("\t\t\tstaticValue 0"), std::string("\t\t\t}")})
    out.WriteLine(l);
}

// The dial: an existing geomChan gets one more step; a first alternate gets the channel.
void writeChannel(text::LineReader& in, text::LineWriter& out, const std::string& name, long long count) {
  if (count > 0) {
    // The dial's own maximum goes up; the nine lines behind it close the dial's block.
    copyUntil(in, out, [](const std::string& l) { return contains(l, "geomChan"); });
    for (;;) {
      std::string line = in.ReadRawLine();
      if (text::hasPrefix(line.substr(line.find_first_not_of("\t ") == std::string::npos
                                          ? line.size()
                                          : line.find_first_not_of("\t ")),
                          "max")) {
        out.WriteLine("\t\t\tmax" + StrInteger(count + 1));
        break;
      }
      out.WriteLine(line);
    }
    for (int i = 0; i < 9; ++i) out.WriteLine(in.ReadRawLine());
    return;
  }
  for (;;) {
    std::string line = in.ReadRawLine();
    if (line == "\t\t}") {
      writeNewChannel(out, name);
      out.WriteLine(line);
      return;
    }
    out.WriteLine(line);
  }
}

}  // namespace

void GeomSwitchMenu(Program& program) {
  ui::Opening& f = program.opening;
  std::string path = f.LabelFileNameForEditor.caption();
  std::string kind = text::PlainKind(path);
  if (kind != "cr2" && kind != "pp2") {
    ui::msgBox(program.services, "CR2 or PP2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  f.ListAltGeomActors.clear();
  f.ListAltGeomActors.setVisible(true);
  f.ListAltGeomNames.setVisible(true);
  if (kind == "cr2") {
    f.ListAltGeomActors.setItems(f.ListActors.items());
    return;
  }
  std::vector<std::string> entries;
  text::LineReader in(text::nativePath(path));
  long long count = 0;
  for (std::string field; in.readField(field);) {
    ++count;
    if (!text::hasPrefix(field, "prop")) continue;
    std::string name = text::Mid(field, 6);
    long long at = count;
    in.ReadField();
    in.ReadField();
    std::string third = in.ReadField();
    count += 3;
    if (text::hasPrefix(third, "geom")) entries.push_back(name + " *" + StrInteger(at));
  }
  f.ListAltGeomActors.setItems(std::move(entries));
}

void AltGeomActorsRightClick(Program& program) {
  ui::ListBox& list = program.opening.ListAltGeomActors;
  if (list.listIndex() >= 0) list.removeItem(list.listIndex());
}

void AltGeomActorsDblClick(Program& program) {
  ui::Opening& f = program.opening;
  Choice c;
  if (!choose(f.ListAltGeomActors, c)) return;
  std::string path = f.LabelFileNameForEditor.caption();
  std::filesystem::path source = text::nativePath(path);
  f.ListAltGeomNames.setItems(alternatesFrom(source, c.line));
  long long count = f.ListAltGeomNames.listCount();
  std::string newName = c.name + "_" + std::to_string(count + 1);
  bool prop = text::PlainKind(path) == "pp2";
  std::string resultName = prop ? "\\AltGeom.pp2" : "\\AltGeom.cr2";
  text::deleteIgnoringErrors(program.workFile("\\AltGeom.cr2"));
  text::deleteIgnoringErrors(program.workFile("\\AltGeom.pp2"));
  auto clearLists = [&f] {
    for (ui::ListBox* l : {&f.ListAltGeomActors, &f.ListAltGeomNames}) {
      l->clear();
      l->setVisible(false);
    }
  };
  // The result is written under a scratch name and takes its own at the end.
  text::StreamRewrite out(program.workFile("\\AltGeom.tmp"), true);
  try {
    text::LineReader in(source);
    for (long long i = 0; i < c.line; ++i) out.WriteLine(in.ReadRawLine());
    copyUntil(in, out.out(), [](const std::string& l) { return text::Left(l, 7) == "\tparent"; });
    std::string held = in.ReadRawLine();
    while (contains(held, "alternateGeom")) {
      out.WriteLine(held);
      for (int i = 0; i < 4; ++i) out.WriteLine(in.ReadRawLine());
      held = in.ReadRawLine();
    }
    auto chosen = ui::openDialog(program.services, text::nativePath(program.posersFolder() + "Runtime\\Geometries"),
                                 "Open Alternate Geometry OBJ");
    if (!chosen || chosen->empty()) {
      out.discard();
      clearLists();
      return;
    }
    std::string relative = text::Mid(*chosen, static_cast<long long>(text::InStr(*chosen, "Geometries")) + 11);
    // The block names its file in the backslash form whatever separator the dialog used.
    std::replace(relative.begin(), relative.end(), '/', '\\');
    for (const std::string& l : {"\talternateGeom " + newName, std::string("\t{"), "\t\tname " + newName,
                                 "\t\tobjFile" + StrInteger(count + 1001) + " Runtime\\Geometries\\" + relative,
                                 std::string("\t}"), held})
      out.WriteLine(l);
    writeChannel(in, out.out(), c.name, count);
    for (std::string line; in.readRawLine(line);) out.WriteLine(line);
    in.close();
    out.replace(program.workFile(resultName));
  } catch (...) {
    out.discard();
    throw;
  }
  clearLists();
  std::string where = program.workFile(resultName).string();
  ui::msgBox(program.services,
             (prop ? "New prop saved as " : "New CR2 saved as ") + where + ", move or rename before doing another.",
             "Note!");
}

}  // namespace tolvane::library
