// The geometry and material readers: the main OBJ and the props' geometry files
// (ListPropGeometry, ListPropGeometryPropFile) and the material list with its two
// colour lists and swatches (ListFileMaterials).
#include <algorithm>
#include <cmath>

#include "core/figure_scan.h"
#include "core/figure_text.h"
#include "core/list_readers.h"
#include "core/run_time_number.h"
#include "core/runtime_error.h"
#include "program/program.h"

namespace tolvane {

using core::contains;
using core::hasPrefix;

namespace {

void showObjExtract(ui::Opening& form) {
  form.PictureOBJExtract.setVisible(true);
  form.PictureOBJView.setTop(412);
}

// TextMainOBJ from a geometry line: the text behind "Geometries:", or from character
// 11 when the word is missing.
std::string behindGeometries(std::string_view field) {
  return core::Mid(field, static_cast<long long>(core::InStr(field, "Geometries:")) + 11);
}

// Changes into the main geometry's folder, one colon-separated folder at a time (a
// folder that does not exist stops the command), and names the OBJ in LabelOBJFileName.
void enterGeometryFolder(Program& program, const std::string& root) {
  ui::Opening& form = program.opening;
  std::string rest = form.TextMainOBJ.text();
  std::filesystem::path folder = core::nativePath(root).lexically_normal();
  for (std::size_t colon = rest.find(':'); colon != std::string::npos; colon = rest.find(':')) {
    folder = core::resolveCaseInsensitive(folder / rest.substr(0, colon));
    rest.erase(0, colon + 1);
    std::error_code ec;
    if (!std::filesystem::is_directory(folder, ec)) core::raiseError(core::kPathNotFound, folder.string());
    program.currentDir = folder;
  }
  form.LabelOBJFileName.setCaption((folder / rest).string());
}

// The props' geometry files, from the reader's position to the end of the file.
void listProps(Program& program, core::FigureScanner& in) {
  ui::Opening& form = program.opening;
  std::vector<std::string> values;
  core::Needles props{"prop "};
  std::string_view view;
  std::string field;
  bool pending = false;  // `field` is still to be examined
  for (;;) {
    if (!pending) {
      in.skipLines(props, true, false);
      if (!in.field(view)) break;
      field.assign(view);
    }
    pending = false;
    if (!hasPrefix(field, "prop ")) continue;
    std::string name = core::Mid(field, 6);
    if (contains(in.ReadField(), "geomCustom")) showObjExtract(form);
    field.assign(in.ReadField());
    if (contains(field, "geomCustom")) showObjExtract(form);
    if (contains(field, "name")) {
      pending = true;  // a definition: look at this field as it stands
      continue;
    }
    field.assign(in.ReadField());
    if (contains(field, "geomCustom")) showObjExtract(form);
    std::size_t at = core::InStr(field, "Geometries:");
    std::string value =
        at > 0 ? core::Mid(field, static_cast<long long>(at) + 11) : name + " Custom Geometry in CR2";
    if (std::find(values.begin(), values.end(), value) != values.end() ||
        form.ListPropObj.indexOf(value) >= 0) {
      field.assign(in.ReadField());
      pending = true;
      continue;
    }
    values.push_back(value);
  }
  appendEntries(form.ListPropObj, std::move(values));
  if (form.ListPropObj.listCount() == 0) {
    form.ListPropObj.setForeColor(ui::kRed);
    form.ListPropObj.addItem("No Props in CR2");
  }
}

}  // namespace

void ListPropGeometry(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  core::FigureScanner in(filePath(program, path));
  yieldWhileReading(program, in);
  core::Needles keys{"figure", "geomCustom"};
  // A pose may have no figure section at all: its last field then stands for the line.
  std::string field;
  std::string_view view;
  for (;;) {
    if (in.skipLines(keys, true, false) > 0) field.clear();
    if (!in.field(view)) break;
    field.assign(view);
    if (contains(field, "geomCustom")) showObjExtract(form);
    if (hasPrefix(field, "figure")) break;
  }
  form.TextMainOBJ.setText(behindGeometries(field));
  enterGeometryFolder(program, program.posersFolder() + "Runtime\\Geometries");
  listProps(program, in);
}

void ListPropGeometryPropFile(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  core::FigureScanner in(filePath(program, path));
  yieldWhileReading(program, in);
  core::Needles keys{"prop"};
  for (;;) {
    in.skipLines(keys, true, false);
    if (hasPrefix(in.ReadField(), "prop")) break;
  }
  for (int i = 0; i < 2; ++i)
    if (contains(in.ReadField(), "geomCustom")) showObjExtract(form);
  form.TextMainOBJ.setText(behindGeometries(in.ReadField()));
  enterGeometryFolder(program, program.posersFolder() + "\\Runtime\\Geometries");
  listProps(program, in);
}

unsigned swatchColour(const std::string& entry) {
  // First number up to the first blank, the next ones from two characters behind a blank.
  std::size_t b1 = entry.find(' ');
  std::string red = entry.substr(0, b1);
  std::string rest =
      b1 == std::string::npos ? std::string() : core::Mid(entry, static_cast<long long>(b1) + 3);
  std::size_t b2 = rest.find(' ');
  std::string green = rest.substr(0, b2);
  std::string blue =
      b2 == std::string::npos ? std::string() : core::Mid(rest, static_cast<long long>(b2) + 3);
  auto channel = [](const std::string& text) {
    double v = std::nearbyint(core::Val(text));
    return static_cast<unsigned>(std::clamp(v, 0.0, 255.0));
  };
  return channel(red) | channel(green) << 8 | channel(blue) << 16;
}

namespace {

// Three colour numbers of a KdColor or KsColor line, times 256, in the run-time's
// number text joined by blanks. Val gives a double, and so does the product: a value
// shows up to 15 digits (0.333333 gives 85.333248).
std::string colourEntry(std::string_view line) {
  std::string rest = core::LTrim(core::Mid(line, static_cast<long long>(core::InStr(line, " ")) + 1));
  std::string entry;
  for (int i = 0; i < 3; ++i) {
    std::size_t blank = rest.find(' ');
    if (i > 0) entry += ' ';
    entry += core::StrDouble(core::Val(rest.substr(0, blank)) * 256);
    rest = blank == std::string::npos ? std::string() : core::LTrim(rest.substr(blank));
  }
  return core::LTrim(entry);
}

enum class MatState { Props, ReadOne, MaterialTest, Done };

// The material listing as its states: props (collecting prop names), read one (the
// next field), material test (list the field's material).
class MaterialReader {
 public:
  MaterialReader(Program& program, const std::string& path)
      : m_kind(core::FileKind(path)),
        m_propFile(m_kind == "hr2" || m_kind == "pp2"),
        m_in(filePath(program, path)) {
    yieldWhileReading(program, m_in);
  }

  void run() {
    MatState state = m_kind == "pz2" || m_kind == "fc2" ? MatState::MaterialTest : findStart();
    while (state != MatState::Done) {
      if (state == MatState::Props)
        state = props();
      else if (state == MatState::ReadOne)
        state = readOne();
      else
        state = materialTest();
    }
    m_in.close();
  }

  std::vector<std::string> names, colours, hiLites;

 private:
  MatState findStart() {
    core::Needles start = m_propFile ? core::Needles{"figureResFile", "figure", "material"}
                                     : core::Needles{"figureResFile", "figure"};
    for (;;) {
      m_in.skipLines(start, true, false);
      m_field.assign(m_in.ReadField());
      if (contains(m_field, "figureResFile")) return m_propFile ? MatState::MaterialTest : MatState::Props;
      if (m_field == "figure") return MatState::ReadOne;
      if (m_propFile && hasPrefix(m_field, "material")) return MatState::MaterialTest;
    }
  }

  MatState props() {
    std::string_view view;
    m_in.skipLines(m_propKeys, true, false);
    if (!m_in.field(view)) return MatState::Done;
    if (hasPrefix(view, "prop")) m_propNames.push_back(core::Mid(view, 6));
    return view == "figure" ? MatState::ReadOne : MatState::Props;
  }

  MatState readOne() {
    std::string_view view;
    m_in.skipLines(m_materialKeys, true, false);
    if (!m_in.field(view)) return MatState::Props;
    m_field.assign(view);
    return MatState::MaterialTest;
  }

  MatState materialTest() {
    if (!hasPrefix(m_field, "material")) return MatState::ReadOne;
    std::string name = core::Mid(m_field, 10);
    if (name == "Preview") return MatState::ReadOne;
    if (std::find(m_propNames.begin(), m_propNames.end(), name) != m_propNames.end()) return MatState::Props;
    names.push_back(name);
    m_in.ReadField();
    std::string kd(m_in.ReadField());
    m_in.ReadField();
    std::string ks(m_in.ReadField());
    colours.push_back(colourEntry(kd));
    hiLites.push_back(colourEntry(ks));
    return MatState::ReadOne;
  }

  std::string m_kind;
  bool m_propFile;
  core::FigureScanner m_in;
  std::string m_field;
  std::vector<std::string> m_propNames;
  core::Needles m_propKeys{"prop", "figure"};
  core::Needles m_materialKeys{"material"};
};

}  // namespace

void ListFileMaterials(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  MaterialReader reader(program, path);
  reader.run();
  appendEntries(form.ListMaterials, std::move(reader.names));
  appendEntries(form.ListMATColors, std::move(reader.colours));
  appendEntries(form.ListMatHiLite, std::move(reader.hiLites));
  if (form.ListMATColors.listCount() > 0)
    form.PictureMatColor.setBackColor(swatchColour(form.ListMATColors.list(0)));
  if (form.ListMatHiLite.listCount() > 0)
    form.PictureMatHiLite.setBackColor(swatchColour(form.ListMatHiLite.list(0)));
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
