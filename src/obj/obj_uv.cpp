// The UV templates: the texture layout of the loaded mesh drawn as wire lines into
// PictureUVMap (and, for the lopper's groups, PictureSecMap), saved as a square bitmap
// beside the OBJ; UVNew.obj with a texture vertex for every vertex; the figure's texture.

#include <charconv>

#include "obj/obj_geometry.h"
#include "obj/obj_load.h"
#include "obj/obj_load_after.h"
#include "obj/obj_tools.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/obj_text.h"
#include "text/record_file.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

constexpr const char* kMapPrompt = "Enter Map Size";

struct UV {
  double u = 0, v = 0;
};

// Every texture vertex of VTArray.txt, read in one pass: u before "*", v behind it.
std::vector<UV> readTextureTable(Program& program) {
  std::vector<UV> table{UV{}};
  text::RecordFile file(program.workFile("VTArray.txt"), kVertexRecord);
  for (std::string_view record; file.nextView(record);) {
    std::size_t star = record.find('*');
    UV uv;
    uv.u = text::Val(record.substr(0, star));
    uv.v = star == std::string_view::npos ? 0 : text::Val(record.substr(star + 1));
    table.push_back(uv);
  }
  return table;
}

// The texture index of each corner of a face record: the text behind the first "/", up
// to the next "/". An index beginning with "-" is its value plus one; an empty index is
// not kept.
void textureIndexes(std::string_view face, std::vector<long long>& out) {
  out.clear();
  std::string_view rest = face.size() > 2 ? face.substr(2) : std::string_view();
  std::size_t at = 0;
  while (at < rest.size()) {
    std::size_t end = rest.find(' ', at);
    if (end == std::string_view::npos) end = rest.size();
    std::string_view corner = rest.substr(at, end - at);
    at = end + 1;
    std::size_t slash = corner.find('/');
    if (slash == std::string_view::npos) continue;
    std::string_view index = corner.substr(slash + 1);
    index = index.substr(0, index.find('/'));
    if (index.empty()) continue;
    long long whole = 0;
    auto parsed = std::from_chars(index.data(), index.data() + index.size(), whole);
    if (parsed.ec == std::errc() && parsed.ptr == index.data() + index.size()) {
      out.push_back(whole < 0 ? whole + 1 : whole);
      continue;
    }
    double value = text::Val(index);
    out.push_back(static_cast<long long>(index[0] == '-' ? value + 1 : value));
  }
}

// Draws the face's texture outline: from each corner to the next, the closing edge not.
class TemplateDrawer {
 public:
  TemplateDrawer(Program& program, ui::DrawnPicture& picture) : m_program(program), m_picture(picture) {
    ui::FormOBJ& f = program.formOBJ;
    m_xf = f.viewerWidth * 15 / f.screenWidth;
    m_yf = f.viewerHeight * 15 / f.screenHeight;
    m_xOffset = (-0.008 * f.xScale) / 2;
    m_yOffset = -0.004 * f.yScale;
    m_unitX = picture.width() / 6.0;
    m_unitY = picture.height() / 6.0;
  }
  void face(const std::vector<long long>& indexes, const std::vector<UV>& table) {
    ui::PicturePainter& painter = m_picture.painter(m_program.services);
    ui::PicturePoint last{};
    for (std::size_t c = 0; c < indexes.size(); ++c) {
      long long i = indexes[c];
      if (i < 0 || static_cast<std::size_t>(i) >= table.size()) text::raiseError(text::kSubscriptOutOfRange);
      const UV& uv = table[static_cast<std::size_t>(i)];
      double x = uv.u * m_xf + m_xOffset;
      double y = 6 - (uv.v * m_yf + m_yOffset);
      ui::PicturePoint p{text::CLng(x * m_unitX), text::CLng(y * m_unitY)};
      if (c > 0) painter.line(last, p, ui::kBlack);
      last = p;
    }
  }

 private:
  Program& m_program;
  ui::DrawnPicture& m_picture;
  double m_xf, m_yf, m_xOffset, m_yOffset, m_unitX, m_unitY;
};

void showMapPicture(ui::FormOBJ& f, ui::DrawnPicture& target) {
  for (ui::Control* c : std::initializer_list<ui::Control*>{&f.PictureObjViewer2, &f.PictureStore, &f.PictureStore2,
                                                           &f.PictureStore3, &f.PictureOBJViewer, &f.PictureUVMap,
                                                           &f.PictureSecMap})
    c->setVisible(false);
  target.setVisible(true);
  target.Cls();
}

// The OBJ's path up to and including its first ".", and "bmp".
std::string bitmapName(const std::string& obj) {
  std::size_t dot = obj.find('.');
  return obj.substr(0, dot == std::string::npos ? 0 : dot + 1) + "bmp";
}

}  // namespace

void LabelUVMapClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (!f.hasTextureVertices) {
    ui::msgBox(program.services, "No UV information in the file, or it has already been viewed.", "Note");
    return;
  }
  showMapPicture(f, f.PictureUVMap);
  f.LabelWait.setVisible(true);
  program.setBusy(true);
  try {
    std::vector<UV> table = readTextureTable(program);
    TemplateDrawer drawer(program, f.PictureUVMap);
    text::RecordFile faces(program.workFile("FArray.txt"), kFaceRecord);
    std::vector<long long> indexes;
    std::string_view record;
    // The walk stops after as many records as there are faces: the group and material
    // records among them leave as many faces at the end undrawn.
    for (std::uint64_t n = 1; n <= f.faceCount && faces.nextView(record); ++n) {
      std::string_view t = trimmedView(record);
      if (!text::hasPrefix(t, "f")) continue;
      textureIndexes(t, indexes);
      drawer.face(indexes, table);
    }
  } catch (...) {
    f.LabelWait.setVisible(false);
    program.setBusy(false);
    throw;
  }
  f.hasTextureVertices = false;
  f.PictureUVMap.refresh();
  f.LabelWait.setVisible(false);
  program.setBusy(false);
  f.LabelSaveMap.setVisible(true);
  f.LabelMakeUV.setVisible(true);
  if (text::fileExists(program.workFile("groupface.txt"))) f.LabelSecMap.setVisible(true);
}

void LabelSecMapClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  showMapPicture(f, f.PictureSecMap);
  std::vector<UV> table = readTextureTable(program);
  // The lopper's numbering: line k holds "old*new" for the k-th vertex kept.
  std::vector<long long> renumbered{0};
  {
    text::LineReader in(program.workFile("groupvertex.txt"));
    for (std::string line; in.readRawLine(line);) {
      std::size_t star = line.find('*');
      renumbered.push_back(static_cast<long long>(
          text::Val(star == std::string::npos ? std::string_view() : std::string_view(line).substr(star + 1))));
    }
  }
  TemplateDrawer drawer(program, f.PictureSecMap);
  text::LineReader in(program.workFile("groupface.txt"));
  std::vector<long long> indexes;
  for (std::string line; in.readRawLine(line);) {
    if (line.empty() || line == "g" || text::contains(line, "mtl") || line[0] == ' ' || line[0] == 's' ||
        line[0] == 'g')
      continue;
    textureIndexes(line, indexes);
    for (long long& i : indexes) {
      if (i < 0 || static_cast<std::size_t>(i) >= renumbered.size()) text::raiseError(text::kSubscriptOutOfRange);
      i = renumbered[static_cast<std::size_t>(i)];
    }
    drawer.face(indexes, table);
  }
  f.PictureSecMap.refresh();
  f.LabelSaveMap.setVisible(true);
}

void LabelSaveMapClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  ui::TextBox& box = f.PictureSecMap.visible() ? f.TextMapSizeSec : f.TextMapSize;
  box.setText(kMapPrompt);
  box.setVisible(true);
  box.setFocus();
}

void MapSizeFocus(Program& program, bool secondary) {
  ui::TextBox& box = secondary ? program.formOBJ.TextMapSizeSec : program.formOBJ.TextMapSize;
  if (box.text() == kMapPrompt) box.setText("");
}

void SaveMapTemplate(Program& program, bool secondary) {
  ui::FormOBJ& f = program.formOBJ;
  ui::TextBox& box = secondary ? f.TextMapSizeSec : f.TextMapSize;
  ui::DrawnPicture& picture = secondary ? f.PictureSecMap : f.PictureUVMap;
  std::string name = bitmapName(f.captionPath());
  int size = static_cast<int>(text::Val(box.text() == kMapPrompt ? std::string() : box.text()));
  if (size <= 0 || size > 16384)
    throw text::RuntimeError(text::kInvalidProcedureCall, "The map size must be a number from 1 to 16384", name);
  std::string bytes = program.services.encodeBitmap(picture.raster(), size, size);
  text::StreamRewrite out(program.workFile("\\MapSave.tmp"), true);
  try {
    out.out().write(bytes);
    out.replace(filePath(program, name));
  } catch (...) {
    out.discard();
    throw;
  }
  ui::msgBox(program.services, (secondary ? "Secondary UV Map saved as " : "UV Map Template saved as ") + name,
             "Note!");
  f.LabelSaveMap.setVisible(false);
  box.setText(kMapPrompt);
  box.setVisible(false);
}

void LabelMakeUVClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  program.setBusy(true);
  struct Busy {
    Program& p;
    ~Busy() { p.setBusy(false); }
  } busy{program};
  // Each face corner gets its vertex index as its texture index, in FArray.txt itself.
  {
    text::RecordFile faces(program.workFile("FArray.txt"), kFaceRecord);
    std::string record;
    std::vector<std::pair<std::uint64_t, std::string>> rewritten;
    for (std::uint64_t n = 1; n <= f.faceCount && faces.get(n, record); ++n) {
      std::string t = text::Trim(record);
      if (!text::hasPrefix(t, "f")) continue;
      std::string face = "f";
      std::string_view rest = std::string_view(t).substr(1);
      std::size_t at = 0;
      while (at < rest.size()) {
        while (at < rest.size() && rest[at] == ' ') ++at;
        if (at >= rest.size()) break;
        std::size_t end = rest.find(' ', at);
        if (end == std::string_view::npos) end = rest.size();
        std::string_view corner = rest.substr(at, end - at);
        std::string vertex(corner.substr(0, corner.find('/')));
        face += " " + vertex + "/" + vertex;
        at = end;
      }
      rewritten.emplace_back(n, std::move(face));
    }
    for (auto& [n, face] : rewritten) {
      faces.seek(n);
      faces.put(face);
    }
    faces.close();
  }
  std::vector<std::string> textures;
  {
    ViewScales scales = viewScales(f);
    text::RecordFile vertices(program.workFile("VArray.txt"), kVertexRecord);
    text::VertexText vt;
    auto coordinate = [](double value) {
      std::string t = text::Trim(text::StrSingle(value));
      if (text::contains(t, "E")) t = expandExponent(t);
      t = text::Left(t, 8);
      return text::Replace(t, "-", "");
    };
    for (std::string record; vertices.next(record);) {
      std::string t = text::Trim(record);
      text::splitVertexLine(t, vt);
      // The vertex's place in the front picture, as a share of the picture's side.
      double u = text::Val(vt.x) * scales.x / 6 + 0.5;
      double v = text::Val(vt.y) * scales.y * scales.y / 6;
      textures.push_back("vt " + coordinate(u) + " " + coordinate(v));
    }
  }
  std::filesystem::path result = program.workFile("UVNew.obj");
  text::deleteIgnoringErrors(result);
  text::LineWriter out(result, text::LineWriter::Mode::Append);
  {
    text::LineReader in(filePath(program, f.captionPath()));
    std::string line;
    for (int i = 0; i < 2 && in.readRawLine(line); ++i) out.WriteLine(line);
    while (in.readRawLine(line))
      if (text::hasPrefix(line, "v ")) out.WriteLine(line);
  }
  for (const std::string& t : textures) out.WriteLine(t);
  text::RecordFile faces(program.workFile("FArray.txt"), kFaceRecord);
  for (std::string record; faces.next(record);) out.WriteLine(text::RTrim(record));
  out.close();
}

void LabelViewCR2TexMapRightClick(Program& program) {
  ui::msgBox(program.services,
             "Click this to view the map listed in the CR2, or for the OBJ you have opened manually.", "Note");
}

void LabelViewCR2TexMapClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  std::string texture = program.opening.TextMainTex.text();
  if (text::LCase(text::Right(texture, 3)) == "tif") {
    ui::msgBox(program.services, "Can't work with tif files.", "Error", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  std::filesystem::path file = filePath(program, program.posersFolder() + "Runtime\\textures\\" + texture);
  showMapPicture(f, f.PictureUVMap);
  if (!program.services.loadPicture(text::resolveCaseInsensitive(file), f.PictureUVMap.raster()))
    text::raiseError(text::kFileNotFound, file.string());
  f.PictureUVMap.refresh();
}

void LabelApplyMapRightClick(Program& program) {
  ui::msgBox(program.services, "Use this to apply the existing texture map.", "Note");
}

// Reads its faces from a fixed file of the developer's machine; where that file is
// missing (everywhere else) nothing visible happens.
void LabelApplyMapClick(Program& program) {
  std::filesystem::path fixed = text::nativePath("I:\\Poser4\\UV.txt");
  if (!text::fileExists(fixed)) return;
  (void)program;
}

}  // namespace tolvane::obj
