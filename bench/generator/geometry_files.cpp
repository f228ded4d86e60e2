#include "geometry_files.h"

#include <fstream>
#include <stdexcept>

#include "geometry.h"
#include "text_format.h"

namespace tolvane::gen {

namespace {

// Faces with a material other than the part's own: the lips on the front of the head,
// nails on the top of the last finger and toe segments.
std::string faceMaterial(const std::string& part, int face) {
  if (part == "head" && face == 1) return "lips";
  bool tip = part.size() > 1 && part.back() == '3' && part.find("Toe") == std::string::npos;
  if ((tip || part == "lToe" || part == "rToe") && face == 5) return "nails";
  return "skin";
}

void writeQuad(Sink& out, const int corners[4], int vertexBase, int uvBase) {
  std::string f = "f";
  for (int i = 0; i < 4; ++i) {
    f += ' ';
    f += std::to_string(vertexBase + corners[i] + 1);
    f += '/';
    f += std::to_string(uvBase + i + 1);
  }
  out.line(0, f);
}

// The head's extra quads: two eyes, the lashes above them and the brows above those.
std::vector<std::pair<std::string, std::pair<Vec, Vec>>> headFeatures(const Part& head) {
  std::int64_t front = head.center[2] + head.half[2] + 1000;
  std::int64_t y = head.center[1] + 10000;
  return {
      {"eyes", {{14000, y, front}, {6000, 4000, 0}}},
      {"eyes", {{-14000, y, front}, {6000, 4000, 0}}},
      {"lashes", {{0, y + 6000, front}, {22000, 1500, 0}}},
      {"brows", {{0, y + 11000, front}, {24000, 2000, 0}}},
  };
}

using Features = std::vector<std::pair<std::string, std::pair<Vec, Vec>>>;

// All vertices, part by part: the box, then the part's extra quads; then one texture
// cell of an 8 x 8 grid per part.
std::vector<Features> writeVertices(Sink& out, const Figure& figure) {
  std::vector<Features> features(figure.parts.size());
  for (std::size_t i = 0; i < figure.parts.size(); ++i) {
    const Part& p = figure.parts[i];
    for (const Vec& v : boxCorners(p.center, p.half)) out.line(0, vertexLine(v));
    if (p.name == "head") features[i] = headFeatures(p);
    for (const auto& quad : features[i]) {
      auto corners = boxCorners(quad.second.first, quad.second.second);
      for (int c : kBoxFaces[1]) out.line(0, vertexLine(corners[static_cast<std::size_t>(c)]));
    }
  }
  for (std::size_t i = 0; i < figure.parts.size(); ++i) {
    std::int64_t u = static_cast<std::int64_t>(i % 8) * 125000, v = static_cast<std::int64_t>(i / 8) * 125000;
    for (auto [du, dv] : {std::pair{10000, 10000}, {115000, 10000}, {115000, 115000}, {10000, 115000}})
      out.line(0, "vt " + micro(u + du) + " " + micro(v + dv));
  }
  return features;
}

}  // namespace

void writeFigureObj(const std::filesystem::path& path, const Figure& figure, const std::string& mtlName) {
  Sink out(path);
  out.line(0, "# Ava, the demo figure of Tolvane: one box per body part");
  out.line(0, "mtllib " + mtlName);
  for (const char* normal : {"vn 0 0 -1", "vn 0 0 1", "vn -1 0 0", "vn 1 0 0", "vn 0 -1 0", "vn 0 1 0"})
    out.line(0, normal);
  std::vector<Features> features = writeVertices(out, figure);
  int vertexBase = 0;
  for (std::size_t i = 0; i < figure.parts.size(); ++i) {
    const Part& p = figure.parts[i];
    int uvBase = static_cast<int>(i) * 4;
    out.line(0, "g " + p.name);
    std::string current;
    for (int face = 0; face < 6; ++face) {
      std::string material = faceMaterial(p.name, face);
      if (material != current) out.line(0, "usemtl " + (current = material));
      writeQuad(out, kBoxFaces[face], vertexBase, uvBase);
    }
    vertexBase += 8;
    for (const auto& quad : features[i]) {
      if (quad.first != current) out.line(0, "usemtl " + (current = quad.first));
      const int corners[4] = {0, 1, 2, 3};
      writeQuad(out, corners, vertexBase, uvBase);
      vertexBase += 4;
    }
  }
  out.close();
}

void writeMtl(const std::filesystem::path& path, const std::vector<Material>& materials) {
  Sink out(path);
  for (const Material& m : materials) {
    auto rgb = [](const std::string& colour) { return colour.substr(0, colour.rfind(' ')); };
    out.line(0, "newmtl " + m.name);
    out.line(0, "Kd " + rgb(m.kd));
    out.line(0, "Ka 0 0 0");
    out.line(0, "Ks " + rgb(m.ks));
    out.line(0, "Ns " + m.ns);
    std::string map = m.textureMap;
    if (!map.empty() && map.front() == '"') map = map.substr(1, map.size() - 2);
    if (map.rfind(":Runtime:", 0) == 0) out.line(0, "map_Kd " + map.substr(map.rfind(':') + 1));
    out.empty();
  }
  out.close();
}

void writeBoxObj(const std::filesystem::path& path, const std::string& group, const std::string& material,
                 const std::vector<std::pair<Vec, Vec>>& boxes) {
  Sink out(path);
  for (const auto& box : boxes)
    for (const Vec& v : boxCorners(box.first, box.second)) out.line(0, vertexLine(v));
  for (const char* uv : {"vt 0 0", "vt 1 0", "vt 1 1", "vt 0 1"}) out.line(0, uv);
  out.line(0, "g " + group);
  out.line(0, "usemtl " + material);
  for (std::size_t b = 0; b < boxes.size(); ++b)
    for (const auto& face : kBoxFaces) writeQuad(out, face, static_cast<int>(b) * 8, 0);
  out.close();
}

void writeBmp(const std::filesystem::path& path, int size, int seed, int red, int green, int blue) {
  const int rowBytes = (size * 3 + 3) / 4 * 4;
  const int imageBytes = rowBytes * size;
  std::string bytes(static_cast<std::size_t>(54 + imageBytes), '\0');
  auto put = [&bytes](std::size_t at, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
      bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
  };
  bytes[0] = 'B';
  bytes[1] = 'M';
  put(2, static_cast<std::uint32_t>(bytes.size()), 4);
  put(10, 54, 4);
  put(14, 40, 4);
  put(18, static_cast<std::uint32_t>(size), 4);
  put(22, static_cast<std::uint32_t>(size), 4);
  put(26, 1, 2);
  put(28, 24, 2);
  put(34, static_cast<std::uint32_t>(imageBytes), 4);
  put(38, 2835, 4);  // 72 dots per inch
  put(42, 2835, 4);
  Random random(static_cast<std::uint64_t>(seed));
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      // A checker of two shades with a little noise, so maps are told apart at a glance.
      int shade = ((x / 8 + y / 8) % 2 == 0 ? 255 : 200) - static_cast<int>(random.between(0, 20));
      std::size_t at = 54 + static_cast<std::size_t>(y * rowBytes + x * 3);
      bytes[at] = static_cast<char>(blue * shade / 255);
      bytes[at + 1] = static_cast<char>(green * shade / 255);
      bytes[at + 2] = static_cast<char>(red * shade / 255);
    }
  }
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace tolvane::gen
