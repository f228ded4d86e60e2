#include "geometry.h"

namespace tolvane::gen {

const int kBoxFaces[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 4, 7, 3},
                             {1, 2, 6, 5}, {0, 1, 5, 4}, {3, 7, 6, 2}};

std::array<Vec, 8> boxCorners(const Vec& c, const Vec& h) {
  std::array<Vec, 8> corners;
  for (int i = 0; i < 8; ++i) {
    int sx = (i == 1 || i == 2 || i == 5 || i == 6) ? 1 : -1;
    int sy = (i == 2 || i == 3 || i == 6 || i == 7) ? 1 : -1;
    int sz = i >= 4 ? 1 : -1;
    corners[static_cast<std::size_t>(i)] = {c[0] + sx * h[0], c[1] + sy * h[1], c[2] + sz * h[2]};
  }
  return corners;
}

std::string vertexLine(const Vec& v) { return "v " + triple(v[0], v[1], v[2]); }

void writeGeomCustom(Sink& out, int depth, const Vec& center, const Vec& half, const std::string& group,
                     const std::string& material) {
  out.line(depth, "geomCustom");
  int in = depth + 1;
  out.line(in, "{");
  out.line(in, "numbVerts 8");
  out.line(in, "numbTVerts 0");
  out.line(in, "numbTSets 0");
  out.line(in, "numbElems 6");
  out.line(in, "numbSets 24");
  for (const Vec& v : boxCorners(center, half)) out.line(in, vertexLine(v));
  out.line(in, "g " + group);
  out.line(in, "usemtl " + material);
  for (const auto& face : kBoxFaces) {
    std::string f = "f";
    for (int corner : face) {
      f += ' ';
      f += std::to_string(corner + 1);
    }
    out.line(in, f);
  }
  out.line(in, "}");
}

}  // namespace tolvane::gen
