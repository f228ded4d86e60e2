#include "morph/morph_rename.h"

#include "text/figure_text.h"
#include "text/line_reader.h"
#include "workspace/list_readers.h"
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
using text::Mid;
using text::Trim;

namespace {

constexpr int kWaiting = 48;
constexpr int kEntered = 49;
constexpr int kBodyPart = 481;

void hideOptions(ui::Opening& f) {
  f.OptionChannelRename.setVisible(false);
  f.OptionBodyPartRename.setVisible(false);
}

// The refusals of the second click; true when the rename may go on.
bool mayRename(Program& program) {
  auto& f = program.opening;
  auto refuse = [&](const std::string& text, const std::string& title) {
    ui::msgBox(program.services, text, title);
    hideOptions(f);
    return false;
  };
  if (f.OptionChannelRename.value()) {
    if (f.LabelFileNameForEditor.caption() != f.LabelChannelFileNameForEditor.caption())
      return refuse(
          "To rename a morph channel in the righthand pane you must have the same file open in both panes.",
          "Information");
    int index = f.ListChannels.listIndex();
    if (index == 0 || !hasPrefix(f.ListChannels.text(), "\t"))
      return refuse("Click on a morph to be renamed.", "Note!");
    if (index + 1 < f.ListChannels.listCount() && hasPrefix(f.ListChannels.list(index + 1), "\t"))
      return refuse("You cannot rename an EMC channel with this tool yet.", "Note!");
  }
  int actor = f.ListActors.listIndex();
  if (actor == 0 || (f.OptionBodyPartRename.value() && actor < 0))
    return refuse("Click on a body part to be renamed.", "Note!");
  return true;
}

// Copies the file with the morph's header and name line rewritten at its first match.
void renameMorph(Program& program, text::LineReader& in, text::LineWriter& out, const std::string& oldName,
                 const std::string& newName) {
  Pacer pacer(program);
  copyUntilEqual(in, out, "\t\ttargetGeom " + oldName, pacer);
  out.WriteLine("\t\ttargetGeom " + newName);
  out.WriteLine(readLine(in));
  readLine(in);
  out.WriteLine("\t\t\tname " + newName);
  copyRest(in, out, pacer);
}

// Every line that holds the old actor name is cut there and ends in the new one.
void renameBodyPart(Program& program, text::LineReader& in, text::LineWriter& out,
                    const std::string& oldActor, const std::string& newActor) {
  Pacer pacer(program);
  std::string line;
  while (in.readRawLine(line)) {
    std::size_t at = line.find(oldActor);
    if (at == std::string::npos)
      out.WriteLine(line);
    else
      out.WriteLine(line.substr(0, at) + newActor);
    pacer.tick();
  }
}

struct Rename {
  bool bodyPart = false;
  std::string oldText;
  std::string oldName;  // as the closing question shows it
  std::string newName;
  int actorsIndex = -1;  // the ListActors line found for a body part
  std::string newActorsLine;
};

void rewrite(Program& program, Rename& r) {
  auto& f = program.opening;
  text::StreamRewrite scratch(program.workFile("\\RenMorph.txt"), true);
  text::LineReader in(text::nativePath(f.LabelFileNameForEditor.caption()));
  if (!r.bodyPart) {
    r.oldName = Mid(r.oldText, 2);
    renameMorph(program, in, scratch.out(), r.oldName, r.newName);
  } else {
    std::string needle = Mid(r.oldText, 2);
    for (int i = 1; i < f.ListActors.listCount() && r.actorsIndex < 0; ++i)
      if (contains(f.ListActors.list(i), needle)) r.actorsIndex = i;
    if (r.actorsIndex < 0) text::raiseError(text::kSubscriptOutOfRange, "No body part line holds: " + needle);
    const std::string& found = f.ListActors.list(r.actorsIndex);
    r.newActorsLine = "    " + r.newName + Mid(found, static_cast<long long>(InStr(found, ":")));
    std::size_t star = InStr(r.oldText, "*");
    if (star == 0) text::raiseError(text::kInvalidProcedureCall, r.oldText);
    std::string oldActor = Trim(Left(r.oldText, static_cast<long long>(star) - 1));
    std::string newActor = Trim(r.newName + Mid(oldActor, static_cast<long long>(InStr(oldActor, ":"))));
    renameBodyPart(program, in, scratch.out(), oldActor, newActor);
    std::size_t colon = InStr(oldActor, ":");
    r.oldName = colon > 0 ? Left(oldActor, static_cast<long long>(colon) - 1) : oldActor;
  }
  scratch.close();
}

void save(Program& program, const Rename& r) {
  auto& f = program.opening;
  const std::string current = f.LabelFileNameForEditor.caption();
  auto chosen = FileSaveStep(program, program.workFile("\\RenMorph.txt"), current, current);
  if (chosen) {
    f.LabelFileName.setCaption(displayPath(*chosen));
    f.LabelChannelFileName.setCaption(f.LabelFileName.caption());
    f.LabelFileNameForEditor.setCaption(*chosen);
    f.LabelFileSize.setCaption(sizeCaption(*chosen));
  }
  if (!r.bodyPart)
    f.ListChannels.setItem(f.ListChannels.listIndex(), "\t" + r.newName);
  else
    f.ListActors.setItem(f.ListActors.listIndex(), r.newActorsLine);
}

// The wait for the new name: TextMorphRename shows, and the typed line that Enter
// ends goes into it. False when the user cancels the typing.
bool takeTypedName(Program& program) {
  auto& f = program.opening;
  f.TextMorphRename.setVisible(true);
  f.TextMorphRename.setFocus();
  f.RenameWaitState = kWaiting;
  auto typed =
      program.services.inputLine("Type the new name and press Enter.", "Rename", f.TextMorphRename.text());
  if (!typed) {
    f.RenameWaitState = 0;
    f.TextMorphRename.setVisible(false);
    hideOptions(f);
    return false;
  }
  f.TextMorphRename.setText(*typed);
  f.RenameWaitState = kEntered;
  return true;
}

}  // namespace

void RenameMorphClick(Program& program) {
  auto& f = program.opening;
  if (!f.OptionBodyPartRename.visible()) {
    f.OptionBodyPartRename.setVisible(true);
    f.OptionChannelRename.setVisible(true);
    return;
  }
  if (!mayRename(program)) return;
  if (!takeTypedName(program)) return;

  Rename r;
  r.bodyPart = f.OptionBodyPartRename.value();
  if (r.bodyPart) {
    r.oldText = f.ListActors.text();
    f.RenameWaitState = kBodyPart;
  } else {
    r.oldText = f.ListChannels.text();
  }
  r.newName = f.TextMorphRename.text();
  program.setBusy(true);
  rewrite(program, r);
  program.setBusy(false);

  auto answer =
      ui::msgBox(program.services,
                 std::string(r.bodyPart ? "Body Part " : "Morph ") + "\"" + r.oldName + "\" renamed in " +
                     f.LabelFileName.caption() + " as \"" + f.TextMorphRename.text() + "\"  Save changes?",
                 "Success!", ui::Buttons::YesNo);
  f.TextMorphRename.setText("");
  f.TextMorphRename.setVisible(false);
  if (answer == ui::Answer::Yes) save(program, r);
  hideOptions(f);
}

void RenameMorphRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to rename a morph channel or body part.", "Information");
}

void TextMorphRenameKey(Program& program, const EventArgs& args) {
  if (args.keyCode == 13) program.opening.RenameWaitState = kEntered;
}

}  // namespace tolvane::morph
