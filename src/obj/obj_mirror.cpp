// The mirror: the signs of the vertex coordinates flipped as text, per axis, written
// through Mirror.txt and MirrorOBJ.txt, saved where the user says and loaded again.
#include <string>
#include <vector>

#include "obj/obj_load.h"
#include "obj/obj_tools.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/record_file.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

using text::InStr;
using text::Left;
using text::Mid;

namespace {

struct Axes {
  bool x = false, y = false, z = false;
};

// One vertex record rewritten as the answers say. The texts keep the blank behind
// them: x is the coordinates up to and including the first blank, y the rest up to and
// including its first blank, z what follows.
std::string mirroredLine(std::string_view record, const Axes& axes) {
  std::string line = text::Trim(record);
  std::string coords = Mid(line, 3);
  std::string x = Left(coords, static_cast<long long>(InStr(coords, " ")));
  std::string rest = Mid(coords, static_cast<long long>(x.size()) + 1);
  std::string y = Left(rest, static_cast<long long>(InStr(rest, " ")));
  std::string z = Mid(rest, static_cast<long long>(y.size()) + 1);
  if (axes.x) {
    x = text::hasPrefix(x, "-") ? "v " + Mid(x, 2) : "v -" + x;
    line = x + rest;
  }
  if (axes.y) {
    if (text::hasPrefix(y, "-")) {
      // The old coordinates stay at the head, and the new y and the old y and z follow:
      // a negative y garbles the line, as the question warns.
      y = Mid(y, 2);
      line = coords + y + rest;
    } else {
      y = "-" + y;
      line = x + y + z;
    }
  }
  if (axes.z) {
    z = text::hasPrefix(z, "-") ? Mid(z, 2) : "-" + z;
    line = x + y + z;
  }
  return line;
}

}  // namespace

void LabelMirrorClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  ui::Services& s = program.services;
  Axes axes;
  axes.x = ui::msgBox(s, "Mirror X translations?", "X", ui::Buttons::YesNo, ui::Icon::Question) == ui::Answer::Yes;
  axes.y = ui::msgBox(s, "Mirror Y translations? This may have unexpected results, be sure to back up.", "Y",
                      ui::Buttons::YesNo, ui::Icon::Question) == ui::Answer::Yes;
  axes.z = ui::msgBox(s, "Mirror Z translations? This may have unexpected results also...", "Z",
                      ui::Buttons::YesNo, ui::Icon::Question) == ui::Answer::Yes;

  std::filesystem::path mirror = program.workFile("Mirror.txt");
  text::deleteIgnoringErrors(mirror);
  {
    text::LineWriter out(mirror, text::LineWriter::Mode::Append);
    text::RecordFile vertices(program.workFile("VArray.txt"), kVertexRecord);
    for (std::string_view record; vertices.nextView(record);) out.WriteLine(mirroredLine(record, axes));
    vertices.close();
    out.close();
  }

  std::string path = f.captionPath();
  std::filesystem::path result = program.workFile("MirrorOBJ.txt");
  text::deleteIgnoringErrors(result);
  {
    text::LineWriter out(result, text::LineWriter::Mode::Append);
    text::FigureScanner in(filePath(program, path));
    text::FigureScanner flipped(mirror);
    std::string_view raw, next;
    std::string line;
    while (in.rawLine(raw)) {
      line.assign(raw);
      if (!line.empty() && line[0] == ' ') line.erase(0, 1);
      if (text::hasPrefix(line, "\tv")) line = "v " + Mid(line, 3);
      if (text::hasPrefix(line, "v ")) {
        if (!flipped.rawLine(next)) text::raiseError(text::kInputPastEndOfFile, mirror.string());
        out.WriteLine(next);
      } else {
        out.WriteLine(line);
      }
    }
    out.close();
  }

  ui::msgBox(s,
             path + " has been mirrored. Remember to delete the RSR file, or changes will not take effect. You may "
                    "want to rename groups that have Left and Right in their names.  The mesh will now be displayed, "
                    "after saving.",
             "Note!");
  auto chosen = ui::saveDialog(s, program.currentDir, "");
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  text::moveScratchInto(result, filePath(program, *chosen), true);

  f.setCaption(ui::kObjViewerCaption + *chosen);
  deleteToolScratch(program);
  // The form starts afresh, but the colour lists outlive a reload, so each group keeps
  // its colour.
  std::vector<std::string> groupColours = f.ListGroupColors.items(), materialColours = f.ListMATColors.items();
  f.reset();
  f.ListGroupColors.setItems(std::move(groupColours));
  f.ListMATColors.setItems(std::move(materialColours));
  f.reload = true;
  LoadObj(program);
  f.reload = false;
}

}  // namespace tolvane::obj
