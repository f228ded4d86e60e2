#include "morph/channel_reorder.h"

#include <memory>

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
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
using text::InStr;
using text::Left;
using text::LineReader;
using text::LineWriter;
using text::Mid;

namespace {

// The text between two marks of a list line, empty when a mark is missing.
std::string between(const std::string& text, const std::string& open, const std::string& close) {
  std::size_t a = text.find(open);
  if (a == std::string::npos) return {};
  a += open.size();
  std::size_t b = text.find(close, a);
  return b == std::string::npos ? std::string() : text.substr(a, b - a);
}

void showReorderLists(ui::Opening& f, bool on) {
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.ListChannelsReorderByPart, &f.ListChannelsReorderNewOrder,
                                           &f.ListChannelsReorderReordered, &f.PictureChannelReorderDone})
    c->setVisible(on);
}

// The end of the input is the end of the output: no further line is written.
struct EndOfInput {};

std::string next(LineReader& in, Pacer& pacer) {
  std::string line;
  if (!in.readRawLine(line)) throw EndOfInput{};
  pacer.tick();
  return line;
}

class Rewrite {
 public:
  Rewrite(Program& program, const std::string& path, LineWriter& out)
      : m_path(text::nativePath(path)), m_out(out), m_pacer(program) {
    reopen();
  }

  void reopen() { m_in = std::make_unique<LineReader>(m_path); }

  // Through the part's definition header and the brace of its channels block.
  void copyHead(const std::string& part) {
    for (int found = 0; found < 2;) {
      std::string line = next(*m_in, m_pacer);
      m_out.WriteLine(line);
      if (hasPrefix(line, "actor") && contains(line, part)) ++found;
    }
    std::string line;
    do {
      line = next(*m_in, m_pacer);
      m_out.WriteLine(line);
    } while (!contains(line, "channels"));
    m_out.WriteLine(next(*m_in, m_pacer));
  }

  // Finds one channel from where the input stands and copies it; returns the line that
  // ended the copy.
  std::string copyChannel(const std::string& id, const std::string& dial, bool last) {
    std::string line;
    for (;;) {
      line = next(*m_in, m_pacer);
      if (line == "figure") return line;
      if (!contains(line, "target") || !contains(line, id)) continue;
      if (contains(line, dial)) {
        m_out.WriteLine(line);
        break;
      }
      std::string brace = next(*m_in, m_pacer);
      std::string name = next(*m_in, m_pacer);
      if (contains(name, dial)) {
        for (const auto& l : {line, brace, name}) m_out.WriteLine(l);
        break;
      }
    }
    for (;;) {
      line = next(*m_in, m_pacer);
      if (contains(line, "target") || line == "figure" || (last && hasPrefix(line, "actor"))) return line;
      m_out.WriteLine(line);
    }
  }

  // The rest of the file, without any further section of the part.
  void copyRest(const std::string& part) {
    std::string line;
    bool dropping = false;
    while (m_in->readRawLine(line)) {
      m_pacer.tick();
      if (hasPrefix(line, "actor") || hasPrefix(line, "figure"))
        dropping = hasPrefix(line, "actor") && contains(line, part);
      if (!dropping) m_out.WriteLine(line);
    }
  }

 private:
  std::filesystem::path m_path;
  LineWriter& m_out;
  Pacer m_pacer;
  std::unique_ptr<LineReader> m_in;
};

void writeReordered(Program& program, const std::vector<std::string>& work, LineWriter& out) {
  const std::string part = between(work.front(), "#", "*");
  Rewrite rw(program, program.opening.LabelFileNameForEditor.caption(), out);
  try {
    rw.copyHead(part);
    std::string atHand;
    for (std::size_t k = 0; k < work.size(); ++k) {
      bool last = k + 1 == work.size();
      atHand = rw.copyChannel(Left(work[k], static_cast<long long>(InStr(work[k], "#")) - 1),
                              between(work[k], "*", "^"), last);
      if (!last) rw.reopen();
    }
    out.WriteLine(atHand);
    rw.copyRest(part);
  } catch (const EndOfInput&) {
  }
}

}  // namespace

void ListActorsDblClick(Program& program) {
  auto& f = program.opening;
  if (isOn(f.PictureMirror)) return;  // the mirrored copy takes this double-click
  f.ListChannelsReorderByPart.clear();
  f.ListChannelsReorderNewOrder.clear();
  f.ListChannelsReorderReordered.clear();
  showReorderLists(f, true);
  std::string line = f.ListActors.text();
  std::size_t star = InStr(line, "*");
  std::string part = text::Trim(star > 0 ? Left(line, static_cast<long long>(star) - 1) : line);
  for (const auto& entry : f.ListChannelsReorder.items())
    if (hasPrefix(entry, part)) f.ListChannelsReorderByPart.addItem(entry);
}

void NewOrderDrop(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  if (args.source != "Opening.ListChannelsReorderByPart") return;
  int index = f.ListChannelsReorderByPart.listIndex();
  if (index < 0) return;
  f.ListChannelsReorderNewOrder.addItem(f.ListChannelsReorderByPart.list(index));
  f.ListChannelsReorderByPart.removeItem(index);
}

void ReorderDoneClick(Program& program) {
  auto& f = program.opening;
  f.ListChannelsReorderReordered.clear();
  if (f.ListChannelsReorderNewOrder.listCount() == 0) {
    showReorderLists(f, false);
    return;
  }
  for (const auto* list : {&f.ListChannelsReorderNewOrder, &f.ListChannelsReorderByPart})
    for (const auto& entry : list->items()) {
      std::size_t at = entry.find('@');
      std::string id = at == std::string::npos ? std::string() : entry.substr(at + 1);
      f.ListChannelsReorderReordered.addItem(id + "#" + entry.substr(0, at));
    }
  auto scratch = program.workFile("\\Reorder.cr2");
  text::deleteIgnoringErrors(scratch);
  {
    LineWriter out(scratch, LineWriter::Mode::Append);
    program.setBusy(true);
    writeReordered(program, f.ListChannelsReorderReordered.items(), out);
    out.close();
    program.setBusy(false);
  }
  showReorderLists(f, false);
  const std::string working = f.LabelFileNameForEditor.caption();
  FileSaveStep(program, scratch, working, working);
}

void ListChannelsReorderDblClick(Program& program) {
  auto& f = program.opening;
  std::string entry = f.ListChannelsReorder.text();
  if (entry.empty()) return;
  std::string dial = between(entry, "*", "^");
  auto skip = static_cast<long long>(text::Val(between(entry, "^", "@")));
  LineReader in(text::nativePath(f.LabelFileNameForEditor.caption()));
  for (long long i = 0; i < skip; ++i) readLine(in);
  long long lineNumber = skip;
  std::string line;
  do {
    line = readLine(in);
    ++lineNumber;
  } while (!contains(line, dial));
  do {
    line = readLine(in);
    ++lineNumber;
  } while (!contains(line, "trackingScale"));
  f.TrackingLine = lineNumber;
  f.TextTrackingSpeed.setText(Mid(line, static_cast<long long>(InStr(line, " ")) + 1));
  f.TextTrackingSpeed.setVisible(true);
  f.TextTrackingSpeed.setFocus();
}

}  // namespace tolvane::morph
