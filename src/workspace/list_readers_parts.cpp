// The body part and channel readers: ListBodyParts fills the left pane (or the right
// one with a source's parts), ListAllChannels the "ALL CHANNELS" view and the hidden
// reorder table; the scans themselves are the figure-text library's.
#include "text/figure_scan.h"
#include "text/list_scans.h"
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

void showBodyParts(Program& program, std::vector<std::string> entries) {
  ui::Opening& form = program.opening;
  bool source =
      text::Right(form.LabelFileName.caption(), 20) != text::Right(form.LabelChannelFileName.caption(), 20);
  ui::ListBox& target = source ? form.ListChannels : form.ListActors;
  appendEntries(target, std::move(entries));
  if (target.listCount() == 0)
    ui::msgBox(program.services, "No body parts in this file!", "Note!", ui::Buttons::OK,
               ui::Icon::Exclamation);
}

void ListBodyParts(Program& program, const std::string& path) {
  text::FigureScanner in(filePath(program, path));
  showBodyParts(program, text::scanBodyParts(in, text::FileKind(path)));
}

void showChannels(Program& program, text::ChannelScan lists) {
  ui::Opening& form = program.opening;
  appendEntries(form.ListChannelsReorder, std::move(lists.reorder));
  appendEntries(form.ListChannels, std::move(lists.channels));
  if (form.ListChannels.listCount() == 0) {
    form.ListChannels.setForeColor(ui::kRed);
    form.ListChannels.addItem("NO CHANNELS IN CR2");
  }
}

void ListAllChannels(Program& program, const std::string& path) {
  program.opening.ListChannels.setForeColor(0x400000);
  text::FigureScanner in(filePath(program, path));
  showChannels(program, text::scanChannels(in, text::FileKind(path) == "hr2"));
}

}  // namespace tolvane
