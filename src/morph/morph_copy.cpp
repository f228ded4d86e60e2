#include "morph/morph_copy.h"

#include <array>
#include <optional>

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "morph/morph_common.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::LineReader;
using text::LineWriter;
using text::Mid;

namespace {

// State of one run, kept across the selected lines and never reset between them.
struct CopyRun {
  ChannelGroup group;
  bool blockFound = false;
  bool geometryAccepted = false;
  bool inserted = false;
  std::array<std::string, 5> block;
};

enum class Step { Go, Stop };

bool endsBlock(const std::string& line) {
  return hasPrefix(line, "\t\ttargetGeom") || hasPrefix(line, "\t\ttwist") || hasPrefix(line, "\t\tjoint");
}

// Finds the group's valueOpDeltaAdd block behind the slave channel of the source.
void findControlBlock(Program& program, const std::string& source, CopyRun& run) {
  std::string slave = Mid(run.group.slave, 2);
  LineReader in(text::nativePath(source));
  Pacer pacer(program);
  std::string line;
  do {
    line = readLine(in);
    pacer.tick();
  } while (line != "\t\ttargetGeom " + slave);
  while (!contains(readLine(in), "interp")) pacer.tick();
  for (;;) {
    for (auto& l : run.block) l = readLine(in);
    if (isGroupBlock(run.block[1], run.block[2], run.block[3], run.block[4], run.group)) break;
  }
  run.blockFound = true;
  ui::msgBox(
      program.services,
      "Note that your source EMC\\ERC morph uses " + Mid(run.block[1], 4) +
          " as a figure name. This probably does not agree with the name in your destination file, be sure "
          "to edit this.",
      "Note!", ui::Buttons::OK, ui::Icon::Exclamation);
}

// The main OBJ of a figureResFile line against TextMainOBJ; false when the user cancels.
// The line's text is taken from the word "Geometries:" on, the word included, while Open
// fills TextMainOBJ with the text behind the word: for a figure opened as it is, the two
// differ, so the first copy of every run asks and an OK carries the rest of the run. A
// line without the word takes its text from position 0, an invalid argument.
bool sameGeometry(Program& program, const std::string& line, CopyRun& run) {
  std::string geometry = Mid(line, static_cast<long long>(InStr(line, "Geometries:")));
  if (geometry == program.opening.TextMainOBJ.text() || run.geometryAccepted) return true;
  program.setBusy(false);
  ui::msgBox(program.services,
             "You must use figures based on the same geometry; they must have the same main obj.", "Error!");
  auto answer =
      ui::msgBox(program.services,
                 "If you know it is the same obj, just located in a different location, then click OK, and "
                 "the tool will continue.  If it is not the same obj, the morph will not work.  Hit cancel "
                 "in this case.",
                 "Note!", ui::Buttons::OKCancel);
  if (answer != ui::Answer::OK) return false;
  run.geometryAccepted = true;
  program.setBusy(true);
  return true;
}

// Reads the source to the key and writes the block to "\SaveMorph.txt".
Step captureBlock(Program& program, const std::string& source, const std::string& key, CopyRun& run) {
  LineReader in(text::nativePath(source));
  LineWriter out(program.workFile("\\SaveMorph.txt"), LineWriter::Mode::Append);
  Pacer pacer(program);
  std::string line;
  for (;;) {
    line = readLine(in);
    pacer.tick();
    if (hasPrefix(line, "figureR") && !sameGeometry(program, line, run)) return Step::Stop;
    if (line == key) break;
  }
  if (!run.blockFound) out.WriteLine(line);
  while (in.readRawLine(line) && !endsBlock(line)) {
    if (!run.blockFound) out.WriteLine(line);
    pacer.tick();
  }
  if (run.blockFound)
    for (const auto& l : run.block) out.WriteLine(l);
  out.close();
  return Step::Go;
}

// The destination's lines go out without its empty lines.
class Inserter {
 public:
  Inserter(Program& program, LineReader& dest, LineWriter& out)
      : m_program(program), m_dest(dest), m_out(out) {}
  void put(const std::string& line) {
    if (!line.empty()) m_out.WriteLine(line);
  }
  std::string copyThrough(std::string_view word, bool exact) {
    for (;;) {
      std::string line = readLine(m_dest);
      put(line);
      if (exact ? line == word : contains(line, word)) return line;
    }
  }
  void writeBlock(LineReader& saved, const std::string& figureNumber, bool blockFound) {
    std::string line;
    while (saved.readRawLine(line)) {
      std::size_t colon = InStr(line, ":");
      if (!blockFound && colon > 0 && Mid(line, static_cast<long long>(colon) + 1) != figureNumber) {
        ui::msgBox(
            m_program.services,
            "Unexpected figure number in the source.  This will be fixed, but it is possible the morph will "
            "not work.",
            "Error!", ui::Buttons::OK, ui::Icon::Critical);
        line = text::Left(line, static_cast<long long>(colon)) + figureNumber;
      }
      m_out.WriteLine(line);
    }
  }

 private:
  Program& m_program;
  LineReader& m_dest;
  LineWriter& m_out;
};

// The target actor named on list line 0: the "actor " prefix of its bare name and its
// figure number.
struct TargetActor {
  std::string prefix;
  std::string figureNumber;
};

TargetActor targetActor(const std::string& head) {
  std::string part = Mid(head, 14);
  std::size_t colon = InStr(part, ":");
  if (colon == 0) text::raiseError(text::kInvalidProcedureCall, "No figure number in: " + part);
  return {"actor " + text::Trim(text::Left(part, static_cast<long long>(colon) - 1)),
          Mid(part, static_cast<long long>(colon) + 1)};
}

// In the actor's channels section: the block goes in, behind the brace of channels or
// behind the slave channel's interp line. Returns the line read behind it.
std::string insertInSection(Inserter& ins, LineReader& dest, LineReader& saved, const TargetActor& target,
                            CopyRun& run) {
  ins.copyThrough("channels", false);
  ins.put(readLine(dest));
  if (run.blockFound) {
    ins.copyThrough("\t\ttargetGeom " + Mid(run.group.slave, 2), true);
    ins.copyThrough("interp", false);
  }
  ins.writeBlock(saved, target.figureNumber, run.blockFound);
  run.inserted = true;
  std::string line = readLine(dest);
  if (line == "     {") line = readLine(dest);
  return line;
}

// Writes "\InsertMorph.txt": the destination with the block in the target actor.
void insertBlock(Program& program, CopyRun& run) {
  auto& f = program.opening;
  const TargetActor target = targetActor(f.ListChannels.list(0));
  auto insertPath = program.workFile("\\InsertMorph.txt");
  text::deleteIgnoringErrors(insertPath);
  LineWriter out(insertPath, LineWriter::Mode::Append);
  LineReader saved(program.workFile("\\SaveMorph.txt"));
  LineReader dest(text::nativePath(f.LabelFileNameForEditor.caption()));
  Inserter ins(program, dest, out);
  Pacer pacer(program);
  std::string line;
  bool pending = false;
  while (pending || dest.readRawLine(line)) {
    pacer.tick();
    ins.put(line);
    pending = hasPrefix(line, target.prefix);
    if (!pending) continue;
    ins.put(readLine(dest));
    ins.put(readLine(dest));
    line = readLine(dest);
    if (!contains(line, "name")) continue;
    ins.put(line);
    line = insertInSection(ins, dest, saved, target, run);
  }
  out.close();
  saved.close();
  text::deleteIgnoringErrors(program.workFile("\\SaveMorph.txt"));
}

Step copyLine(Program& program, int index, CopyRun& run) {
  auto& f = program.opening;
  const std::string line = f.ListChannels.list(index);
  if (!hasPrefix(line, "\t")) return Step::Go;
  setOn(f.PictureCopyToDest, true);
  if (contains(line, "EMC")) {
    ui::msgBox(program.services,
               "You cannot delete or transfer a morph by choosing the EMC line, please choose another.",
               "Alert!");
    return Step::Stop;
  }
  program.setBusy(true);
  std::string key = "\t\ttargetGeom " + Mid(line, 2);
  if (run.group.mode > 0) key = "\t" + key;
  if (int mode = groupModeOf(line); mode != 0) run.group.mode = mode;
  if (run.group.mode > 0) {
    readGroup(f.ListChannels, index, run.group);
    key = "\t\t\tname " + run.group.slave;
  }
  const std::string source = f.LabelChannelFileNameForEditor.caption();
  if (run.group.mode == -1) {
    findControlBlock(program, source, run);
    key = "\t\ttargetGeom " + Mid(run.group.slave, 2);
  }
  if (captureBlock(program, source, key, run) == Step::Stop) {
    f.ListEMCs.clear();
    f.ListEMCs.setVisible(false);
    setOn(f.PictureCopyToDest, false);
    program.setBusy(false);
    return Step::Stop;
  }
  program.setBusy(false);
  insertBlock(program, run);
  return Step::Go;
}

void closeRun(Program& program, const CopyRun& run) {
  auto& f = program.opening;
  const std::string dest = f.LabelFileNameForEditor.caption();
  if (!run.inserted) {
    ui::msgBox(program.services, "Note that the channel may not have transfered properly!", "Error!");
    setOn(f.PictureCopyToDest, false);
    return;
  }
  program.setBusy(false);
  auto answer = ui::msgBox(program.services,
                           "Channel/s in " + f.LabelChannelFileNameForEditor.caption() + " inserted into " +
                               dest + ".  Save changes?",
                           "Success!", ui::Buttons::YesNo);
  if (answer == ui::Answer::Yes) FileSaveStep(program, program.workFile("\\InsertMorph.txt"), dest, dest);
  setOn(f.PictureCopyToDest, false);
}

}  // namespace

void CopyToDestClick(Program& program) {
  auto& f = program.opening;
  if (f.LabelFileName.caption() == f.LabelChannelFileName.caption()) {
    ui::msgBox(program.services,
               "To copy a morph channel you must have a source file open in the righthand pane.",
               "Information");
    return;
  }
  if (f.ListChannels.listIndex() == 0) {
    ui::msgBox(program.services, "Click on a morph to copy.", "Note!");
    return;
  }
  f.OptionChannelRename.setVisible(false);
  f.OptionBodyPartRename.setVisible(false);
  text::deleteIgnoringErrors(program.workFile("\\SaveMorph.txt"));
  text::deleteIgnoringErrors(program.workFile("\\SaveMorph1.txt"));
  CopyRun run;
  try {
    for (int i = 0; i < f.ListChannels.listCount(); ++i) {
      if (!f.ListChannels.selected(i)) continue;
      if (copyLine(program, i, run) == Step::Stop) return;
    }
    closeRun(program, run);
  } catch (...) {
    setOn(f.PictureCopyToDest, false);
    throw;
  }
}

void CopyToDestRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to copy a morph from the source to destination file.",
             "Information");
}

}  // namespace tolvane::morph
