#include "morph/body_part_transfer.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "morph/morph_common.h"
#include "program/events.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/folder_pickers.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;
using text::Right;
using Step = ui::Opening::TransferStep;

namespace {

constexpr const char* kEndGeom = "*end geom*";
constexpr const char* kNewFigure = "newcr2.doc";

// Blanks and tabs off both ends: the rows of the chain lists.
std::string stripped(const std::string& line) {
  std::size_t from = line.find_first_not_of(" \t");
  if (from == std::string::npos) return {};
  std::size_t to = line.find_last_not_of(" \t");
  return line.substr(from, to - from + 1);
}

std::string indentOf(const std::string& line) { return line.substr(0, line.find_first_not_of(" \t")); }

void showPickers(ui::Opening& f, bool on) {
  for (ui::Control* c : {static_cast<ui::Control*>(&f.DirTransferParts), static_cast<ui::Control*>(&f.FileTransferParts)})
    c->setVisible(on);
}

// The routine back at rest: its lists hidden, its state forgotten, the name box put
// away if the routine had it. A finished run leaves the link weights it guessed in view
// until the next run starts.
void backToRest(Program& program, bool keepWeights = false) {
  auto& f = program.opening;
  if (f.Transfer.step == Step::AwaitName) {
    f.TextMorphRename.setText("");
    f.TextMorphRename.setVisible(false);
  }
  f.Transfer = {};
  f.ToolMode = 0;
  showPickers(f, false);
  for (ui::ListBox* l : {&f.ListTransferChains, &f.ListTransferWeights}) {
    if (keepWeights && l == &f.ListTransferWeights) continue;
    l->clear();
    l->setVisible(false);
  }
}

// Runs a step; a run-time error puts the routine back at rest and removes its scratch
// copy of the new figure before the error is reported.
template <class Action>
void guarded(Program& program, Action action) {
  try {
    action();
  } catch (...) {
    text::deleteIgnoringErrors(program.currentDir / kNewFigure);
    backToRest(program);
    program.setBusy(false);
    throw;
  }
}

void showFiles(Program& program) {
  auto& f = program.opening;
  ui::showFiles(f.FileTransferParts, text::nativePath(f.DirTransferParts.text()), f.Transfer.filePattern);
}

// The text of a list or picker folder without its trailing separator.
std::string withoutTrailingSeparator(std::string folder) {
  while (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
  return folder;
}

// The lines of "\bp.txt": the declaration in front of "*end geom*", the definition behind.
struct CutPart {
  std::vector<std::string> declaration;
  std::vector<std::string> definition;
  std::string parent;
};

CutPart readCutPart(Program& program) {
  CutPart part;
  text::LineReader in(program.workFile("\\bp.txt"));
  std::string line;
  bool behind = false;
  while (in.readRawLine(line)) {
    if (!behind && line == kEndGeom) {
      behind = true;
      continue;
    }
    (behind ? part.definition : part.declaration).push_back(line);
  }
  for (const std::string& l : part.definition) {
    std::size_t at = InStr(l, "parent");
    if (at == 0) continue;
    part.parent = stripped(Mid(l, static_cast<long long>(at) + 6));
    break;
  }
  return part;
}

// The inkyChain lines of the target, in file order.
std::vector<std::string> chainHeads(Program& program) {
  text::LineReader in(text::nativePath(program.opening.Transfer.target));
  Pacer pacer(program);
  std::vector<std::string> heads;
  std::string line;
  while (in.readRawLine(line)) {
    pacer.tick();
    if (contains(line, "inkyChain")) heads.push_back(line);
  }
  return heads;
}

// Reads one chain block, from its inkyChain line (in hand) through its closing brace.
std::vector<std::string> readChainBlock(text::LineReader& in, const std::string& head) {
  std::vector<std::string> block{head};
  int depth = 0;
  bool opened = false;
  while (!opened || depth > 0) {
    std::string line = readLine(in);
    block.push_back(line);
    const std::string s = stripped(line);
    if (s == "{") {
      ++depth;
      opened = true;
    } else if (s == "}") {
      --depth;
    }
  }
  return block;
}

// The number of a linkWeight line: the text behind its index.
std::string weightText(const std::string& line) {
  std::string rest = stripped(Mid(line, static_cast<long long>(InStr(line, "linkWeight")) + 10));
  std::size_t blank = rest.find_first_of(" \t");
  return blank == std::string::npos ? std::string() : stripped(rest.substr(blank));
}

// The chosen chain with the new link at its place and the link weights numbered anew
// in link order, the new one's weight among them.
std::vector<std::string> chainWithNewLink(const std::vector<std::string>& block, const ui::Opening::BodyPartTransfer& t,
                                          const std::string& link) {
  std::vector<std::size_t> links;
  std::vector<std::size_t> weights;
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (contains(block[i], "addLink")) links.push_back(i);
    if (contains(block[i], "linkWeight")) weights.push_back(i);
  }
  const auto at = static_cast<std::size_t>(t.linkAt);
  std::vector<std::string> values;
  for (std::size_t w : weights) values.push_back(weightText(block[w]));
  values.insert(values.begin() + static_cast<long>(std::min(at, values.size())), t.linkWeight);
  std::vector<std::string> out;
  for (std::size_t i = 0; i < block.size(); ++i) {
    const std::string& line = block[i];
    // A chain without links takes the new one ahead of its closing brace.
    if (links.empty() && i + 1 == block.size()) out.push_back(indentOf(line) + "addLink " + link);
    if (at < links.size() && i == links[at]) out.push_back(indentOf(line) + "addLink " + link);
    if (!weights.empty() && i == weights.front())
      for (std::size_t k = 0; k < values.size(); ++k)
        out.push_back(indentOf(line) + "linkWeight " + std::to_string(k) + " " + values[k]);
    if (std::find(weights.begin(), weights.end(), i) == weights.end()) out.push_back(line);
    if (!links.empty() && at >= links.size() && i == links.back()) out.push_back(indentOf(line) + "addLink " + link);
  }
  return out;
}

// The part's definition under its new name: the name line renamed, otherActor lines
// that name the old part naming the new one, and the morphs left out: a targetGeom
// line starts a stretch that runs to the next line with "twist" behind its first
// character, which is kept.
void writeDefinition(text::LineWriter& out, const CutPart& part, const std::string& oldName,
                     const std::string& newName, const std::string& number) {
  out.WriteLine("actor " + newName + number);
  bool named = false;
  bool dropping = false;
  for (std::size_t i = 1; i < part.definition.size(); ++i) {
    const std::string& line = part.definition[i];
    if (dropping) {
      if (InStr(line, "twist") <= 1) continue;
      dropping = false;
    }
    if (contains(line, "targetGeom")) {
      dropping = true;
      continue;
    }
    if (!named && contains(line, "name")) {
      out.WriteLine(indentOf(line) + "name " + newName);
      named = true;
      continue;
    }
    // Only a line that names the old part takes the new name; any other otherActor
    // line names a part of its own and stays.
    std::size_t at = InStr(line, oldName);
    if (contains(line, "otherActor") && at > 0) {
      out.WriteLine(Left(line, static_cast<long long>(at) - 1) + newName + number);
      continue;
    }
    out.WriteLine(line);
  }
}

// The new figure, written through newcr2.doc in the current folder, then moved to its
// name beside the target.
void writeNewFigure(Program& program) {
  auto& f = program.opening;
  const auto& t = f.Transfer;
  const CutPart part = readCutPart(program);
  program.setBusy(true);
  text::StreamRewrite scratch(program.currentDir / kNewFigure, true);
  text::LineWriter& out = scratch.out();
  text::LineReader in(text::nativePath(t.target));
  Pacer pacer(program);
  std::string line;
  // Through the first figureResFile line, which becomes the new main OBJ line.
  copyUntilContains(in, out, "figureResFile", pacer);
  out.WriteLine(t.objLine);
  // The declaration run ends where the first part's header comes a second time; each
  // actor line on the way gives the figure number, its last two characters.
  std::string firstHeader;
  std::string number;
  for (;;) {
    line = readLine(in);
    pacer.tick();
    if (hasPrefix(line, "actor")) {
      if (firstHeader.empty())
        firstHeader = line;
      else if (line == firstHeader)
        break;
      number = Right(line, 2);
    }
    out.WriteLine(line);
  }
  // The new part's declaration closes the run: the cut declaration behind its header.
  out.WriteLine("actor " + t.newName + number);
  for (std::size_t i = 1; i < part.declaration.size() && i <= 4; ++i) out.WriteLine(part.declaration[i]);
  out.WriteLine(line);
  // The definitions, then the new part's own, ahead of the figure section.
  copyUntilContains(in, out, "figureResFile", pacer);
  writeDefinition(out, part, t.part, t.newName, number);
  out.WriteLine(t.objLine);
  // The figure section: the new part's addChild pair ahead of the first chain (or of
  // allowsBending in a figure without chains), its link in the chosen chain, its weld
  // pair ahead of allowsBending.
  const std::string newPart = t.newName + number;
  bool childWritten = false;
  int chainNumber = -1;
  for (;;) {
    line = readLine(in);
    pacer.tick();
    const bool chain = contains(line, "inkyChain");
    const bool allows = contains(line, "allows");
    if (!childWritten && (chain || allows)) {
      out.WriteLine("\taddChild    " + newPart);
      out.WriteLine("\t\t\t" + part.parent);
      childWritten = true;
    }
    if (chain && ++chainNumber == t.chain && t.linkAt >= 0) {
      for (const std::string& l : chainWithNewLink(readChainBlock(in, line), t, newPart)) out.WriteLine(l);
      continue;
    }
    if (allows) {
      out.WriteLine("\tweld    " + newPart);
      out.WriteLine("\t\t\t" + part.parent);
      out.WriteLine(line);
      break;
    }
    out.WriteLine(line);
  }
  copyRest(in, out, pacer);
  in.close();
  scratch.close();
  text::moveScratchInto(scratch.scratch(), text::nativePath(t.newPath), true);
  // The scratch copy lies among the user's files: one the move could not remove goes now.
  text::deleteIgnoringErrors(scratch.scratch());
  program.setBusy(false);
  const std::string path = t.newPath;
  backToRest(program, true);
  ui::msgBox(program.services, "New CR2 saved as " + path + ".", "Finished!");
}

// After the name: the question about each part with embedded geometry, then the one
// about the IK chain.
void afterName(Program& program) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  {
    text::LineReader in(text::nativePath(t.target));
    Pacer pacer(program);
    std::string current;
    for (std::string line = readLine(in); line != "figure"; line = readLine(in)) {
      pacer.tick();
      if (hasPrefix(line, "actor ")) current = Mid(line, 7);
      if (!contains(line, "Custom")) continue;
      if (ui::msgBox(program.services,
                     current +
                         " has geometry embedded in the CR2.  If it is a parent or child in the hierarchy of your new "
                         "body part, the transfer won't work properly.  Do you want to continue?",
                     "Alert!", ui::Buttons::YesNo) == ui::Answer::No) {
        backToRest(program);
        return;
      }
    }
  }
  if (ui::msgBox(program.services, "Is the new body part involved in the IK chain?", "Next...", ui::Buttons::YesNo) ==
      ui::Answer::Yes) {
    t.chainHeads = chainHeads(program);
    // A figure without chains has no place to offer: the part goes in without a link.
    if (!t.chainHeads.empty()) {
      f.ListTransferChains.clear();
      for (const std::string& head : t.chainHeads) f.ListTransferChains.addItem(stripped(head));
      f.ListTransferChains.setVisible(true);
      t.step = Step::AwaitChain;
      return;
    }
  }
  writeNewFigure(program);
}

}  // namespace

void TransferPictureClick(Program& program) {
  backToRest(program);
  program.opening.ToolMode = 69;
}

void TransferCutOut(Program& program) {
  guarded(program, [&program] {
    auto& f = program.opening;
    const std::string entry = f.ListActors.text();
    const long long star = static_cast<long long>(InStr(entry, "*"));
    const std::string name = text::Trim(Left(entry, star > 0 ? star - 1 : 0));
    const std::string header = "actor " + name;
    text::StreamRewrite out(program.workFile("\\bp.txt"), true);
    text::LineReader in(text::nativePath(f.LabelFileNameForEditor.caption()));
    Pacer pacer(program);
    std::string line;
    do {
      line = readLine(in);
      pacer.tick();
    } while (line != header);
    bool custom = false;
    for (int i = 0; i < 5; ++i) {
      if (i > 0) line = readLine(in);
      custom = custom || contains(line, "Custom");
      out.WriteLine(line);
    }
    if (custom) {
      in.close();
      out.discard();
      backToRest(program);
      ui::msgBox(program.services, "Can't use this body part, it has geometry embedded in the CR2.", "Error!");
      return;
    }
    out.WriteLine(readLine(in));
    out.WriteLine(kEndGeom);
    do {
      line = readLine(in);
      pacer.tick();
    } while (line != header);
    out.WriteLine(line);
    do {
      line = readLine(in);
      out.WriteLine(line);
    } while (!contains(line, "locked"));
    out.WriteLine(readLine(in));
    out.WriteLine(readLine(in));
    in.close();
    out.close();
    f.ToolMode = 0;
    f.Transfer = {};
    f.Transfer.part = name;
    f.Transfer.step = Step::PartCut;
    ui::showFolder(f.DirTransferParts, program.currentDir);
    showFiles(program);
    showPickers(f, true);
    ui::msgBox(program.services, "Now choose your destination CR2 and drag it to the picture.", "Next...");
  });
}

void TransferDrop(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  // Only a cut-out part can be transferred.
  if (t.step != Step::PartCut) return;
  const std::string folder = f.DirTransferParts.text();
  std::string name;
  if (!args.files.empty()) {
    std::filesystem::path dropped = text::nativePath(args.files.front());
    name = dropped.filename().string();
    t.target = dropped.string();
  } else {
    if (f.FileTransferParts.listIndex() < 0) return;
    name = f.FileTransferParts.text();
    t.target = (text::nativePath(folder) / name).string();
  }
  const bool endsInSeparator = !folder.empty() && (folder.back() == '\\' || folder.back() == '/');
  t.newPath = text::nativePath(folder + (endsInSeparator ? "" : "\\") + "New-" + name).string();
  t.filePattern = "*.obj";
  showFiles(program);
  t.step = Step::AwaitObj;
  ui::msgBox(program.services, "Browse to the modified obj file and click it.", "Next...");
}

void TransferDirChange(Program& program) {
  auto& f = program.opening;
  std::filesystem::path folder = text::nativePath(f.DirTransferParts.text());
  ui::showFolder(f.DirTransferParts, folder);
  showFiles(program);
  // newcr2.doc goes wherever the folder list leaves the program.
  program.currentDir = folder;
}

void TransferFileClick(Program& program) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  if (t.step != Step::AwaitObj || f.FileTransferParts.listIndex() < 0) return;
  const std::string chosen = f.FileTransferParts.text();
  // Any other pick keeps the tool waiting.
  if (Right(chosen, 3) != "obj") return;
  guarded(program, [&] {
    // The target is read from the start before the name is asked for.
    { text::LineReader target(text::nativePath(t.target)); }
    const std::string folder = withoutTrailingSeparator(f.DirTransferParts.text());
    const std::size_t cut = folder.find_last_of("\\/");
    const std::string last = cut == std::string::npos ? folder : folder.substr(cut + 1);
    t.objLine = "figureResFile:Runtime:Geometries:" + last + ":" + chosen;
    t.filePattern = "*.cr2";
    showFiles(program);
    t.step = Step::AwaitName;
    ui::msgBox(program.services, "Enter a name for the new body part.", "Next...");
    f.TextMorphRename.setText("");
    f.TextMorphRename.setVisible(true);
    f.TextMorphRename.setFocus();
  });
}

bool TransferNameKey(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  if (t.step != Step::AwaitName) return false;
  if (args.keyCode == 27) {
    backToRest(program);
  } else if (args.keyCode == 13) {
    t.newName = f.TextMorphRename.text();
    f.TextMorphRename.setText("");
    f.TextMorphRename.setVisible(false);
    t.step = Step::PartCut;
    guarded(program, [&program] { afterName(program); });
  }
  return true;
}

void TransferChainDblClick(Program& program) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  const int index = f.ListTransferChains.listIndex();
  if (t.step != Step::AwaitChain || index < 0 || index >= static_cast<int>(t.chainHeads.size())) return;
  guarded(program, [&] {
    text::LineReader in(text::nativePath(t.target));
    Pacer pacer(program);
    std::string line;
    int seen = -1;
    for (;;) {
      line = readLine(in);
      pacer.tick();
      if (contains(line, "inkyChain") && ++seen == index) break;
    }
    std::vector<std::string> rows;
    for (const std::string& l : readChainBlock(in, line)) rows.push_back(stripped(l));
    rows.emplace_back();
    f.ListTransferChains.setItems(rows);
    t.chain = index;
    t.step = Step::AwaitPlace;
    ui::msgBox(program.services, "Click where you want to put your part in the IK chain.", "Next...");
  });
}

void TransferChainClick(Program& program) {
  auto& f = program.opening;
  auto& t = f.Transfer;
  const int row = f.ListTransferChains.listIndex();
  if (t.step != Step::AwaitPlace || row < 0) return;
  guarded(program, [&] {
    // The new link goes in front of the link that was clicked; a click above the
    // links puts it first, one below them last.
    std::vector<std::string> links;
    std::vector<std::string> weights;
    int at = 0;
    for (int i = 0; i < f.ListTransferChains.listCount(); ++i) {
      const std::string& r = f.ListTransferChains.list(i);
      if (contains(r, "addLink")) {
        links.push_back(stripped(Mid(r, static_cast<long long>(InStr(r, "addLink")) + 7)));
        if (i < row) ++at;
      }
      if (contains(r, "linkWeight")) weights.push_back(weightText(r));
    }
    t.linkAt = at;
    // The new link's weight is the mean of the weights before and behind it; a new
    // last link takes the weight of the one before it, a new first link the one behind.
    const auto n = static_cast<int>(weights.size());
    double weight = 0;
    if (n > 0) {
      if (at > 0 && at < n)
        weight = (text::Val(weights[at - 1]) + text::Val(weights[at])) / 2;
      else
        weight = text::Val(weights[at > 0 ? n - 1 : 0]);
    }
    t.linkWeight = stripped(text::StrSingle(weight));
    f.ListTransferWeights.clear();
    int w = 0;
    for (int k = 0; k <= static_cast<int>(links.size()); ++k) {
      if (k == at) f.ListTransferWeights.addItem("Your Link\t" + t.linkWeight);
      if (k < static_cast<int>(links.size()))
        f.ListTransferWeights.addItem(links[k] + "\t" + (w < n ? weights[w++] : std::string()));
    }
    f.ListTransferWeights.setVisible(true);
    ui::msgBox(program.services,
               "Here are the link weights for this chain. The new one at the end may need to be manually modified, "
               "Tolvane has taken its best guess at what should be there.",
               "Note!");
    writeNewFigure(program);
  });
}

}  // namespace tolvane::morph
