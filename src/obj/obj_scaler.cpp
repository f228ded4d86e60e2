#include "obj/obj_scaler.h"

#include <algorithm>
#include <vector>

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

using text::hasPrefix;

std::string workspaceObj(const Program& program) {
  const std::string& label = program.opening.LabelOBJFileName.caption();
  return label.empty() ? program.opening.OpenFilePath : label;
}

std::string_view withoutLeadingBlanks(std::string_view t) {
  while (!t.empty() && t.front() == ' ') t.remove_prefix(1);
  return t;
}

// Text up to the next blank (none is run-time error 5, as a negative length is), and the
// rest behind it with its leading blanks gone.
std::string_view cutField(std::string_view& rest) {
  std::size_t blank = rest.find(' ');
  if (blank == std::string_view::npos) text::raiseError(text::kInvalidProcedureCall);
  std::string_view field = rest.substr(0, blank);
  rest = withoutLeadingBlanks(rest.substr(blank + 1));
  return field;
}

// Mid from a 1-based start, as a view.
std::string_view from(std::string_view t, std::size_t start) {
  return start - 1 < t.size() ? t.substr(start - 1) : std::string_view();
}

void hideScaleControls(ui::Opening& o) {
  o.SliderOBJScale.setValue(0);
  o.SliderOBJScale.setVisible(false);
  o.TextOBJScale.setText("0");
  o.TextOBJScale.setVisible(false);
}

// Every OBJ of the current folder, by name.
std::vector<std::filesystem::path> folderObjs(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    if (it->is_regular_file(ec) && text::LCase(text::Right(it->path().filename().string(), 4)) == ".obj")
      files.push_back(it->path());
  std::sort(files.begin(), files.end());
  return files;
}

void ObjScalerBatch(Program& program, double scale, const std::string& scaleText) {
  ui::Opening& o = program.opening;
  o.ListOBJBatch.clear();
  for (const std::filesystem::path& file : folderObjs(program.currentDir)) o.ListOBJBatch.addItem(file.string());
  for (const std::string& file : o.ListOBJBatch.items()) {
    scaleFile(file, program.workFile("obj.txt"), scale);
    hideScaleControls(o);
  }
  program.setBusy(false);
  ui::msgBox(program.services, "All OBJ's rescaled to " + scaleText + " times original.", "Finished");
  hideScaleControls(o);
  o.CheckOBJBatch.setValue(false);
  o.CheckOBJBatch.setVisible(false);
}

}  // namespace

std::string scaledField(std::string_view textIn, double scale) {
  double v = text::Val(textIn);
  double result = scale > 0 ? v * scale : v < 0 ? (v / scale) * -1 : v / (scale * -1);
  std::string t = text::StrDouble(result);
  if (t == " 0") t = " 0.000000";
  if (hasPrefix(t, " .")) t.replace(0, 1, " 0");
  if (hasPrefix(t, " -.")) t = "-0" + text::LTrim(text::Mid(t, 3));
  if (hasPrefix(t, "-.")) t.replace(0, 1, "-0");
  if (hasPrefix(t, " ")) t.erase(0, 1);
  // A whole number's text gets its point before the padding, so 1 becomes 1.000000000.
  if (v != 0 && t.find_first_of(".E") == std::string::npos) t += '.';
  std::size_t width = v > 0 ? 11 : v < 0 ? 12 : 0;
  if (t.size() < width) t.append(width - t.size(), '0');
  return t;
}

std::string scaledVertexLine(std::string_view line, double scale) {
  std::string_view t = line;
  if (text::charAt(t, 3) != '-') t = from(t, 3);
  bool flag = false;
  if (text::charAt(t, 3) == '-') {
    flag = text::charAt(t, 4) == '.';
    t = from(t, 3);
  }
  t = withoutLeadingBlanks(t);
  std::string_view x = cutField(t);
  std::string flagged;
  if (flag) {
    flagged = text::Left("-0." + std::string(from(x, 3)), 10);
    x = flagged;
  }
  std::string_view y = cutField(t);
  std::string xs = scaledField(x, scale), ys = scaledField(y, scale), zs = scaledField(t, scale);
  if (xs.size() < 3) text::raiseError(text::kInvalidProcedureCall);
  std::string out = text::Val(x) > 0 ? "v  " : "v ";
  out.append(xs, 0, xs.size() - 3).append(" ").append(ys).append(" ").append(zs);
  return out;
}

void scaleFile(const std::filesystem::path& file, const std::filesystem::path& scratch, double scale) {
  text::deleteIgnoringErrors(scratch);
  {
    text::LineWriter out(scratch, text::LineWriter::Mode::Append);
    text::LineReader in(file);
    std::string line;
    while (in.readField(line)) {
      if (hasPrefix(line, "v ") || hasPrefix(line, "\tv"))
        out.WriteLine(scaledVertexLine(line, scale));
      else if (!hasPrefix(line, "vn"))
        out.WriteLine(line);
    }
    in.close();
    out.close();
  }
  text::moveScratchInto(scratch, file, true);
}

void PictureScaleObjClick(Program& program) {
  ui::Opening& o = program.opening;
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&o.SliderOBJScale, &o.TextOBJScale, &o.CheckOBJBatch})
    c->setVisible(true);
}

void PictureScaleObjRightClick(Program& program) {
  ui::msgBox(program.services, "Click this button to scale the OBJ.", "Information", ui::Buttons::OK,
             ui::Icon::Information);
}

void SliderOBJScaleChange(Program& program) {
  program.opening.TextOBJScale.setText(std::to_string(program.opening.SliderOBJScale.value()));
}

void ObjScaler(Program& program) {
  ui::Opening& o = program.opening;
  if (text::contains(o.TextOBJScale.text(), ".")) {
    ui::msgBox(program.services, "Whole numbers only!", "Error!");
    o.TextOBJScale.setText("0");
  }
  std::string scaleText = o.TextOBJScale.text();
  double scale = text::Val(scaleText);
  if (scale == 0) {
    ui::msgBox(program.services, "No scaling amount entered!", "Error!");
    hideScaleControls(o);
    return;
  }
  program.setBusy(true);
  if (o.CheckOBJBatch.value()) return ObjScalerBatch(program, scale, scaleText);
  std::string path = workspaceObj(program);
  scaleFile(filePath(program, path), program.workFile("obj.txt"), scale);
  hideScaleControls(o);
  program.setBusy(false);
  ui::msgBox(program.services, path + " object rescaled to " + scaleText + " times original.", "Finished");
}

}  // namespace tolvane::obj
