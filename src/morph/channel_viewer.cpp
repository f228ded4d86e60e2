#include "morph/channel_viewer.h"

#include <optional>

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "workspace/list_readers.h"
#include "text/runtime_error.h"
#include "morph/morph_common.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;

namespace {

constexpr int kObjectNotSet = 91;

// Reads the part's header twice: the declaration, then the definition that holds
// the channels. A file without both is a run past its end.
void findDefinition(text::LineReader& in, const std::string& header, Program* program) {
  std::optional<Pacer> pacer;
  if (program != nullptr) pacer.emplace(*program);
  std::string line;
  for (int found = 0; found < 2;) {
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
    if (line == header) ++found;
    if (pacer) pacer->tick();
  }
}

void addGroup(std::vector<std::string>& lines, text::LineReader& in, const std::string& slave) {
  std::string figure = in.ReadField();
  std::string part = in.ReadField();
  std::string dial = in.ReadField();
  std::string ratio = in.ReadField();
  lines.insert(lines.end(), {"", "\tEMC Channel", "\tSlave: " + slave, "\tMaster: " + dial,
                             "\tFigure: " + figure, "\tMaster Part: " + part, "\t" + ratio});
}

// The field loop over the part's channels. Reading past the end throws and ends it.
void scanFields(text::LineReader& in, std::string current, std::vector<std::string>& lines) {
  std::string name;
  for (;;) {
    if (contains(current, "targetGeom")) {
      in.ReadField();
      std::string nameLine = in.ReadField();
      name = Mid(nameLine, static_cast<long long>(InStr(nameLine, "name")) + 5);
      while (!contains(in.ReadField(), "interpStyleLocked")) {
      }
      current = in.ReadField();
      if (!contains(current, "valueOpDeltaAdd")) lines.insert(lines.end(), {"", "\t" + name});
    } else {
      current = in.ReadField();
      if (hasPrefix(current, "actor")) return;
    }
    if (contains(current, "valueOpDeltaAdd")) addGroup(lines, in, name);
  }
}

// The source may number the figure differently: the part's name takes the last
// character of the first source line that holds it without its digit.
std::string sourceFigureNumber(const std::string& path, const std::string& part) {
  std::string stem = Left(part, static_cast<long long>(part.size()) - 1);
  text::LineReader in(text::nativePath(path));
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, path);
    if (contains(line, stem)) return stem + text::Right(line, 1);
  }
}

}  // namespace

std::string selectedPartOf(const std::string& actorsLine) {
  std::string rest = Mid(actorsLine, 4);
  std::size_t star = InStr(rest, "*");
  if (star < 2) text::raiseError(text::kInvalidProcedureCall);
  return Left(rest, static_cast<long long>(star) - 2);
}

std::string allChannelsPath(Program& program) {
  auto& f = program.opening;
  return f.LabelFileName.caption() != f.LabelChannelFileName.caption()
             ? f.LabelChannelFileNameForEditor.caption()
             : f.LabelFileNameForEditor.caption();
}

std::vector<std::string> ScanPartChannels(const std::string& path, const std::string& selectedPart,
                                          Program* program) {
  if (!selectedPart.empty() && selectedPart.back() == ':')
    throw text::RuntimeError(kObjectNotSet, "Object variable or With block variable not set",
                             "No file to list the channels of \"" + selectedPart + "\" from");
  text::LineReader in(text::nativePath(path));
  std::string header = "actor" + selectedPart;
  findDefinition(in, header, program);
  std::vector<std::string> lines;
  try {
    scanFields(in, header, lines);
  } catch (const text::RuntimeError& e) {
    if (e.number() != text::kInputPastEndOfFile) throw;
  }
  return lines;
}

namespace {

void showAllChannels(Program& program) {
  auto& f = program.opening;
  setOn(f.PictureViewChannels, false);
  for (ui::Picture* p : {&f.PictureCopyToDest, &f.PictureRenameMorph, &f.PictureChangeRatio}) {
    p->setVisible(false);
    setOn(*p, false);
  }
  f.ListChannels.clear();
  f.ListChannels.addItem("ALL CHANNELS");
  f.ListChannels.addItem("************************");
  ListAllChannels(program, allChannelsPath(program));
}

void showPartChannels(Program& program) {
  auto& f = program.opening;
  std::string part = selectedPartOf(f.ListActors.list(f.ListActors.listIndex()));
  const std::string destination = f.LabelFileNameForEditor.caption();
  std::string source = f.LabelChannelFileNameForEditor.caption();
  if (source != destination) part = sourceFigureNumber(source, part);
  // The scan runs before anything on the form changes, so that a fault leaves it as it was.
  std::vector<std::string> lines = ScanPartChannels(source, part, &program);

  setOn(f.PictureViewChannels, true);
  for (ui::Picture* p : {&f.PictureCopyToDest, &f.PictureRenameMorph, &f.PictureChangeRatio})
    p->setVisible(true);
  f.SelectedPart = part;
  f.ListChannels.clear();
  f.ListChannels.addItem("Channels for " + part);
  for (const auto& line : lines) f.ListChannels.addItem(line);
  if (f.ListChannels.listCount() == 1) {
    f.ListChannels.setForeColor(ui::kRed);
    f.ListChannels.addItem("NO MORPH CHANNELS FOR THIS PART");
  }
  if (destination != source && !part.empty() && part.back() == ':')
    f.LabelChannelFileNameForEditor.setCaption(destination);
}

}  // namespace

void ViewChannelsClick(Program& program) {
  auto& f = program.opening;
  f.OptionChannelRename.setVisible(false);
  f.OptionBodyPartRename.setVisible(false);
  setOn(f.PictureTrash, false);
  setOn(f.PictureJoints, false);
  if (isOn(f.PictureViewChannels)) {
    showAllChannels(program);
    return;
  }
  if (f.ListActors.listIndex() < 1) {
    ui::msgBox(program.services, "Choose a bodypart first, from the left pane.", "Note!");
    return;
  }
  showPartChannels(program);
}

void ViewChannelsRightClick(Program& program) {
  ui::msgBox(program.services,
             "Click this button to view channels for a body part and enable re-naming and copying them.",
             "Information");
}

void ListChannelsPress(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  if (args.button == 1) f.ListChannelsDragOn = isOn(f.PictureTrash);
  f.DragSource = "Channels";
}

void ListChannelsRelease(Program& program, const EventArgs&) {
  auto& f = program.opening;
  if (!isOn(f.PictureTrash)) {
    f.ListChannelsDragOn = false;
    return;
  }
  std::string head = f.ListChannels.listCount() > 0 ? f.ListChannels.list(0) : std::string();
  if (head == "ALL CHANNELS") {
    f.ListChannelsDragOn = false;
    ui::msgBox(program.services,
               "Please choose a body part, to list just the channels for that part, before using this tool.",
               "Note!", ui::Buttons::OK, ui::Icon::Critical);
  } else if (hasPrefix(head, "Channels for")) {
    f.ListChannelsDragOn = true;
  }
}

void ListChannelsDblClick(Program& program) {
  auto& f = program.opening;
  if (f.ListChannels.listCount() > 0 && f.ListChannels.list(0) == "ALL CHANNELS") return;
  std::string line = f.ListChannels.text();
  if (line.empty()) return;
  if (!isOn(f.PictureMirror)) {
    f.ListChannelsReorderByPart.addItem(line);
    return;
  }
  f.MirrorMorph = Mid(line, 2);
  ui::msgBox(program.services, "Now doubleclick the body part to transfer this morph to.", "Note");
}

void ListChannelsMouseMove(Program& program) {
  auto& f = program.opening;
  f.LabelX.setVisible(false);
  f.LabelY.setVisible(false);
  f.LabelZ.setVisible(false);
}

}  // namespace tolvane::morph
