#include "obj/mash.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

constexpr const char* kMarkerLine =
    "# Processed by Tolvane: lines the figure application does not need removed";

// The OBJ of the workspace's OBJ page.
std::string workspaceObj(const Program& program) {
  const std::string& label = program.opening.LabelOBJFileName.caption();
  return label.empty() ? program.opening.OpenFilePath : label;
}

// Every line after the first that the mode keeps: in OBJ mode all but the normals, in
// morph mode the vertices alone. A line behind a blank or a TAB is not recognised.
void copyKeptLines(text::LineReader& in, text::LineWriter& out, bool morph) {
  std::string line;
  while (in.readRawLine(line)) {
    bool keep = morph ? text::hasPrefix(line, "v ") : !text::hasPrefix(line, "vn");
    if (keep) out.WriteLine(line);
  }
}

void Mash(Program& program, bool morph) {
  std::filesystem::path scratch = program.workFile("tempobj.txt");
  text::deleteIgnoringErrors(scratch);
  text::LineWriter out(scratch, text::LineWriter::Mode::Append);
  std::string path = workspaceObj(program);
  std::filesystem::path file = filePath(program, path);
  std::unique_ptr<text::LineReader> in;
  try {
    in = std::make_unique<text::LineReader>(file);
  } catch (const text::RuntimeError&) {
    out.close();
    text::deleteIgnoringErrors(scratch);
    return;  // a missing or locked file ends the tool
  }
  std::string first;
  in->readRawLine(first);
  if (text::contains(first, kProcessedMarker)) {
    ui::msgBox(program.services, "File already mashed!", "Note!", ui::Buttons::OK);
    in->close();
    out.close();
    text::deleteIgnoringErrors(scratch);
    return;
  }
  std::uint64_t oldSize = text::fileLength(file);
  program.setBusy(true);
  out.WriteLine(kMarkerLine);
  out.WriteLine(first);
  copyKeptLines(*in, out, morph);
  in->close();
  out.close();
  program.setBusy(false);
  text::renameFile(file, filePath(program, mashBackupName(path)));
  text::moveScratchInto(scratch, file, false);
  std::uint64_t newSize = text::fileLength(file);
  ui::msgBox(program.services,
             "                  Converted!\rFile was" + text::StrDouble(static_cast<double>(oldSize)) +
                 " bytes, now it is" + text::StrDouble(static_cast<double>(newSize)) +
                 " bytes. A backup has been created with the extension BAK.",
             "Note!", ui::Buttons::OK);
}

}  // namespace

std::string mashBackupName(const std::string& path) {
  return text::Left(path, static_cast<long long>(text::InStr(path, "."))) + "bak";
}

void PictureMashClick(Program& program) {
  ui::Opening& o = program.opening;
  if (!o.OptionMashOBJ.visible()) {
    o.SliderOBJScale.setValue(0);
    o.TextOBJScale.setVisible(false);
    for (ui::Control* c :
         std::initializer_list<ui::Control*>{&o.FrameMash, &o.OptionMashOBJ, &o.OptionMashMorph})
      c->setVisible(true);
    return;
  }
  Mash(program, o.OptionMashMorph.value());
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&o.FrameMash, &o.OptionMashOBJ, &o.OptionMashMorph})
    c->setVisible(false);
}

void PictureMashRightClick(Program& program) {
  ui::msgBox(
      program.services,
      "Click this button to condense the OBJ file by removing the VN lines, or a morph by removing all but "
      "the V lines.  Click this icon again when you have chosen.",
      "Information", ui::Buttons::OK, ui::Icon::Information);
}

}  // namespace tolvane::obj
