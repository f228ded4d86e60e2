// The dial tools that change single bytes of the destination in place: the hide toggle
// of a translation dial, the force-limits toggle, and the twist lines put out of action
// with a "*" and back with a TAB. Each scan finds the offsets first, then every byte is
// patched where the scan read it, so that a large figure is never rewritten for them.
#include <array>
#include <vector>

#include "morph/dial_tools.h"
#include "morph/morph_common.h"
#include "program/program.h"
#include "text/byte_patch.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/read_only_file.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;

namespace {

std::string readField(text::LineReader& in) {
  std::string field;
  if (!in.readField(field)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  return field;
}

// The flag digit of the line just read: the line ends in CR LF, so the digit stands
// three bytes before the read position.
struct FlagByte {
  std::uint64_t offset = 0;
  char digit = 0;
};

FlagByte flagBefore(text::LineReader& in) {
  FlagByte flag;
  if (in.position() < 3) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  flag.offset = in.position() - 3;
  flag.digit = static_cast<char>(in.byteAt(flag.offset));
  return flag;
}

void endHideTool(ui::Opening& f) {
  for (ui::Label* l : {&f.LabelX, &f.LabelY, &f.LabelZ}) l->setVisible(false);
  f.PictureViewChannels.setVisible(true);
}

// The body part's text before its "*", trimmed.
std::string partOf(const std::string& actorsLine) {
  std::size_t star = InStr(actorsLine, "*");
  return text::Trim(star > 0 ? Left(actorsLine, static_cast<long long>(star) - 1) : actorsLine);
}

}  // namespace

void MenuDialsClick(Program& program) {
  auto& f = program.opening;
  for (ui::Label* l : {&f.LabelX, &f.LabelY, &f.LabelZ}) l->setVisible(true);
  for (ui::Picture* p : {&f.PictureRenameMorph, &f.PictureCopyToDest, &f.PictureViewChannels})
    p->setVisible(false);
}

void HideDialClick(Program& program, char axis) {
  auto& f = program.opening;
  if (f.ListActors.listIndex() < 0) {
    ui::msgBox(program.services, "Choose a bodypart first.", "Error!");
    return;
  }
  const std::string name = partOf(f.ListActors.text());
  const std::string dial(1, axis);
  if (ui::msgBox(program.services, "Hide or un-hide " + dial + " dial for " + name + "?", "Confirm!",
                 ui::Buttons::YesNo) != ui::Answer::Yes) {
    endHideTool(f);
    return;
  }
  const auto path = text::nativePath(f.LabelFileNameForEditor.caption());
  FlagByte flag;
  {
    text::LineReader in(path);
    Pacer pacer(program);
    while (Mid(readField(in), 7) != name) pacer.tick();
    while (!contains(readField(in), "translate" + dial)) pacer.tick();
    while (!contains(readField(in), "hidden")) pacer.tick();
    flag = flagBefore(in);
  }
  std::string message;
  char now = '0';
  if (flag.digit == '0') {
    now = '1';
    message = "The dial was showing, now it is hidden.";
  } else if (flag.digit == '1') {
    message = "The dial was hidden, now it will show.";
  }
  text::patchByte(path, flag.offset, flag.digit, now);
  endHideTool(f);
  ui::msgBox(program.services, message, "Note!");
}

namespace {
void hideSideLists(ui::Opening& f) {
  f.ListTwistParts.setVisible(false);
  f.ListLimitParts.setVisible(false);
}
}  // namespace

void ForceLimits(Program& program, const std::string& part) {
  const std::string prefixed = "actor " + part;
  if (ui::msgBox(program.services, "Force or restore limits for " + prefixed + "?", "Confirm",
                 ui::Buttons::OKCancel) != ui::Answer::OK) {
    hideSideLists(program.opening);
    return;
  }
  // The search text is lower case and the file's is not: a part with capitals in its
  // name is never found, and the search ends at the end of the file.
  const std::string wanted = text::LCase(prefixed);
  const auto path = text::nativePath(program.opening.LabelFileNameForEditor.caption());
  std::vector<FlagByte> flags;
  {
    text::LineReader in(path);
    for (int found = 0; found < 2;)
      if (hasPrefix(readField(in), wanted)) ++found;
    std::string field;
    while (in.readField(field) && !hasPrefix(field, "actor"))
      if (contains(field, "forceLimits") && flags.size() < 51) flags.push_back(flagBefore(in));
  }
  std::string message;
  for (const FlagByte& flag : flags) {
    if (flag.digit == '0') {
      text::patchByte(path, flag.offset, '0', '1');
      message = "Limits were in place, now they are forced.";
      program.services.beep();
    } else if (flag.digit == '1') {
      text::patchByte(path, flag.offset, '1', '0');
      message = "Limits were forced, now they are in place.";
    }
  }
  if (!flags.empty()) ui::msgBox(program.services, message, "Note!");
  hideSideLists(program.opening);
}

namespace {

using TwistStrings = std::array<std::string, 6>;

TwistStrings twistStrings(const std::string& entry) {
  TwistStrings strings;
  strings.fill("Oddmantle");  // a word no file holds: an unset slot never matches
  std::string part;
  if (entry == "Thigh" || entry == "Hip (as alternate Thigh name)") part = "Thigh";
  if (entry == "Shoulder") part = "Shldr";
  if (!part.empty()) {
    int i = 0;
    for (const char* side : {"l", "r"}) {
      std::string name = side + part;
      strings[i++] = "twistY " + name + "_twisty";
      strings[i++] = "jointZ " + name + "_jointz";
      strings[i++] = "jointX " + name + "_jointx";
    }
  }
  return strings;
}

// A line of the twist scan: the offset of its first byte and its text.
struct ScannedLine {
  std::uint64_t offset = 0;
  std::string text;
};

// Walks the file from byte 5000 (1-based) one line at a time, each line collected up
// to its CR with the LF behind the CR passed over, and hands every line to `take`,
// which says whether it counted; after a counted line the walk jumps 20 bytes ahead.
// The walk ends after `wanted` counted lines or at the end of the file.
template <typename Take>
void walkLines(const std::filesystem::path& path, int wanted, Take take) {
  text::ReadOnlyFile file(path);
  std::vector<char> block(1 << 20);
  std::uint64_t blockStart = 0, blockEnd = 0;
  auto byteAt = [&](std::uint64_t at) -> int {
    if (at < blockStart || at >= blockEnd) {
      blockStart = at;
      blockEnd = at + file.readAt(at, block.data(), block.size());
      if (blockEnd == blockStart) return -1;
    }
    return static_cast<unsigned char>(block[at - blockStart]);
  };
  int counted = 0;
  std::uint64_t at = 4999;
  ScannedLine line;
  while (counted < wanted) {
    if (byteAt(at) == '\n') ++at;
    line.offset = at;
    line.text.clear();
    int c;
    while ((c = byteAt(at)) >= 0 && c != '\r') {
      line.text.push_back(static_cast<char>(c));
      if (line.text.size() > text::kLongestLine) text::raiseLineTooLong(path.string());
      ++at;
    }
    if (c < 0 && line.text.empty()) return;
    ++at;
    if (take(line)) {
      ++counted;
      at += 20;
    }
    if (c < 0) return;
  }
}

bool holdsAny(const std::string& line, const TwistStrings& strings) {
  for (const auto& s : strings)
    if (contains(line, s)) return true;
  return false;
}

int wantedLines(const std::string& entry) { return entry == "Shoulder" ? 2 : 6; }

// The twist routine's two ways: put lines out of action or back. Returns the number of
// lines changed; a failure of the file is the tool's error message.
int changeTwistLines(Program& program, const std::string& entry, bool restore) {
  const auto path = text::nativePath(program.opening.LabelFileNameForEditor.caption());
  const TwistStrings strings = twistStrings(entry);
  std::vector<ScannedLine> hits;
  walkLines(path, wantedLines(entry), [&](const ScannedLine& line) {
    bool commented = hasPrefix(line.text, "*");
    if (commented != restore || !holdsAny(line.text, strings)) return false;
    hits.push_back(line);
    return true;
  });
  for (const auto& hit : hits) text::patchByte(path, hit.offset, hit.text[0], restore ? '\t' : '*');
  return static_cast<int>(hits.size());
}

bool anyCommentedLine(const std::filesystem::path& path) {
  text::LineReader in(path);
  std::string line;
  while (in.readRawLine(line))
    if (hasPrefix(line, "*")) return true;
  return false;
}

std::string count(int n) { return std::to_string(n); }

}  // namespace

void RemoveTwist(Program& program, const std::string& entry) {
  int changed = 0;
  try {
    changed = changeTwistLines(program, entry, false);
  } catch (const text::RuntimeError&) {
    ui::msgBox(program.services, "No twist parameters for " + entry + "!", "Error!");
    return;
  }
  if (changed == 0)
    ui::msgBox(program.services, "No " + entry + " with twist parameters!", "Note!");
  else
    ui::msgBox(program.services, entry + "\r Edited!" + count(changed) + " lines were commented out.",
               "Note!");
}

void RestoreTwist(Program& program, const std::string& entry) {
  int changed = 0;
  try {
    if (anyCommentedLine(text::nativePath(program.opening.LabelFileNameForEditor.caption())))
      changed = changeTwistLines(program, entry, true);
  } catch (const text::RuntimeError&) {
    ui::msgBox(program.services, "No twist parameters for " + entry + "!", "Error!");
    return;
  }
  if (changed == 0)
    ui::msgBox(program.services, "No " + entry + " twist parameters were commented out!", "Note!");
  else
    ui::msgBox(program.services, entry + "\r Restored!" + count(changed) + " lines were restored.", "Note!");
}

}  // namespace tolvane::morph
