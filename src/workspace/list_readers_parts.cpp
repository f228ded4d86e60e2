// The body part and channel readers: ListBodyParts fills the left pane (or the right
// one with a source's parts), ListAllChannels the "ALL CHANNELS" view and the hidden
// reorder table.
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

using text::contains;
using text::hasPrefix;

std::string displayPath(const std::string& path) {
  if (path.size() < 43) return text::Right(path, 45);
  return "..." + text::Right(path, 45);
}

std::filesystem::path filePath(const Program& program, const std::string& text) {
  std::filesystem::path p = text::nativePath(text);
  return p.is_relative() ? program.currentDir / p : p;
}

std::string allChannelsPath(const Program& program) {
  const ui::Opening& form = program.opening;
  if (form.LabelFileName.caption() != form.LabelChannelFileName.caption())
    return form.LabelChannelFileNameForEditor.caption();
  return form.LabelFileNameForEditor.caption();
}

void appendEntries(ui::ListBox& list, std::vector<std::string> entries) {
  if (entries.empty()) return;
  std::vector<int> selected = list.selectedIndexes();
  int current = list.listIndex();
  std::vector<std::string> items = list.items();
  items.insert(items.end(), std::make_move_iterator(entries.begin()), std::make_move_iterator(entries.end()));
  list.setItems(std::move(items));
  for (int i : selected) list.setSelected(i, true);
  if (current >= 0) list.setListIndex(current);
}

void yieldWhileReading(Program& program, text::FigureScanner& in) {
  in.setYield([&program] { program.services.yield(); });
}

namespace {

// Up to the first line that holds figureResFile or opens the BODY actor; the test for
// figureResFile stands before each read, beside the end of the file (a hair file has
// neither line and then lists nothing).
long long readToFirstFigure(text::FigureScanner& in) {
  text::Needles keys{"figureResFile", "actor BODY"};
  long long count = 0;
  std::string_view line;
  while (!contains(line, "figureResFile")) {
    count += static_cast<long long>(in.skipLines(keys, false, true));
    if (!in.rawLine(line)) break;
    ++count;
    if (hasPrefix(line, "actor BODY")) break;
  }
  return count;
}
}  // namespace

void ListBodyParts(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  bool source =
      text::Right(form.LabelFileName.caption(), 20) != text::Right(form.LabelChannelFileName.caption(), 20);
  ui::ListBox& target = source ? form.ListChannels : form.ListActors;
  std::vector<std::string> entries;
  text::FigureScanner in(filePath(program, path));
  yieldWhileReading(program, in);
  std::string kind = text::FileKind(path);
  long long count = 0;
  if (kind != "fc2" && kind != "pz2" && kind != "pp2") count = readToFirstFigure(in);

  text::Needles actors{"actor"};
  text::Needles figureRes{"figureResFile"};
  std::string_view line;
  for (;;) {
    count += static_cast<long long>(in.skipLines(actors, false, true));
    if (!in.rawLine(line)) break;
    ++count;
    if (!hasPrefix(line, "actor")) continue;
    std::string entry = text::Mid(line, 6) + " *" + text::StrInteger(count);
    in.ReadRawLine();
    std::string_view second = in.ReadRawLine();
    count += 2;
    if (second.empty()) {
      // The first definition block: the declarations of this figure are all listed.
      entry.assign(1, ' ');
      std::string_view f;
      do {
        count += static_cast<long long>(in.skipLines(figureRes, true, true));
        f = in.ReadField();
        ++count;
      } while (!contains(f, "figureResFile"));
      in.ReadField();
      ++count;
    }
    if (!contains(entry, "BODY")) entry = "   " + entry;
    entries.push_back(std::move(entry));
  }
  in.close();
  appendEntries(target, std::move(entries));
  if (target.listCount() == 0)
    ui::msgBox(program.services, "No body parts in this file!", "Note!", ui::Buttons::OK,
               ui::Icon::Exclamation);
}

namespace {

struct ChannelLists {
  std::vector<std::string> channels;
  std::vector<std::string> reorder;
};

// One part's channels, from the line after its header; returns the line that ends
// the part (an actor header) or nothing when the part's listing stops.
class ChannelWalk {
 public:
  ChannelWalk(text::FigureScanner& in, ChannelLists& out, long long& count)
      : m_in(in), m_out(out), m_count(count) {}

  // Returns true when it stopped at an actor header, which is then in `header`.
  bool walkPart(const std::string& part, long long partLine, std::string& header) {
    for (;;) {
      std::string_view line;
      for (;;) {
        m_count += static_cast<long long>(m_in.skipLines(m_channelKeys, false, true));
        line = m_in.ReadRawLine();
        ++m_count;
        if (hasPrefix(line, "actor")) {
          header.assign(line);
          return true;
        }
        if (contains(line, "valueOpDeltaAdd")) break;
        if (contains(line, "targetGeom")) break;
      }
      if (contains(line, "valueOpDeltaAdd") && !contains(line, "targetGeom")) {
        addRemote(part);
        continue;
      }
      std::string internal = text::Mid(line, 14);
      m_in.ReadRawLine();
      std::string_view nameLine = m_in.ReadRawLine();
      m_count += 2;
      m_dial = text::Mid(nameLine, static_cast<long long>(text::InStr(nameLine, "name")) + 5);
      m_out.reorder.push_back(part + "*" + m_dial + "^" + text::StrInteger(partLine) + "@" + internal);
      for (;;) {
        m_count += static_cast<long long>(m_in.skipLines(m_interpKeys, false, true));
        ++m_count;
        if (contains(m_in.ReadRawLine(), "interpStyleLocked")) break;
      }
      std::string_view after = m_in.ReadRawLine();
      ++m_count;
      if (contains(after, "valueOpDeltaAdd")) return false;
      m_out.channels.push_back(part);
      m_out.channels.push_back("\t" + m_dial);
    }
  }

 private:
  void addRemote(const std::string& part) {
    std::string figure(m_in.ReadField());
    std::string masterPart(m_in.ReadField());
    std::string masterChannel(m_in.ReadField());
    std::string ratio(m_in.ReadField());
    m_count += 4;
    m_out.channels.insert(m_out.channels.end(),
                          {part, "\tEMC Channel", "\tSlave: " + m_dial, "\tMaster: " + masterChannel,
                           "\tFigure: " + figure, "\tMaster Part: " + masterPart, "\t" + ratio});
  }

  text::FigureScanner& m_in;
  ChannelLists& m_out;
  long long& m_count;
  std::string m_dial;
  text::Needles m_channelKeys{"actor", "valueOpDeltaAdd", "targetGeom"};
  text::Needles m_interpKeys{"interpStyleLocked"};
};

}  // namespace

void ListAllChannels(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  form.ListChannels.setForeColor(0x400000);
  ChannelLists lists;
  text::FigureScanner in(filePath(program, path));
  yieldWhileReading(program, in);
  bool hair = text::FileKind(path) == "hr2";
  text::Needles heads = hair ? text::Needles{"actor", "prop"} : text::Needles{"actor"};
  long long count = 0;
  std::string part;
  long long partLine = 0;
  std::string header;
  ChannelWalk walk(in, lists, count);
  bool trapped = false;
  std::string_view line;
  while (!trapped) {
    if (header.empty()) {
      count += static_cast<long long>(in.skipLines(heads, false, true));
      if (!in.rawLine(line)) break;
      ++count;
      if (hasPrefix(line, "actor")) {
        part = text::Mid(line, 7);
        partLine = count - 1;
      } else if (!(hair && hasPrefix(line, "prop"))) {
        continue;
      }
    } else {
      part = text::Mid(header, 7);
      partLine = count - 1;
    }
    header.clear();
    // Any fault inside a part, reading past the end above all, ends the listing.
    try {
      walk.walkPart(part, partLine, header);
    } catch (const text::RuntimeError&) {
      trapped = true;
    }
  }
  in.close();
  appendEntries(form.ListChannelsReorder, std::move(lists.reorder));
  appendEntries(form.ListChannels, std::move(lists.channels));
  if (form.ListChannels.listCount() == 0) {
    form.ListChannels.setForeColor(ui::kRed);
    form.ListChannels.addItem("NO CHANNELS IN CR2");
  }
}

}  // namespace tolvane
