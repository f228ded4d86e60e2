#include "morph/morph_common.h"

#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "program/program.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::Mid;

int groupModeOf(std::string_view line) {
  int mode = 0;
  if (hasPrefix(line, "\tMaster")) mode = 1;
  if (hasPrefix(line, "\tSlave")) mode = 2;
  if (hasPrefix(line, "\tFigure")) mode = 3;
  if (hasPrefix(line, "\tMaster Part")) mode = 4;
  if (hasPrefix(line, "\tdelta")) mode = 5;
  return mode;
}

void readGroup(const ui::ListBox& list, int index, ChannelGroup& group) {
  // The distance of each kind of line from the "Slave" line of its group.
  static constexpr int kAboveSlave[] = {0, 1, 0, 2, 3, 4};
  int slave = index - kAboveSlave[group.mode];
  group.slave = Mid(list.list(slave), 8);
  group.master = Mid(list.list(slave + 1), 10);
  group.figure = Mid(list.list(slave + 2), 10);
  group.masterPart = Mid(list.list(slave + 3), 15);
  // With the "Slave" line itself selected the ratio keeps a blank in front.
  group.ratio = Mid(list.list(slave + 4), group.mode == 2 ? 15 : 16);
  if (!contains(group.slave, "rot") || !contains(group.slave, "tran")) group.mode = -1;
}

bool isGroupBlock(const std::string& figure, const std::string& part, const std::string& dial,
                  const std::string& ratio, const ChannelGroup& group) {
  return contains(figure, group.figure) && contains(part, group.masterPart) && contains(dial, group.master) &&
         contains(ratio, group.ratio);
}

std::string readLine(text::LineReader& in) {
  std::string line;
  if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
  return line;
}

std::string copyUntilEqual(text::LineReader& in, text::LineWriter& out, std::string_view key, Pacer& pacer) {
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
    if (line == key) return line;
    out.WriteLine(line);
    pacer.tick();
  }
}

std::string copyUntilContains(text::LineReader& in, text::LineWriter& out, std::string_view word,
                              Pacer& pacer) {
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) text::raiseError(text::kInputPastEndOfFile, in.path().string());
    if (contains(line, word)) return line;
    out.WriteLine(line);
    pacer.tick();
  }
}

void copyRest(text::LineReader& in, text::LineWriter& out, Pacer& pacer) {
  std::string line;
  while (in.readRawLine(line)) {
    out.WriteLine(line);
    pacer.tick();
  }
}

Pacer::Pacer(Program& program) : m_program(program) {}

// The program's one clock: the line reader's reports and these ticks share it, so the
// loop yields about every 100 ms, not twice as often.
void Pacer::check() { m_program.keepPace(); }

std::string sizeCaption(const std::string& path) {
  return text::StrInteger(static_cast<long long>(text::fileLength(text::nativePath(path)))) + " bytes";
}

}  // namespace tolvane::morph
