#include "library/converters.h"

#include <vector>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"

namespace tolvane::library {

using text::contains;

namespace {

// The path up to its first dot, with the dot when `withDot`.
std::string stem(const std::string& path, bool withDot) {
  long long dot = static_cast<long long>(text::InStr(path, "."));
  return text::Left(path, withDot ? dot : dot - 1);
}

// A map's file name: the text behind the field's first blank, without the quotes at
// both ends when it holds one.
std::string mapFile(const std::string& field) {
  std::size_t blank = field.find(' ');
  std::string name = blank == std::string::npos ? std::string() : field.substr(blank + 1);
  if (name.find('"') != std::string::npos && name.size() >= 2) name = name.substr(1, name.size() - 2);
  return name;
}

// Raw lines to the scratch file up to and including the first that holds `word`.
void copyThrough(text::LineReader& in, text::StreamRewrite& out, std::string_view word) {
  std::string line;
  do {
    line = in.ReadRawLine();
    out.WriteLine(line);
  } while (!contains(line, word));
}

}  // namespace

std::string mtlLine(const std::string& field) {
  std::string two = text::Left(field, 2);
  if (two == "Kd" || two == "Ka" || two == "Ks" || two == "Ns") {
    std::size_t blank = field.find(' ');
    return two + (blank == std::string::npos ? std::string() : field.substr(blank));
  }
  if (two == "te" && !contains(field, "NO_MAP")) return "map_Kd " + mapFile(field);
  if (two == "bu" && !contains(field, "Strength") && !contains(field, "NO_MAP")) return "map_Bump " + mapFile(field);
  return {};
}

void MakeMTL(Program& program) {
  std::string path = program.opening.LabelFileNameForEditor.caption();
  if (text::FileKind(path) != "pz3") {
    ui::msgBox(program.services, "PZ3 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  std::string output = stem(path, true) + "mtl";
  text::StreamRewrite out(program.workFile("\\mtl.txt"), true);
  try {
    text::LineReader in(text::nativePath(path));
    while (in.ReadField() != "figure") {
    }
    while (!in.atEnd()) {
      std::string field = in.ReadField();
      if (field.empty() && !in.atEnd()) field = in.ReadField();
      if (contains(field, "displayMode")) break;
      if (!text::hasPrefix(field, "material")) continue;
      out.WriteLine("newmtl " + text::Mid(field, 10));
      for (field = in.ReadField(); field != "}"; field = in.ReadField())
        if (std::string line = mtlLine(field); !line.empty()) out.WriteLine(line);
    }
    in.close();
    out.replace(text::nativePath(output));
  } catch (...) {
    out.discard();
    throw;
  }
  ui::msgBox(program.services, "New MTL file saved as " + output, "Note!");
}

void MakeAVIBackground(Program& program) {
  auto chosen = ui::openDialog(program.services, program.currentDir, "Open PZ3 File");
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path scratch = program.workFile("\\Avi.txt");
  text::deleteIgnoringErrors(scratch);
  if (text::Right(*chosen, 3) != "pz3") {
    ui::msgBox(program.services, "You must choose a PZ3 file.", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  std::string output = stem(*chosen, false) + "-AVI.pp2";
  text::StreamRewrite out(scratch, false);
  try {
    text::LineReader in(text::nativePath(*chosen));
    copyThrough(in, out, "version");
    // The number line stands behind a closing brace with no opening one: the written form.
    out.WriteLine("\t}");
    out.WriteLine("\tnumber 3.01");
    in.ReadRawLine();
    in.ReadRawLine();
    copyThrough(in, out, "bgMovie");
    out.WriteLine("\t}");
    out.WriteLine("}");
    in.close();
    out.close();
    text::moveScratchInto(scratch, text::nativePath(output), false);
  } catch (...) {
    out.discard();
    throw;
  }
  ui::msgBox(program.services, "AVI background file created as " + output, "Success!");
}

void RestoreCamera(Program& program) {
  auto chosen = ui::openDialog(program.services, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path scene = text::nativePath(*chosen);
  std::filesystem::path camera = text::nativePath(stem(*chosen, true) + "cam");
  std::vector<std::string> lines;
  {
    text::LineReader in(scene);
    std::string line;
    while (in.readRawLine(line)) {
      if (line != "camera MAIN_CAMERA") {
        lines.push_back(line);
        continue;
      }
      while (!contains(line, "figureResFile")) line = in.ReadRawLine();
      text::LineReader saved(camera);
      for (std::string c; saved.readRawLine(c);) lines.push_back(c);
      lines.push_back(line);
    }
  }
  // The scratch name is opened for appending, as every scratch file is.
  text::StreamRewrite out(program.workFile("\\cam.txt"), false);
  try {
    for (const std::string& l : lines) out.WriteLine(l);
    out.replace(scene);
  } catch (...) {
    out.discard();
    throw;
  }
  text::deleteIgnoringErrors(camera);
  ui::msgBox(program.services, "Camera info for " + *chosen + " restored.", "Note!");
}

}  // namespace tolvane::library
