#include "morph/joint_transfer.h"

#include <vector>

#include "morph/morph_common.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;
using text::Right;

namespace {

bool isJointHeader(const std::string& line) { return Mid(line, 3, 5) == "joint"; }

// The refusals before anything is read; true when the transfer may go on.
bool mayTransfer(Program& program) {
  auto& f = program.opening;
  f.OptionChannelRename.setVisible(false);
  f.OptionBodyPartRename.setVisible(false);
  auto refuse = [&](const char* text, const char* title) {
    ui::msgBox(program.services, text, title);
    return false;
  };
  if (Right(f.LabelFileName.caption(), 20) == Right(f.LabelChannelFileName.caption(), 20))
    return refuse("Open a source file first.", "Note!");
  if (f.ListChannels.listIndex() < 0) return refuse("Choose a source body part to work with.", "Alert!");
  if (f.ListActors.listIndex() < 0) return refuse("Choose a destination body part to work with.", "Alert!");
  if (contains(f.ListChannels.text(), "BODY") || contains(f.ListActors.text(), "BODY"))
    return refuse("You can't work with the entire body....", "Alert!");
  return true;
}

// The source part's joint and twist blocks, from the line number of its list line on.
// Returns the number of lines written.
long long takeJoints(Program& program, const std::string& sourceLine,
                     const std::filesystem::path& jointFile) {
  std::size_t star = InStr(sourceLine, "*");
  auto skip = static_cast<long long>(text::Val(Mid(sourceLine, static_cast<long long>(star) + 1)));
  text::StreamRewrite out(jointFile, true);
  text::LineReader in(text::nativePath(program.opening.LabelChannelFileNameForEditor.caption()));
  Pacer pacer(program);
  std::string line;
  for (long long i = 0; i < skip && in.readRawLine(line); ++i) pacer.tick();
  while (in.readRawLine(line) && !contains(line, "channels")) pacer.tick();
  long long written = 0;
  bool inBlock = false;
  bool more = in.readRawLine(line);
  while (more && contains(line, "\t") && !hasPrefix(line, "actor") && !contains(Left(line, 10), "taper")) {
    pacer.tick();
    if (hasPrefix(line, "\t\tjoint") || (!inBlock && contains(Left(line, 10), "twist"))) {
      // A block's head and the line behind it, whatever that line is.
      out.WriteLine(line);
      ++written;
      if (!in.readRawLine(line)) break;
      out.WriteLine(line);
      ++written;
      inBlock = true;
    } else if (inBlock) {
      out.WriteLine(line);
      ++written;
    }
    more = in.readRawLine(line);
  }
  out.close();
  return written;
}

// The destination's figure number for the part: the last character of the last field
// holding "name:" before a field equal to "name:N"; 0 when no field holds it. Lines that
// do not hold "name:" can hold neither field and are passed over in bulk.
char destinationFigureNumber(Program& program, const std::string& withColon, const std::string& withNumber,
                             bool& found) {
  text::FigureScanner in(text::nativePath(program.opening.LabelFileNameForEditor.caption()));
  text::Needles needles{withColon};
  char number = 0;
  std::string_view field;
  found = false;
  for (;;) {
    in.skipLines(needles, true, false);
    if (!in.field(field)) break;
    if (contains(field, withColon) && !field.empty()) number = field.back();
    if (field == withNumber) {
      found = true;
      break;
    }
  }
  return number;
}

// Lines of the joint file that name the source part get the destination's figure
// number as their last character, through "\tempjoint.txt".
void renumber(Program& program, const std::filesystem::path& jointFile, const std::string& sourceStem,
              char number) {
  const auto temp = program.workFile("\\tempjoint.txt");
  {
    text::StreamRewrite out(temp, true);
    text::LineReader in(jointFile);
    std::string line;
    while (in.readRawLine(line)) {
      if (contains(line, sourceStem) && !line.empty()) line.back() = number;
      out.WriteLine(line);
    }
    out.close();
  }
  text::replaceWithScratch(jointFile, temp);
}

// The destination with its joint blocks replaced by the joint file's, line for line.
void writeJoints(Program& program, const std::filesystem::path& jointFile, const std::string& part,
                 const std::filesystem::path& scratchPath) {
  text::StreamRewrite scratch(scratchPath, true);
  auto& out = scratch.out();
  text::LineReader dest(text::nativePath(program.opening.LabelFileNameForEditor.caption()));
  text::LineReader joints(jointFile);
  Pacer pacer(program);
  const std::string prefix = "actor " + part;
  for (int twice = 0; twice < 2; ++twice) {
    std::string line;
    do {
      line = readLine(dest);
      out.WriteLine(line);
      pacer.tick();
    } while (!hasPrefix(line, prefix));
    out.WriteLine(readLine(dest));
  }
  std::string j, d;
  joints.readRawLine(j);
  bool atActor = false;
  for (;;) {
    // Up to the destination's next joint block; an actor line ends the transfer.
    bool more;
    while ((more = dest.readRawLine(d)) && !isJointHeader(d)) {
      pacer.tick();
      if (hasPrefix(d, "actor")) {
        atActor = true;
        break;
      }
      out.WriteLine(d);
    }
    if (!more || atActor) break;
    // The block's head, brace and name stay the destination's.
    out.WriteLine(d);
    joints.readRawLine(j);
    d = readLine(dest);
    out.WriteLine(d);
    joints.readRawLine(j);
    d = readLine(dest);
    out.WriteLine(d);
    bool nextBlock = false;
    while (joints.readRawLine(j)) {
      pacer.tick();
      if (isJointHeader(j)) {
        nextBlock = true;
        break;
      }
      out.WriteLine(j);
      if (d != "\t\t\t}") d = readLine(dest);
    }
    if (!nextBlock) break;
  }
  if (atActor) out.WriteLine(d);
  copyRest(dest, out, pacer);
  scratch.close();
}

void save(Program& program, const std::filesystem::path& scratch) {
  auto& f = program.opening;
  const std::string current = f.LabelFileNameForEditor.caption();
  auto chosen = FileSaveStep(program, scratch, current, current);
  if (!chosen) return;
  f.LabelFileNameForEditor.setCaption(*chosen);
  f.LabelFileName.setCaption(displayPath(*chosen));
  f.LabelFileSize.setCaption(sizeCaption(*chosen));
}

}  // namespace

void JointsClick(Program& program) {
  if (!mayTransfer(program)) return;
  auto& f = program.opening;
  const std::string sourceLine = f.ListChannels.text();
  std::size_t star = InStr(sourceLine, "*");
  const std::string sourceName = text::Trim(Left(sourceLine, static_cast<long long>(star) - 1));
  const auto jointFile = program.workFile("\\jointfile.txt");
  program.setBusy(true);
  if (takeJoints(program, sourceLine, jointFile) == 0) {
    program.setBusy(false);
    ui::msgBox(program.services, "There are no joints in the bodypart " + sourceName, "Error!");
    return;
  }
  const std::string destLine = f.ListActors.text();
  std::size_t destStar = InStr(destLine, "*");
  const std::string withNumber = text::LTrim(Left(destLine, static_cast<long long>(destStar) - 2));
  const std::string withColon = text::LTrim(Left(destLine, static_cast<long long>(destStar) - 3));
  bool found = false;
  char number = destinationFigureNumber(program, withColon, withNumber, found);
  if (!found && number == 0) {
    program.setBusy(false);
    ui::msgBox(program.services, "This CR2 does not have a body part called " + withNumber + ".", "Error!");
    return;
  }
  if (number != 0 && !sourceName.empty() && number != sourceName.back())
    renumber(program, jointFile, Left(sourceName, static_cast<long long>(sourceName.size()) - 1), number);
  const auto scratch = program.workFile("\\Jnt.txt");
  writeJoints(program, jointFile, withNumber, scratch);
  program.setBusy(false);
  save(program, scratch);
  for (ui::ListBox* l : {&f.ListActors, &f.ListChannels}) {
    for (int i : l->selectedIndexes()) l->setSelected(i, false);
    l->setListIndex(-1);
  }
  setOn(f.PictureJoints, false);
}

void JointsRightClick(Program& program) {
  ui::msgBox(program.services, "Click this button to enable transfering joint parameters.", "Information");
}

}  // namespace tolvane::morph
