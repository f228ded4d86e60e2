#include "library/converters.h"

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

// The bytes that the words a loop looks for are made of, at least one from each word: a
// line that holds none of them holds none of the words, and its word searches are
// passed over. Most lines of a figure (the deltas) hold none.
class WordBytes {
 public:
  explicit WordBytes(std::string_view bytes) {
    for (char c : bytes) m_in[static_cast<unsigned char>(c)] = true;
  }
  bool anyIn(std::string_view line) const {
    for (char c : line)
      if (m_in[static_cast<unsigned char>(c)]) return true;
    return false;
  }

 private:
  bool m_in[256] = {};
};

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

namespace {

enum class SceneStep { Head, Scene, Drop, Tail, Done, Refused };

// The scene's text from its declarations on, without its lights, cameras, ground and
// universe actor, read once and written straight to the scratch file. A scene that
// shows "blMil" or "blV" ahead of its first actor holds a protected stock figure.
class SceneToFigure {
 public:
  SceneToFigure(text::LineReader& in, text::LineWriter& out) : m_in(in), m_out(out) {}

  // False when the scene was refused.
  bool run() {
    SceneStep step = SceneStep::Head;
    while (step != SceneStep::Done && step != SceneStep::Refused) {
      if (step == SceneStep::Head)
        step = head();
      else if (step == SceneStep::Scene)
        step = scene();
      else if (step == SceneStep::Drop)
        step = drop();
      else
        step = tail();
    }
    return step == SceneStep::Done;
  }

 private:
  // Up to the first actor line: the declarations, without the movie (to the next
  // figureRes line) and the universe actor with its next three lines. The end of the
  // file here is a run-time error: no scene ends before its first actor.
  SceneStep head() {
    for (;;) {
      m_line = m_in.ReadRawLine();
      if (m_line.empty()) m_line = m_in.ReadRawLine();
      if (contains(m_line, "movie"))
        do m_line = m_in.ReadRawLine();
        while (!contains(m_line, "figureRes"));
      if (contains(m_line, "blMil") || contains(m_line, "blV")) return SceneStep::Refused;
      if (contains(m_line, "doc")) return SceneStep::Tail;
      if (contains(m_line, "actor UNIVERSE")) {
        for (int i = 0; i < 3; ++i) m_in.ReadRawLine();
        continue;
      }
      if (contains(m_line, "figureRes") || contains(m_line, "prop ") || contains(m_line, "actor"))
        return SceneStep::Scene;
      m_out.WriteLine(m_line);
    }
  }

  // Keeps the current line and what follows up to the ground, a light or the next
  // figureRes line; a camera goes with everything up to the next figureRes line.
  SceneStep scene() {
    // One byte of each word: "CAMERA", "doc", "actor UNIVERSE", "prop GROUND", "LIGHT",
    // "figureRes".
    static const WordBytes words("CoUGLR");
    m_out.WriteLine(m_line);
    for (;;) {
      if (!m_in.readRawLine(m_line)) return SceneStep::Done;
      if (!words.anyIn(m_line)) {
        m_out.WriteLine(m_line);
        continue;
      }
      if (contains(m_line, "CAMERA"))
        do
          if (!m_in.readRawLine(m_line)) return SceneStep::Done;
        while (!contains(m_line, "figureRes"));
      if (contains(m_line, "doc")) return SceneStep::Tail;
      if (contains(m_line, "actor UNIVERSE")) {
        for (int i = 0; i < 3 && m_in.readRawLine(m_line);) ++i;
        return SceneStep::Head;
      }
      if (contains(m_line, "prop GROUND") || contains(m_line, "LIGHT") || contains(m_line, "figureRes"))
        return SceneStep::Drop;
      m_out.WriteLine(m_line);
    }
  }

  // Drops lines up to the next figure, prop, geometry or actor line, which is kept.
  SceneStep drop() {
    // One byte of each word: "doc", "figureRes", "prop ", "setGeom", "actor".
    static const WordBytes words("oRpGa");
    for (;;) {
      if (!m_in.readRawLine(m_line)) return SceneStep::Done;
      if (!words.anyIn(m_line)) continue;
      if (contains(m_line, "doc")) return SceneStep::Tail;
      if (contains(m_line, "figureRes") || contains(m_line, "prop ") || contains(m_line, "setGeom") ||
          (contains(m_line, "actor") && !contains(m_line, "UNIVERSE")))
        return SceneStep::Scene;
    }
  }

  // The setGeom line and the one behind it.
  SceneStep tail() {
    while (m_in.readRawLine(m_line))
      if (contains(m_line, "setGeom")) {
        m_out.WriteLine(m_line);
        if (m_in.readRawLine(m_line)) m_out.WriteLine(m_line);
        break;
      }
    return SceneStep::Done;
  }

  text::LineReader& m_in;
  text::LineWriter& m_out;
  std::string m_line;
};

}  // namespace

void ConvertSceneToFigure(Program& program) {
  auto chosen = ui::saveDialog(program.services, program.currentDir, {}, "Name To Save As...");
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::string path = program.opening.LabelFileNameForEditor.caption();
  text::StreamRewrite out(program.workFile("\\PZ3.txt"), true);
  bool converted = false;
  try {
    text::LineReader in(text::nativePath(path));
    converted = SceneToFigure(in, out.out()).run();
    in.close();
    if (converted)
      out.replace(text::nativePath(*chosen));
    else
      out.discard();
  } catch (...) {
    out.discard();
    throw;
  }
  if (!converted)
    ui::msgBox(program.services, "You can't convert Vicki or Mike!", "Sorry!", ui::Buttons::OK, ui::Icon::Critical);
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
    std::string head;
    do
      if (!in.readField(head)) text::raiseError(text::kInputPastEndOfFile, path);
    while (head != "figure");
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
  if (text::PlainKind(*chosen) != "pz3") {
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
  // The scene streams through the scratch file, which is opened for appending as every
  // scratch file is; the camera block goes in where the main camera stood.
  text::StreamRewrite out(program.workFile("\\cam.txt"), false);
  try {
    text::LineReader in(scene);
    std::string line;
    while (in.readRawLine(line)) {
      if (line != "camera MAIN_CAMERA") {
        out.WriteLine(line);
        continue;
      }
      while (!contains(line, "figureResFile")) line = in.ReadRawLine();
      text::LineReader saved(camera);
      for (std::string c; saved.readRawLine(c);) out.WriteLine(c);
      out.WriteLine(line);
    }
    in.close();
    out.replace(scene);
  } catch (...) {
    out.discard();
    throw;
  }
  text::deleteIgnoringErrors(camera);
  ui::msgBox(program.services, "Camera info for " + *chosen + " restored.", "Note!");
}

}  // namespace tolvane::library
