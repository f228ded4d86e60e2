#include "library/master_cr2.h"

#include <algorithm>

#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/line_ending_repair.h"

namespace tolvane::library {

using text::contains;

namespace {

struct StockFigure {
  const char* source;  // below the library root
  const char* output;
};
const StockFigure kStock[] = {
    {"People\\P3 Nude Man.cr2", "P3MaleMasterCR2.cr2"},
    {"People\\P3 Nude Woman.cr2", "P3FemaleMasterCR2.cr2"},
    {"Clothing- male\\Tuxedo.cr2", "P4MaleMasterCR2.cr2"},
    {"Clothing-Female\\catsuit.cr2", "P4FemaleMasterCR2.cr2"},
    {"Zygote People\\Victoria.cr2", "VictoriaMasterCR2.cr2"},
};

// Reads raw lines until one holds `word`; false at the end of the file.
bool readUntil(text::LineReader& in, std::string& line, std::string_view word) {
  while (in.readRawLine(line))
    if (contains(line, word)) return true;
  return false;
}

// What a filter still waited for when the source ended: a cut or short figure.
struct EndsTooSoon {
  std::string missing;  // "before its "figure" line", ...
};

// Raw lines from a source that must hold more: its end is not a read past the end but
// a source that is cut short.
std::string readAwaiting(text::LineReader& in, const std::string& missing) {
  std::string line;
  if (!in.readRawLine(line)) throw EndsTooSoon{missing};
  return line;
}
std::string before(const std::string& word) { return "before its \"" + word + "\" line"; }

void showEndsTooSoon(Program& program, const std::string& source, const EndsTooSoon& e, const std::string& what) {
  ui::msgBox(program.services,
             source + " ends " + e.missing + ": the figure is cut short or is no figure. No " + what + " was written.",
             "Error!", ui::Buttons::OK, ui::Icon::Critical);
}

// The body of the master: the figure's lines up to its first material, then from the
// "displayMode USEPARENT" line four lines. Returns when the last line is written.
void copyMaster(text::LineReader& in, text::LineWriter& out, bool removeMorphs) {
  bool skipNext = false;
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) return;
    if (contains(line, "material")) break;
    if (removeMorphs && contains(line, "valueParm")) {
      if (!readUntil(in, line, "interpStyleLocked") || !in.readRawLine(line)) return;
      skipNext = true;
    }
    if (removeMorphs && contains(line, "targetGeom")) {
      bool found = false;
      while (!found && in.readRawLine(line)) found = contains(line, "twist") || contains(line, "material");
      if (!found) return;
      if (contains(line, "material")) break;
    }
    if (!skipNext) out.WriteLine(line);
    skipNext = false;
  }
  // The tail: a file that ends before it is cut short.
  do line = readAwaiting(in, before("displayMode USEPARENT"));
  while (!contains(line, "displayMode USEPARENT"));
  out.WriteLine(line);
  for (int i = 0; i < 3; ++i)
    out.WriteLine(readAwaiting(in, "within the three lines behind its \"displayMode USEPARENT\" line"));
}

}  // namespace

void MakeMasterCR2(Program& program, int number) {
  ui::Opening& f = program.opening;
  std::string source, output;
  if (number >= 1 && number <= 5) {
    f.MasterLibPath = program.posersFolder() + "Runtime\\libraries\\character\\";
    source = f.MasterLibPath + kStock[number - 1].source;
    output = kStock[number - 1].output;
  } else {
    f.MasterLibPath.clear();
    source = f.LabelFileNameForEditor.caption();
    output = text::Left(source, static_cast<long long>(text::InStr(source, ".")) - 1) + "Master.cr2";
  }
  if (number == 5) {
    std::string repaired = source;
    RepairLineEndings(program, repaired);
  }
  std::filesystem::path target = text::nativePath(f.MasterLibPath + output);
  program.setBusy(true);
  text::LineReader in(text::nativePath(source));
  if (text::fileExists(target)) {
    in.close();
    program.setBusy(false);
    ui::msgBox(program.services,
               "You already have a MasterCR2 file for this!  If you wish to make another, move the present one "
               "from this directory.",
               "Note!");
    return;
  }
  // The master is written whole under a scratch name and takes its own name at the end,
  // so a source that runs off its end leaves no half a master behind.
  text::StreamRewrite scratch(program.workFile("\\MasterCR2.tmp"), true);
  try {
    copyMaster(in, scratch.out(), number == 7);
    scratch.WriteLine("}");
    scratch.close();
    text::moveScratchInto(scratch.scratch(), target, false);
  } catch (const EndsTooSoon& e) {
    scratch.discard();
    in.close();
    program.setBusy(false);
    showEndsTooSoon(program, source, e, "Master CR2 file");
    return;
  } catch (...) {
    scratch.discard();
    program.setBusy(false);
    throw;
  }
  in.close();
  program.setBusy(false);
  ui::msgBox(program.services, "You have just created a Master CR2 file called " + output, "Note!");
}

namespace {

// The second pass of the null figure reads through the figure scanner, which passes
// over the lines without the keyword it waits for in bulk.
bool nextLine(text::FigureScanner& in, std::string& line) {
  std::string_view view;
  if (!in.rawLine(view)) return false;
  line.assign(view);
  return true;
}

void readAwaiting(text::FigureScanner& in, std::string& line, const std::string& word) {
  if (!nextLine(in, line)) throw EndsTooSoon{before(word)};
}

// A line with the colon fix, written without a copy of the line.
void writeColonFixed(text::LineWriter& out, std::string_view line) {
  std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) {
    out.WriteLine(line);
    return;
  }
  out.write(line.substr(0, colon + 1));
  out.WriteLine("1");
}

// Writes raw lines with the colon fix up to and including the first that holds `word`.
void copyThrough(text::FigureScanner& in, text::LineWriter& out, const std::string& word) {
  std::string line;
  do {
    readAwaiting(in, line, word);
    writeColonFixed(out, line);
  } while (!contains(line, word));
}

// Passes over raw lines up to and including the first that holds `word`.
void skipThrough(text::FigureScanner& in, std::string& line, const std::string& word) {
  text::Needles needles{word};
  do {
    in.skipLines(needles, false, false);
    readAwaiting(in, line, word);
  } while (!contains(line, word));
}

// The first part: up to the second figureResFile line, without the storage and
// geometry handler lines and the first figureResFile line.
void writeDeclarations(text::LineReader& in, text::LineWriter& out) {
  // A line without an "O", "G", "R" or colon holds none of the words and needs no fix:
  // most lines of a figure, the deltas above all.
  bool mark[256] = {};
  for (unsigned char c : std::string_view("OGR:")) mark[c] = true;
  int figureRes = 0;
  std::string line;
  while (in.readRawLine(line)) {
    if (std::none_of(line.begin(), line.end(), [&mark](char c) { return mark[static_cast<unsigned char>(c)]; })) {
      out.WriteLine(line);
      continue;
    }
    if (contains(line, "figureResFile") && ++figureRes == 2) return;
    if (contains(line, "storageOffset") || contains(line, "geomHandlerGeom") || contains(line, "figureResFile"))
      continue;
    writeColonFixed(out, line);
  }
}

// The figure section's head, warning when the figure is not "Figure 1".
void writeFigureHead(Program& program, text::FigureScanner& in, text::LineWriter& out) {
  std::string line;
  do {
    readAwaiting(in, line, "displayOn");
    if (text::Left(line, 5) == "\tname" && line != "\tname    Figure 1")
      ui::msgBox(program.services,
                 "To use a null loader, your figure must be \"Figure 1\", your figure is called \"" +
                     text::Mid(line, 10) + "\",be sure to do a find/replace in the Editor to fix this.",
                 "Note!", ui::Buttons::OK, ui::Icon::Exclamation);
    writeColonFixed(out, line);
  } while (!contains(line, "displayOn"));
}

// From the figure section on: its head, the hierarchy behind allowsBending up to the
// first material line, then everything behind the next displayMode line.
void writeFigureSection(Program& program, text::FigureScanner& in, text::LineWriter& out) {
  text::Needles figure{"figure"};
  std::string_view field;
  for (;;) {
    in.skipLines(figure, true, false);
    if (!in.field(field)) throw EndsTooSoon{before("figure")};
    if (field == "figure") break;
  }
  out.WriteLine("figure");
  writeFigureHead(program, in, out);
  std::string line;
  skipThrough(in, line, "allowsBending");
  writeColonFixed(out, line);
  copyThrough(in, out, "aterial");
  skipThrough(in, line, "displayMode");
  std::string_view rest;
  while (in.rawLine(rest)) writeColonFixed(out, rest);
}

}  // namespace

void CreateNullFigure(Program& program) {
  std::string path = program.opening.LabelFileNameForEditor.caption();
  if (text::PlainKind(path) != "cr2") {
    ui::msgBox(program.services, "CR2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  std::string output = program.posersFolder() + "NullFig.cr2";
  std::filesystem::path source = text::nativePath(path);
  text::StreamRewrite scratch(program.workFile("\\NullFig.tmp"), true);
  try {
    {
      text::LineReader in(source);
      writeDeclarations(in, scratch.out());
    }
    text::FigureScanner in(source);
    writeFigureSection(program, in, scratch.out());
    in.close();
    scratch.replace(text::nativePath(output));
  } catch (const EndsTooSoon& e) {
    scratch.discard();
    showEndsTooSoon(program, path, e, "null figure");
    return;
  } catch (...) {
    scratch.discard();
    throw;
  }
  program.setBusy(false);
  ui::msgBox(program.services, "Null Figure CR2 saved as " + output, "Note");
}

}  // namespace tolvane::library
