// Body part removal, the second half of the PictureTrash tool: each selected ListActors
// line takes its part out of the file through "\cr2.doc", rewrites parent references
// met on the way to "NULL", and mends the figure section's hierarchy once.
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "morph/morph_common.h"
#include "morph/morph_remove.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::LineReader;
using text::LineWriter;

namespace {

struct PartPass {
  LineReader& in;
  LineWriter& out;
  const std::string& name;
  Pacer& pacer;
  bool figure = false;
  bool replaced = false;
  std::string remembered;
};

// The declaration: the header, two lines, one more unless the second is empty, and one
// line after that.
void dropDeclaration(PartPass& p) {
  copyUntilEqual(p.in, p.out, "actor " + p.name, p.pacer);
  readLine(p.in);
  if (!readLine(p.in).empty()) readLine(p.in);
  readLine(p.in);
}

// Up to the definition, parent lines that end in the name end in "NULL"; then the
// definition is dropped up to the next actor or the figure section.
void dropDefinition(PartPass& p) {
  const std::string key = "actor " + p.name;
  std::string line;
  for (;;) {
    line = readLine(p.in);
    p.pacer.tick();
    if (line == key) break;
    if (InStr(line, p.name) > 8) line = line.substr(0, line.size() - p.name.size()) + "NULL";
    p.out.WriteLine(line);
  }
  do {
    line = readLine(p.in);
    p.pacer.tick();
  } while (!hasPrefix(line, "actor") && !hasPrefix(line, "figure"));
  p.out.WriteLine(line);
  if (hasPrefix(line, "figure")) p.figure = true;
}

// The head of the figure section: the line and three more; the parent line of the
// first child is BODY of that figure until another is remembered.
std::string figureHead(PartPass& p, const std::string& line) {
  p.figure = true;
  p.out.WriteLine(line);
  std::string third;
  for (int i = 0; i < 3; ++i) {
    third = readLine(p.in);
    p.out.WriteLine(third);
  }
  p.remembered = "\t\t\tBODY:" + text::Right(third, 1);
  return readLine(p.in);
}

// Before the one replacement: the removed part's addChild pair goes, and the child
// behind it takes the remembered parent line.
void hierarchyLine(PartPass& p, std::string line) {
  if (InStr(line, p.name) == 0) {
    p.out.WriteLine(line);
    line = readLine(p.in);
    p.remembered = line;
  }
  if (InStr(line, p.name) > 8) {
    readLine(p.in);
    p.out.WriteLine(readLine(p.in));
    readLine(p.in);
    p.out.WriteLine(p.remembered);
    p.replaced = true;
  } else {
    p.out.WriteLine(line);
  }
}

void restOfFile(PartPass& p) {
  std::string line;
  while (p.in.readRawLine(line)) {
    p.pacer.tick();
    if (!p.figure && hasPrefix(line, "figure")) line = figureHead(p, line);
    if (p.figure && !p.replaced) {
      hierarchyLine(p, line);
    } else if (p.replaced && contains(line, "eld") && contains(line, p.name)) {
      readLine(p.in);
      p.out.WriteLine(readLine(p.in));
    } else {
      p.out.WriteLine(line);
    }
  }
}

void removePart(Program& program, const std::string& line, bool pass) {
  std::size_t star = InStr(line, "*");
  if (star == 0) text::raiseError(text::kInvalidProcedureCall, "No \"*\" in: " + line);
  const std::string name = text::Trim(text::Left(line, static_cast<long long>(star) - 1));
  auto first = program.workFile("\\cr2.doc");
  auto second = program.workFile("\\cr21.doc");
  Pacer pacer(program);
  {
    LineReader in(pass ? first : text::nativePath(program.opening.LabelFileNameForEditor.caption()));
    if (pass) text::deleteIgnoringErrors(second);
    LineWriter out(pass ? second : first, LineWriter::Mode::Append);
    PartPass p{in, out, name, pacer, false, false, {}};
    dropDeclaration(p);
    dropDefinition(p);
    restOfFile(p);
    out.close();
  }
  if (pass) {
    text::deleteIgnoringErrors(first);
    text::renameFile(second, first);
  }
}

void closeBodyPartRemoval(Program& program, int lastIndex) {
  auto& f = program.opening;
  const std::string working = f.LabelFileNameForEditor.caption();
  auto answer = ui::msgBox(program.services, "You are about to remove one or more body parts.  Save changes?",
                           "Alert!", ui::Buttons::YesNo);
  if (answer != ui::Answer::Yes) return;
  auto chosen = FileSaveStep(program, program.workFile("\\cr2.doc"), working, working);
  if (!chosen) return;
  f.ListActors.removeItem(lastIndex);
  ui::msgBox(
      program.services,
      "Body part/s removed from CR2.  All additional references to the removed body part/s have been changed "
      "to NULL. Be aware that this may have implications in your parent/child hierarchy and in the weld "
      "lines.",
      "Note!");
  // The length of the old path decides the "..." in front.
  f.LabelFileName.setCaption((working.size() >= 43 ? "..." : "") + text::Right(*chosen, 45));
  f.LabelFileNameForEditor.setCaption(*chosen);
  f.LabelFileSize.setCaption(sizeCaption(*chosen));
}

}  // namespace

void RemoveBodyParts(Program& program) {
  auto& f = program.opening;
  text::deleteIgnoringErrors(program.workFile("\\cr2.doc"));
  text::deleteIgnoringErrors(program.workFile("\\cr21.doc"));
  int lastIndex = -1;
  try {
    for (int i = 0; i < f.ListActors.listCount(); ++i) {
      if (!f.ListActors.selected(i)) continue;
      removePart(program, f.ListActors.list(i), lastIndex >= 0);
      lastIndex = i;
    }
    if (lastIndex >= 0) closeBodyPartRemoval(program, lastIndex);
  } catch (...) {
    setOn(f.PictureTrash, false);
    f.ListActorsDragOn = false;
    throw;
  }
  setOn(f.PictureTrash, false);
  f.ListActorsDragOn = false;
}

}  // namespace tolvane::morph
