// The load's pass over the OBJ text; the tiny-model copy and the morph points are in
// obj_load_after.cpp.
#include "obj/obj_load.h"

#include <chrono>
#include <memory>
#include <unordered_map>

#include "obj/obj_geometry.h"
#include "obj/obj_load_after.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/obj_text.h"
#include "text/record_file.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/line_ending_repair.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kYieldEvery = std::chrono::milliseconds(50);

ui::Colour rgb(int red, int green, int blue) {
  return static_cast<ui::Colour>(red) | (static_cast<ui::Colour>(green) << 8) |
         (static_cast<ui::Colour>(blue) << 16);
}

// A name list with its colour list, and indexes over both so that a file with very
// many groups is not searched from the top for each line.
struct ColourSet {
  ui::ListBox& names;
  ui::ListBox& colours;
  bool colouring;  // the option that colours by this kind is on
  std::unordered_map<std::string, int> nameIndex;
  std::unordered_map<std::string, int> colourIndex;

  ColourSet(ui::ListBox& n, ui::ListBox& c, bool on) : names(n), colours(c), colouring(on) {
    for (int i = 0; i < names.listCount(); ++i) nameIndex.emplace(names.list(i), i);
    for (int i = 0; i < colours.listCount(); ++i) {
      const std::string& item = colours.list(i);
      colourIndex.emplace(item.substr(0, item.find('*')), i);
    }
  }
};

class Loader {
 public:
  explicit Loader(Program& program)
      : m_program(program),
        m_form(program.formOBJ),
        m_groups(m_form.ListGroups, m_form.ListGroupColors, m_form.OptionColorGroups.value()),
        m_materials(m_form.ListMaterials, m_form.ListMATColors, m_form.OptionColorMaterials.value()) {}

  void parse(const std::filesystem::path& source);

 private:
  void line(std::string_view raw);
  void vertexLine(std::string_view text);
  void colourLine(std::string_view text, std::string_view name, ColourSet& set);
  void faceLine(std::string_view text);
  void drawFace(std::size_t corners);
  void yieldNow();

  Program& m_program;
  ui::FormOBJ& m_form;
  ViewScales m_scales;
  ColourSet m_groups, m_materials;
  std::unique_ptr<text::RecordFile> m_faces, m_vertices, m_textures;
  std::string m_scratch;
  text::VertexText m_vertexText;
  text::FaceCorners m_corners;
  std::vector<ui::PicturePoint> m_front, m_side, m_top;
  VertexListRule m_listRule;
  Clock::time_point m_nextYield = Clock::now() + kYieldEvery;
};

void Loader::parse(const std::filesystem::path& source) {
  m_scales = viewScales(m_form);
  m_form.xScale = m_scales.x;
  m_form.yScale = m_scales.y;
  const char* names[] = {"FArray.txt", "VTArray.txt", "VArray.txt"};
  for (const char* name : names) text::deleteIgnoringErrors(m_program.workFile(name));
  m_faces = std::make_unique<text::RecordFile>(m_program.workFile("FArray.txt"), kFaceRecord);
  m_textures = std::make_unique<text::RecordFile>(m_program.workFile("VTArray.txt"), kVertexRecord);
  m_vertices = std::make_unique<text::RecordFile>(m_program.workFile("VArray.txt"), kVertexRecord);
  text::FigureScanner in(source);
  std::string_view raw;
  for (unsigned lines = 0; in.rawLine(raw); ++lines) {
    line(raw);
    if (lines % 1024 == 0 && Clock::now() >= m_nextYield) yieldNow();
  }
  in.close();
  for (auto* file : {&m_faces, &m_textures, &m_vertices}) (*file)->close();
}

void Loader::line(std::string_view raw) {
  std::string_view text;
  switch (text::normaliseObjLine(raw, m_scratch, text)) {
    case text::ObjLineKind::Vertex:
      return vertexLine(text);
    case text::ObjLineKind::TextureVertex: {
      ++m_form.textureCount;
      m_form.hasTextureVertices = true;
      m_textures->put(text::textureRecord(text));
      return;
    }
    case text::ObjLineKind::Group:
      return colourLine(text, text::groupName(text), m_groups);
    case text::ObjLineKind::Material:
      return colourLine(text, text::materialName(text), m_materials);
    case text::ObjLineKind::Face:
      return faceLine(text);
    case text::ObjLineKind::Ignored:
      return;
  }
}

// The record keeps the text as the source had it; the numbers come from the positional
// split, so a positive x loses its first character.
void Loader::vertexLine(std::string_view text) {
  m_vertices->put(text);
  text::splitVertexLine(text, m_vertexText);
  double x = text::Val(m_vertexText.x), y = text::Val(m_vertexText.y);
  if (x > m_form.maxX) m_form.maxX = text::CSng(x);
  if (x < m_form.minX) m_form.minX = text::CSng(x);
  if (y > m_form.maxY) m_form.maxY = text::CSng(y);
  ++m_form.vertexCount;
  m_form.vertexTable.push_back({text::CSng(x), text::CSng(y), text::CSng(text::Val(m_vertexText.z))});
}

void Loader::colourLine(std::string_view text, std::string_view name, ColourSet& set) {
  m_faces->put(text);
  ++m_form.recordCount;
  std::string key(name);
  if (set.nameIndex.emplace(key, set.names.listCount()).second) set.names.addItem(key);
  int red, green, blue;
  std::string line(text);
  auto found = set.colourIndex.find(line);
  if (found != set.colourIndex.end()) {
    colourOfItem(set.colours.list(found->second), red, green, blue);
  } else {
    text::RunTimeRandom& random = m_program.random;
    random.Randomize(254);
    red = static_cast<int>(254 * random.Rnd() + 1);
    green = static_cast<int>(254 * random.Rnd() + 1);
    blue = static_cast<int>(254 * random.Rnd() + 1);
    set.colourIndex.emplace(line, set.colours.listCount());
    set.colours.addItem(colourItem(line, red, green, blue));
  }
  if (!set.colouring) return;
  for (ui::DrawnPicture* p : {&m_form.PictureStore, &m_form.PictureStore2, &m_form.PictureStore3})
    p->setFillColor(rgb(red, green, blue));
  m_form.material[0] = static_cast<float>(red) / 255;
  m_form.material[1] = static_cast<float>(green) / 255;
  m_form.material[2] = static_cast<float>(blue) / 255;
  m_form.renderer().setMaterial(m_form.material[0], m_form.material[1], m_form.material[2]);
}

void Loader::faceLine(std::string_view text) {
  if (text.size() > kFaceRecord) m_program.services.beep();
  m_faces->put(text);
  ++m_form.faceCount;
  text::walkFaceCorners(text, m_corners);
  std::size_t corners = m_corners.positions;
  if (m_front.size() < corners + 1) {
    for (auto* points : {&m_front, &m_side, &m_top}) points->resize(corners + 1);
  }
  int w = m_form.PictureStore.width(), h = m_form.PictureStore.height();
  for (std::size_t c = 0; c < corners; ++c) {
    const ui::ObjVertex& v = m_form.vertexTable[text::cornerSlot(m_corners, c, m_form.vertexCount)];
    PicturePoints p = project(v, m_scales, w, h);
    std::size_t at = c == 0 ? 1 : c;  // corner 1 takes the place of corner 0
    m_front[at] = p.front;
    m_side[at] = p.side;
    m_top[at] = p.top;
  }
  if (m_listRule.takeFace(m_form.vertexList.size())) {
    for (std::size_t c = 0; c < 3; ++c) {
      const ui::ObjVertex& v = m_form.vertexTable[text::cornerSlot(m_corners, c, m_form.vertexCount)];
      m_form.vertexList.push_back(scaledPoint(v, m_scales));
    }
  }
  drawFace(corners);
}

void Loader::drawFace(std::size_t corners) {
  if (m_form.OptionNoColors.value()) m_form.PictureStore.setFillColor(0x800000);
  if (corners < 2) return;
  int count = static_cast<int>(corners - 1);
  ui::Services& services = m_program.services;
  m_form.PictureStore.polygon(services, m_front.data() + 1, count);
  m_form.PictureStore2.polygon(services, m_side.data() + 1, count);
  m_form.PictureStore3.polygon(services, m_top.data() + 1, count);
}

// Between faces the event loop runs now and then, and the picture of the current view
// shows how far the load got, unless the drawing is hidden.
void Loader::yieldNow() {
  if (!m_form.drawingHidden) currentPicture(m_form).refresh();
  m_program.services.yield();
  m_nextYield = Clock::now() + kYieldEvery;
}

// The caption's path of a plain load, the source of a reload, or Param.obj.
std::filesystem::path sourceOf(Program& program) {
  ui::FormOBJ& form = program.formOBJ;
  if (form.useParamObj) {
    form.useParamObj = false;
    return program.workFile("Param.obj");
  }
  if (form.reload) return filePath(program, form.captionPath());
  std::string path = plainSourcePath(program);
  RepairLineEndings(program, path);
  form.setCaption(ui::kObjViewerCaption + path);
  return filePath(program, path);
}

void prepare(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  program.setBusy(true);
  f.LabelWait.setVisible(true);
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.CommandListGroups, &f.CommandListMats, &f.LabelMirror})
    c->setVisible(true);
  if (f.OptionColorGroups.value()) {
    f.PictureLop.setVisible(true);
    f.PicturePhiLopper.setVisible(true);
  }
  f.PictureOBJViewer.Cls();
  f.PictureOBJViewer.setVisible(false);
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&f.PictureObjViewer2, &f.PictureNoDX, &f.PictureUVMap})
    c->setVisible(false);
  f.currentView = f.OptionSideView.value() ? 2 : f.OptionTopView.value() ? 3 : 1;
  for (ui::DrawnPicture* p : {&f.PictureStore, &f.PictureStore2, &f.PictureStore3}) {
    p->Cls();
    p->refresh();
  }
  currentPicture(f).setVisible(true);
  f.CheckHiddenFaces.setCaption("Show All Faces");
  f.CheckHiddenFaces.setVisible(true);
  f.renderer().clear(ui::kWhite);
  f.loaded = false;
  f.maxX = f.minX = f.maxY = 0;
  f.faceCount = f.recordCount = f.vertexCount = f.textureCount = 0;
  f.hasTextureVertices = false;
  f.vertexTable.assign(1, ui::ObjVertex{});
  f.vertexList.clear();
  f.ListGroups.clear();
  f.ListMaterials.clear();
}

}  // namespace

std::string colourItem(const std::string& line, int red, int green, int blue) {
  return line + "*" + std::to_string(red) + " " + std::to_string(green) + " " + std::to_string(blue);
}

void colourOfItem(const std::string& item, int& red, int& green, int& blue) {
  std::size_t star = item.find('*');
  std::string rest = star == std::string::npos ? std::string() : item.substr(star + 1);
  std::size_t b1 = rest.find(' ');
  std::size_t b2 = b1 == std::string::npos ? std::string::npos : rest.find(' ', b1 + 1);
  red = static_cast<int>(text::Val(rest.substr(0, b1)));
  green = b1 == std::string::npos ? 0 : static_cast<int>(text::Val(rest.substr(b1 + 1, b2 - b1 - 1)));
  blue = b2 == std::string::npos ? 0 : static_cast<int>(text::Val(rest.substr(b2 + 1)));
}

std::string plainSourcePath(Program& program) {
  const std::string& opened = program.opening.OpenFilePath;
  if (text::FileKind(opened) == "obj") return opened;
  std::string box = program.opening.TextMainOBJ.text();
  if (text::LCase(text::Right(box, 3)) == "obj" && box.find(':') == std::string::npos) return box;
  // A Poser path: each name ahead of a colon is a folder under Runtime\Geometries.
  std::string folder = program.posersFolder() + "Runtime\\Geometries";
  std::string rest = box;
  for (std::size_t colon = rest.find(':'); colon != std::string::npos; colon = rest.find(':')) {
    folder += "\\" + rest.substr(0, colon);
    rest.erase(0, colon + 1);
    text::ignoreErrors([&] {
      std::filesystem::path dir = text::resolveCaseInsensitive(filePath(program, folder));
      if (std::filesystem::is_directory(dir)) program.currentDir = dir;
    });
  }
  std::string path = text::resolveCaseInsensitive(filePath(program, folder + "\\" + rest)).string();
  program.opening.TextMainOBJ.setText(path);
  return path;
}

void LoadObj(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.LabelWait.visible()) return;  // a load is running; its event loop brought this click
  bool fromCopy = f.useParamObj;
  prepare(program);
  try {
    std::filesystem::path source = sourceOf(program);
    Loader(program).parse(source);
  } catch (...) {
    f.LabelWait.setVisible(false);
    throw;
  }
  finishLoad(program, fromCopy);
}

}  // namespace tolvane::obj
