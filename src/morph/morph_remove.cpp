#include "morph/morph_remove.h"

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "morph/morph_common.h"
#include "program/events.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::LineReader;
using text::LineWriter;
using text::Mid;

namespace {

void endTool(ui::Opening& f) {
  setOn(f.PictureTrash, false);
  f.ListChannelsDragOn = false;
  f.ListActorsDragOn = false;
}

enum class Pass { Done, Stop };

// Copies the file with the group's control block taken out of the slave channel.
Pass removeControlBlock(Program& program, LineReader& in, LineWriter& out, const ChannelGroup& group,
                        Pacer& pacer) {
  const std::string key = "\t\ttargetGeom " + Mid(group.slave, 2);
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) {
      program.setBusy(false);
      endTool(program.opening);
      ui::msgBox(program.services, "This is a Full Body Morph, it cannot be removed!", "Error!",
                 ui::Buttons::OK, ui::Icon::Critical);
      return Pass::Stop;
    }
    out.WriteLine(line);
    pacer.tick();
    if (line == key) break;
  }
  out.WriteLine(copyUntilContains(in, out, "interp", pacer));
  for (;;) {
    std::string five[5];
    for (auto& l : five) l = readLine(in);
    if (isGroupBlock(five[1], five[2], five[3], five[4], group)) break;
    for (const auto& l : five) out.WriteLine(l);
  }
  return Pass::Done;
}

// Copies the part's definition with the channels whose header holds the name dropped.
void removeMorph(LineReader& in, LineWriter& out, const std::string& part, const std::string& name,
                 Pacer& pacer) {
  const std::string key = "actor " + part;
  out.WriteLine(copyUntilEqual(in, out, key, pacer));
  out.WriteLine(readLine(in));
  out.WriteLine(copyUntilEqual(in, out, key, pacer));
  std::string line;
  while (in.readRawLine(line)) {
    pacer.tick();
    if (hasPrefix(line, "\t\ttargetGeom") && contains(line, name)) {
      // The line that ends the removal, or the file's last line, is handled below.
      do {
        line = readLine(in);
        pacer.tick();
      } while (!hasPrefix(line, "\t\ttwist") && !hasPrefix(line, "\t\ttargetGeom") && !in.atEnd());
      if (contains(line, name)) {
        out.WriteLine(line);
        return;
      }
    }
    out.WriteLine(line);
    if (hasPrefix(line, "\t\ttwist")) return;
  }
}

// The path for names that hold both "rot" and "tran": the slave's channel must not be
// used by an ERC channel of its actor.
Pass checkErcUse(Program& program, LineReader& in, LineWriter& out, const ChannelGroup& group, Pacer& pacer) {
  const std::string key = "actor " + group.slave;
  out.WriteLine(copyUntilEqual(in, out, key, pacer));
  out.WriteLine(copyUntilEqual(in, out, key, pacer));
  const std::string name = Mid(group.slave, 2);
  std::string line;
  while (in.readRawLine(line)) {
    if (contains(line, name) && !contains(line, "name")) {
      program.setBusy(false);
      endTool(program.opening);
      ui::msgBox(program.services,
                 "Morph \"" + name + "\" is used by an ERC channel, which must be removed first.", "Alert!");
      return Pass::Stop;
    }
    out.WriteLine(line);
    if (hasPrefix(line, "\t\ttargetGeom") || hasPrefix(line, "\t\ttwist")) break;
  }
  return Pass::Done;
}

struct MorphRemoval {
  int count = 0;
  bool pass = false;
  std::string name;   // the morph of a plain line
  std::string slave;  // the slave of the last group, without its blank
};

Pass removeLine(Program& program, int index, MorphRemoval& run) {
  auto& f = program.opening;
  const std::string line = f.ListChannels.list(index);
  if (line.empty()) {
    ui::msgBox(program.services, "No part clicked.", "Note!");
    endTool(f);
    return Pass::Stop;
  }
  if (contains(line, "EMC")) {
    ui::msgBox(program.services, "You cannot delete a morph by choosing the EMC line, please choose another.",
               "Alert!");
    return Pass::Stop;
  }
  ChannelGroup group;
  group.mode = groupModeOf(line);
  if (group.mode > 0) readGroup(f.ListChannels, index, group);
  ++run.count;
  run.name = Mid(line, 2);
  run.slave = group.mode != 0 ? Mid(group.slave, 2) : std::string();
  program.setBusy(true);

  auto first = program.workFile("\\XMorph.txt");
  auto second = program.workFile("\\XMorph1.txt");
  Pacer pacer(program);
  {
    LineReader in(run.pass ? first : text::nativePath(f.LabelFileNameForEditor.caption()));
    if (run.pass) text::deleteIgnoringErrors(second);
    LineWriter out(run.pass ? second : first, LineWriter::Mode::Append);
    Pass result = Pass::Done;
    if (group.mode == -1)
      result = removeControlBlock(program, in, out, group, pacer);
    else if (group.mode == 0)
      removeMorph(in, out, Mid(f.ListChannels.list(0), 15), run.name, pacer);
    else
      result = checkErcUse(program, in, out, group, pacer);
    if (result == Pass::Stop) return Pass::Stop;
    copyRest(in, out, pacer);
    out.close();
  }
  if (run.pass) {
    text::deleteIgnoringErrors(first);
    text::renameFile(second, first);
  }
  run.pass = true;
  return Pass::Done;
}

// Takes the saved lines out of the list the way the indexes fall: after a removal the
// next line moves up and is not visited.
void removeSelectedLines(ui::ListBox& list) {
  const int count = list.listCount();
  for (int i = 0; i < count; ++i) {
    text::ignoreErrors([&] {
      if (list.selected(i)) list.removeItem(i);
    });
  }
}

void closeMorphRemoval(Program& program, const MorphRemoval& run) {
  auto& f = program.opening;
  const std::string working = f.LabelFileNameForEditor.caption();
  program.setBusy(false);
  std::string text;
  if (run.count > 1)
    text = "Multiple morphs removed from " + working +
           ". Please remove any ERC channels using these morphs.  Save changes?";
  else if (run.slave.empty())
    text = "Morph \"" + run.name + "\" removed from " + working + ".  Save changes?";
  else
    text = "A morph in \"" + run.slave + "\" removed from " + working + ".  Save changes?";
  if (ui::msgBox(program.services, text, "Success!", ui::Buttons::YesNo) == ui::Answer::Yes) {
    if (FileSaveStep(program, program.workFile("\\XMorph.txt"), working, working))
      removeSelectedLines(f.ListChannels);
  }
  endTool(f);
}

}  // namespace

void RemoveMorphs(Program& program) {
  text::deleteIgnoringErrors(program.workFile("\\XMorph.txt"));
  MorphRemoval run;
  auto& list = program.opening.ListChannels;
  try {
    for (int i = 0; i < list.listCount(); ++i) {
      if (!list.selected(i)) continue;
      if (removeLine(program, i, run) == Pass::Stop) return;
    }
  } catch (...) {
    endTool(program.opening);
    throw;
  }
  if (run.count > 0) closeMorphRemoval(program, run);
}

void TrashClick(Program& program) {
  auto& f = program.opening;
  if (isOn(f.PictureTrash)) {
    endTool(f);
    return;
  }
  setOn(f.PictureTrash, true);
  std::string head = f.ListChannels.listCount() > 0 ? f.ListChannels.list(0) : std::string();
  if (head == "ALL CHANNELS") f.ListChannelsDragOn = false;
  if (hasPrefix(head, "Channels for")) {
    f.ListChannelsDragOn = true;
    return;
  }
  if (f.DragSource == "Actors") f.ListActorsDragOn = true;
}

void TrashRightClick(Program& program) {
  ui::msgBox(program.services, "Click this button and then drag things to it.", "Information");
}

void ListActorsPress(Program& program, const EventArgs&) {
  auto& f = program.opening;
  f.DragSource = "Actors";
  f.ListActorsDragOn = isOn(f.PictureTrash);
}

void TrashDrop(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  // Only a list whose dragging is on can deliver lines here.
  if (args.source == "Opening.ListChannels") {
    if (!f.ListChannelsDragOn) return;
    f.DragSource = "Channels";
  } else if (args.source == "Opening.ListActors") {
    if (!f.ListActorsDragOn) return;
    f.DragSource = "Actors";
  } else {
    return;
  }
  if (isOn(f.PictureViewChannels)) {
    if (f.ListChannels.listIndex() >= 0) {
      RemoveMorphs(program);
    } else {
      ui::msgBox(program.services, "If you are trying to remove a morph, choose one first.", "Note!");
      setOn(f.PictureTrash, false);
      f.ListActorsDragOn = false;
    }
    return;
  }
  if (f.DragSource == "Channels") {
    if (f.ListChannels.listIndex() == 0) {
      ui::msgBox(program.services, "Choose a body part first, then the channel to be removed.", "Note!");
      setOn(f.PictureTrash, false);
    }
    f.ListChannelsDragOn = false;
    return;
  }
  setOn(f.PictureJoints, false);
  if (f.DragSource == "Actors" && f.ListActors.listIndex() == 0) return;
  RemoveBodyParts(program);
}

}  // namespace tolvane::morph
