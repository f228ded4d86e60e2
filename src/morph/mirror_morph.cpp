#include "morph/mirror_morph.h"

#include "morph/morph_common.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/workspace.h"

namespace tolvane::morph {

using text::contains;
using text::InStr;
using text::Left;

namespace {

constexpr const char* kResult = "\\mirmorph.cr2";

void flipSign(std::string& number) {
  number = !number.empty() && number[0] == '-' ? number.substr(1) : "-" + number;
}

// The channel from its header to its closing line. A morph that is not in the file
// leaves what was read before the end: nothing, as the search stores no line.
std::vector<std::string> storeChannel(Program& program, const std::string& morph, const bool flip[3],
                                      bool mirror) {
  std::vector<std::string> lines;
  text::LineReader in(text::nativePath(program.opening.LabelFileNameForEditor.caption()));
  Pacer pacer(program);
  const std::string header = "\t\ttargetGeom " + morph;
  std::string line;
  while (in.readRawLine(line)) {
    pacer.tick();
    if (line == header) break;
  }
  if (line != header) return lines;
  lines.push_back(line);
  while (in.readRawLine(line)) {
    lines.push_back(mirror ? mirrorDeltaLine(line, flip) : line);
    if (line == "\t\t\t}") break;
  }
  return lines;
}

// Copies the figure with the stored channel put first in the target part's channels.
void writeResult(Program& program, const std::string& part, const std::vector<std::string>& channel) {
  text::StreamRewrite scratch(program.workFile(kResult), true);
  text::LineReader in(text::nativePath(program.opening.LabelFileNameForEditor.caption()));
  Pacer pacer(program);
  auto& out = scratch.out();
  const std::string header = "actor " + part;
  for (int found = 0; found < 2;) {
    std::string line = readLine(in);
    out.WriteLine(line);
    if (line == header) ++found;
  }
  out.WriteLine(copyUntilContains(in, out, "parent", pacer));
  std::string next = readLine(in);
  if (next != "\tchannels") {
    // A part without channels gets the block's head; its closing brace is not written.
    out.WriteLine("\tchannels");
    out.WriteLine("\t\t{");
    for (const auto& l : channel) out.WriteLine(l);
    out.WriteLine(next);
  } else {
    out.WriteLine(next);
    out.WriteLine(readLine(in));
    for (const auto& l : channel) out.WriteLine(l);
  }
  copyRest(in, out, pacer);
  scratch.close();
}

}  // namespace

std::string mirrorDeltaLine(const std::string& line, const bool flip[3]) {
  if (InStr(line, "d") != 5) return line;
  std::vector<std::string> fields;
  std::size_t at = 4;
  while (at <= line.size()) {
    std::size_t blank = line.find(' ', at);
    if (blank == std::string::npos) blank = line.size();
    if (blank > at) fields.push_back(line.substr(at, blank - at));
    at = blank + 1;
  }
  if (fields.size() < 5) return line;
  for (int axis = 0; axis < 3; ++axis)
    if (flip[axis]) flipSign(fields[2 + axis]);
  std::string out = line.substr(0, 4);
  for (std::size_t i = 0; i < fields.size(); ++i) out += (i == 0 ? "" : " ") + fields[i];
  return out;
}

void MenuMirrorClick(Program& program) {
  auto& f = program.opening;
  if (f.LabelFileName.caption() != f.LabelChannelFileName.caption()) {
    ui::msgBox(program.services, "This tool will not transfer between different figures.", "Error!");
    return;
  }
  f.PictureMirror.setVisible(true);
}

void MirrorClick(Program& program) {
  auto& f = program.opening;
  bool on = !isOn(f.PictureMirror);
  setOn(f.PictureMirror, on);
  if (!on) f.PictureMirror.setVisible(false);
}

void MirrorRightClick(Program& program) {
  ui::msgBox(
      program.services,
      "Left click this to enable morph copying.  Choose a body part to show its morphs, then click the "
      "Channel Icon, then doubleclick the morph you want to copy.",
      "Info");
}

void MirrorToPart(Program& program) {
  auto& f = program.opening;
  std::string line = f.ListActors.text();
  std::size_t star = InStr(line, "*");
  const std::string part = text::Trim(star > 0 ? Left(line, static_cast<long long>(star) - 1) : line);
  const std::string morph = f.MirrorMorph;
  if (morph.empty()) return;
  auto answer = ui::msgBox(program.services,
                           "Mirror the " + morph + " morph translations when applying to the " + part + "?",
                           "Alert!", ui::Buttons::YesNoCancel);
  if (answer == ui::Answer::Cancel) {
    f.MirrorMorph.clear();
    return;
  }
  bool mirror = answer == ui::Answer::Yes;
  bool flip[3] = {false, false, false};
  if (mirror) {
    const char* axes[] = {"X", "Y", "Z"};
    for (int i = 0; i < 3; ++i)
      flip[i] = ui::msgBox(program.services, std::string("Mirror ") + axes[i] + " translations?", axes[i],
                           ui::Buttons::YesNo) == ui::Answer::Yes;
  }
  program.setBusy(true);
  std::vector<std::string> channel = storeChannel(program, morph, flip, mirror);
  writeResult(program, part, channel);
  program.setBusy(false);
}

void MenuMirrorOpenClick(Program& program) {
  const auto result = program.workFile(kResult);
  if (!text::fileExists(result)) {
    ui::msgBox(program.services, "There is no mirrored morph to open yet.", "Note!");
    return;
  }
  LoadWithoutDialog(program, result.string());
}

}  // namespace tolvane::morph
