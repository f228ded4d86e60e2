#include "erc/emc_listing.h"

#include "erc/erc_common.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::erc {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Mid;

namespace {

constexpr const char* kChangeRatio = "\\ChangeRatio.txt";

// Reads the file's lines, counting each; the end of the file ends the listing quietly.
class CountingReader {
 public:
  explicit CountingReader(const std::string& path) : m_in(text::nativePath(path)) {}
  bool raw(std::string& line) { return count(m_in.readRawLine(line)); }
  bool field(std::string& line) { return count(m_in.readField(line)); }
  long long count() const { return m_count; }

 private:
  bool count(bool read) {
    if (read) ++m_count;
    return read;
  }
  text::LineReader m_in;
  long long m_count = 0;
};

void setRatioEntry(EmcListing& listing, const std::string& ratioLine, long long lineNumber) {
  std::size_t index = listing.lines.size();
  if (listing.ratioTable.size() <= index) listing.ratioTable.resize(index + 1);
  listing.ratioTable[index] = ratioLine + "#" + text::StrInteger(lineNumber);
}

// The four lines behind a valueOpDeltaAdd line, as a seven-line group under `slave`;
// the ratio line becomes the current line.
bool addGroup(CountingReader& in, EmcListing& listing, const std::string& slave, std::string& ratio) {
  std::string figure, part, dial;
  if (!in.raw(figure) || !in.raw(part) || !in.raw(dial) || !in.raw(ratio)) return false;
  for (const std::string& l :
       {std::string(), std::string("\tEMC Channel"), "\tSlave: " + slave, "\tMaster: " + Mid(dial, 4),
        "\tFigure: " + Mid(figure, 4), "\tMaster Part: " + Mid(part, 5), "\t" + Mid(ratio, 4)})
    listing.lines.push_back(l);
  setRatioEntry(listing, ratio, in.count());
  return true;
}

}  // namespace

EmcListing listEmcs(const std::string& path) {
  EmcListing listing;
  CountingReader in(path);
  std::string line;
  do {
    if (!in.raw(line)) return listing;
  } while (!hasPrefix(line, "actor"));
  std::string slave;
  for (;;) {
    if (contains(line, "targetGeom")) {
      std::string brace, nameLine;
      if (!in.field(brace) || !in.raw(nameLine)) return listing;
      slave = Mid(nameLine, static_cast<long long>(InStr(nameLine, "name")) + 5);
      do {
        if (!in.raw(line)) return listing;
      } while (!contains(line, "interpStyleLocked"));
      if (!in.raw(line)) return listing;
      if (!contains(line, "valueOpDeltaAdd")) {
        listing.lines.emplace_back();
        listing.lines.push_back("\t" + slave);
      }
    } else if (!in.raw(line)) {
      return listing;
    }
    if (contains(line, "valueOpDeltaAdd") && !addGroup(in, listing, slave, line)) return listing;
  }
}

void PictureChangeRatioClick(Program& program) {
  program.opening.OptionChannelRename.setVisible(false);
  program.opening.OptionBodyPartRename.setVisible(false);
  auto& f = program.formListEMCs;
  f.LabelTitle.setCaption(program.opening.LabelFileNameForEditor.caption());
  f.setVisible(true);
  FormListEMCsLoad(program);
}

void PictureChangeRatioRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to change the control ratio for an EMC morph.", "Information");
}

void FormListEMCsLoad(Program& program) {
  auto& f = program.formListEMCs;
  f.Text1.setVisible(false);
  f.Label1.setVisible(false);
  f.ListEMCs.clear();
  f.ListEMCs.setForeColor(ui::kBlack);
  f.RatioTable.clear();
  EmcListing listing = listEmcs(f.LabelTitle.caption());
  f.RatioTable = std::move(listing.ratioTable);
  if (listing.lines.empty()) {
    f.ListEMCs.setForeColor(ui::kRed);
    listing.lines.push_back("NO CHANNELS IN CR2");
  }
  f.ListEMCs.setItems(std::move(listing.lines));
}

void ListEMCsClick(Program& program) {
  auto& f = program.formListEMCs;
  if (f.ListEMCs.listIndex() < 0) {
    ui::msgBox(program.services, "Click on a ratio to be changed.", "Note!");
    return;
  }
  std::string line = f.ListEMCs.text();
  if (hasPrefix(line, "\tdelta")) {
    f.Label1.setVisible(true);
    f.Text1.setVisible(true);
    f.Text1.setText(Mid(line, 16));
    f.Text1.setFocus();
    return;
  }
  ui::msgBox(program.services, "Click on the line that lists the ratio you want to change.", "Note!");
}

namespace {

// The file's line number of the chosen ratio line, and the line as it was listed.
long long listedLine(const ui::FormListEMCs& f, std::string& listedText) {
  std::size_t entry = static_cast<std::size_t>(f.ListEMCs.listIndex()) + 1;
  const std::string* text = entry < f.RatioTable.size() ? &f.RatioTable[entry] : nullptr;
  std::size_t hash = text != nullptr ? text->rfind('#') : std::string::npos;
  if (hash == std::string::npos) text::raiseError(text::kSubscriptOutOfRange, f.LabelTitle.caption());
  listedText = text->substr(0, hash);
  return static_cast<long long>(text::Val(text->substr(hash + 1)));
}

// Copies the file with line `number` replaced by the new ratio. The line must still be
// the one that was listed, or a ratio line: a ratio saved from this form changes only
// that line, so the list (which is not rebuilt) still addresses it, while a file whose
// lines moved since is left alone.
void writeNewRatio(Program& program, const std::string& path, long long number, const std::string& listedText,
                   const std::string& value) {
  text::StreamRewrite scratch(program.workFile(kChangeRatio), true);
  try {
    text::FigureScanner in(text::nativePath(path));
    Pacer pacer(program);
    copyLines(in, scratch.out(), number - 1, pacer);
    std::string_view old = in.ReadRawLine();
    if (old != listedText && !contains(old, "deltaAddDelta"))
      throw text::RuntimeError(text::kInvalidProcedureCall,
                               "The file changed since it was listed: line " + std::to_string(number) +
                                   " is no longer the ratio line. Nothing was changed.",
                               path);
    scratch.WriteLine(std::string(kThreeTabs) + "deltaAddDelta " + value);
    copyRest(in, scratch.out(), pacer);
    scratch.close();
  } catch (...) {
    scratch.discard();
    throw;
  }
}

}  // namespace

void Text1Enter(Program& program) {
  auto& f = program.formListEMCs;
  if (!contains(f.ListEMCs.text(), "delta")) {
    ui::msgBox(program.services, "Click on a DELTA line to change the ratio.", "Error!");
    return;
  }
  const std::string value = f.Text1.text();
  const std::string path = f.LabelTitle.caption();
  program.setBusy(true);
  std::string listedText;
  long long number = listedLine(f, listedText);
  writeNewRatio(program, path, number, listedText, value);
  auto answer = ui::msgBox(program.services, "Control Ratio changed to " + value + ".  Save changes?",
                           "Note!", ui::Buttons::YesNo);
  if (answer != ui::Answer::Yes) {
    f.Text1.setText("");
    program.setBusy(false);
    return;
  }
  auto chosen = ui::saveDialog(program.services, program.currentDir, path);
  if (chosen && !chosen->empty()) {
    program.setCurrentDirFromFile(*chosen);
    // Only the listed file itself takes the new text; any other name leaves the change
    // in the scratch file.
    if (text::nativePath(*chosen) == text::nativePath(path))
      text::replaceWithScratch(text::nativePath(path), program.workFile(kChangeRatio));
  }
  f.Text1.setText("");
  f.Text1.setVisible(false);
  f.Label1.setVisible(false);
  program.setBusy(false);
}

}  // namespace tolvane::erc
