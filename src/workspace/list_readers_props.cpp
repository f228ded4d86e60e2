// The geometry and material readers: the main OBJ and the props' geometry files
// (ListPropGeometry, ListPropGeometryPropFile) and the material list with its two
// colour lists and swatches (ListFileMaterials), over the figure-text library's scans.
#include <algorithm>
#include <cmath>
#include <exception>

#include "text/figure_scan.h"
#include "text/list_scans.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "program/program.h"

namespace tolvane {

using text::contains;
using text::hasPrefix;

namespace {

void showObjExtract(ui::Opening& form) {
  form.PictureOBJExtract.setVisible(true);
  form.PictureOBJView.setTop(412);
}

// Changes into the main geometry's folder, one colon-separated folder at a time (a
// folder that does not exist stops the command), and names the OBJ in LabelOBJFileName.
void enterGeometryFolder(Program& program, const std::string& root) {
  ui::Opening& form = program.opening;
  std::string rest = form.TextMainOBJ.text();
  std::filesystem::path folder = text::nativePath(root).lexically_normal();
  for (std::size_t colon = rest.find(':'); colon != std::string::npos; colon = rest.find(':')) {
    folder = text::resolveCaseInsensitive(folder / rest.substr(0, colon));
    rest.erase(0, colon + 1);
    std::error_code ec;
    if (!std::filesystem::is_directory(folder, ec)) text::raiseError(text::kPathNotFound, folder.string());
    program.currentDir = folder;
  }
  form.LabelOBJFileName.setCaption((folder / rest).string());
}

}  // namespace

void showGeometry(Program& program, const text::GeometryScan& scan, std::exception_ptr fault,
                  const std::string& root) {
  ui::Opening& form = program.opening;
  if (scan.customGeometry) showObjExtract(form);
  if (scan.mainFound) {
    form.TextMainOBJ.setText(scan.mainObj);
    enterGeometryFolder(program, root);
    if (scan.propCustomGeometry) showObjExtract(form);
  }
  if (scan.laterCustomGeometry) showObjExtract(form);
  if (fault) std::rethrow_exception(fault);
  appendEntries(form.ListPropObj, scan.props);
  if (form.ListPropObj.listCount() == 0) {
    form.ListPropObj.setForeColor(ui::kRed);
    form.ListPropObj.addItem("No Props in CR2");
  }
}

std::string geometryRoot(const Program& program, bool propFile) {
  // The two readers join the folder so; the prop file's doubled separator is harmless.
  return program.posersFolder() + (propFile ? "\\Runtime\\Geometries" : "Runtime\\Geometries");
}

namespace {
void listGeometry(Program& program, const std::string& path, bool propFile) {
  text::GeometryScan scan;
  std::exception_ptr fault;
  try {
    text::FigureScanner in(filePath(program, path));
    text::scanGeometry(in, propFile, program.opening.ListPropObj.items(), scan);
  } catch (const text::RuntimeError&) {
    fault = std::current_exception();
  }
  showGeometry(program, scan, fault, geometryRoot(program, propFile));
}
}  // namespace

void ListPropGeometry(Program& program, const std::string& path) { listGeometry(program, path, false); }

void ListPropGeometryPropFile(Program& program, const std::string& path) { listGeometry(program, path, true); }

unsigned swatchColour(const std::string& entry) {
  // First number up to the first blank, the next ones from two characters behind a blank.
  std::size_t b1 = entry.find(' ');
  std::string red = entry.substr(0, b1);
  std::string rest =
      b1 == std::string::npos ? std::string() : text::Mid(entry, static_cast<long long>(b1) + 3);
  std::size_t b2 = rest.find(' ');
  std::string green = rest.substr(0, b2);
  std::string blue =
      b2 == std::string::npos ? std::string() : text::Mid(rest, static_cast<long long>(b2) + 3);
  auto channel = [](const std::string& text) {
    double v = std::nearbyint(text::Val(text));
    return static_cast<unsigned>(std::clamp(v, 0.0, 255.0));
  };
  return channel(red) | channel(green) << 8 | channel(blue) << 16;
}

void showMaterials(Program& program, text::MaterialScan scan) {
  ui::Opening& form = program.opening;
  appendEntries(form.ListMaterials, std::move(scan.names));
  appendEntries(form.ListMATColors, std::move(scan.colours));
  appendEntries(form.ListMatHiLite, std::move(scan.hiLites));
  if (form.ListMATColors.listCount() > 0)
    form.PictureMatColor.setBackColor(swatchColour(form.ListMATColors.list(0)));
  if (form.ListMatHiLite.listCount() > 0)
    form.PictureMatHiLite.setBackColor(swatchColour(form.ListMatHiLite.list(0)));
}

void ListFileMaterials(Program& program, const std::string& path) {
  text::FigureScanner in(filePath(program, path));
  showMaterials(program, text::scanMaterials(in, text::FileKind(path)));
}

void ListMaterialsClick(Program& program) {
  ui::Opening& form = program.opening;
  int i = form.ListMaterials.listIndex();
  if (i < 0) return;
  if (i < form.ListMATColors.listCount())
    form.PictureMatColor.setBackColor(swatchColour(form.ListMATColors.list(i)));
  if (i < form.ListMatHiLite.listCount())
    form.PictureMatHiLite.setBackColor(swatchColour(form.ListMatHiLite.list(i)));
}

}  // namespace tolvane
