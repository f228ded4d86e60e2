// Pieces the channel and morph tools share: the tool-button modes, the reading of an
// EMC line group back from ListChannels by its fixed positions, the copy loops of the
// stream rewrites, and the elapsed-time yield of long scans.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "text/line_reader.h"
#include "text/line_writer.h"
#include "ui/controls.h"

namespace tolvane {
class Program;
}

namespace tolvane::morph {

inline constexpr const char* kTab = "\t";
inline constexpr const char* kTwoTabs = "\t\t";
inline constexpr const char* kThreeTabs = "\t\t\t";

inline bool isOn(const ui::Control& picture) { return picture.backColor() == ui::kToolOn; }
inline void setOn(ui::Control& picture, bool on) { picture.setBackColor(on ? ui::kToolOn : ui::kToolRest); }

// The six lines of a selected EMC group and the kind of line that was selected.
struct ChannelGroup {
  int mode = 0;       // 0 plain, 1..5 the kind of group line, -1 look for the control block
  std::string slave;  // with its leading blank
  std::string master;
  std::string figure;
  std::string masterPart;
  std::string ratio;
};

// Group mode of a list line (TAB included): 1 Master, 2 Slave, 3 Figure, 4 Master
// Part, 5 delta, later hits overriding earlier ones; 0 when none hits.
int groupModeOf(std::string_view line);

// Reads the group around `index` for `mode` (1..5) at the fixed positions, then turns
// the mode into -1 unless the slave's name holds both "rot" and "tran".
void readGroup(const ui::ListBox& list, int index, ChannelGroup& group);

// Whether four file lines (figure, master part, master dial, ratio) are the block of
// the group.
bool isGroupBlock(const std::string& figure, const std::string& part, const std::string& dial,
                  const std::string& ratio, const ChannelGroup& group);

// A raw line; reading past the end is run-time error 62 naming the file.
std::string readLine(text::LineReader& in);

// Yields to the event loop about every 100 ms of work, whatever the number of lines,
// telling how far the reading of the file is.
class Pacer;

// Copies lines until one equals `key`; the key line is returned, not written.
std::string copyUntilEqual(text::LineReader& in, text::LineWriter& out, std::string_view key, Pacer& pacer);
// Copies lines until one contains `word`; that line is returned, not written.
std::string copyUntilContains(text::LineReader& in, text::LineWriter& out, std::string_view word,
                              Pacer& pacer);
// Copies the rest of the file.
void copyRest(text::LineReader& in, text::LineWriter& out, Pacer& pacer);

class Pacer {
 public:
  explicit Pacer(Program& program);
  void tick() {
    if ((++m_count & 0x3FFF) == 0) check();
  }

 private:
  void check();
  Program& m_program;
  unsigned m_count = 0;
};

// "12345 bytes" as LabelFileSize shows it, with the number's leading blank.
std::string sizeCaption(const std::string& path);

}  // namespace tolvane::morph
