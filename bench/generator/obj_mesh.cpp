#include "obj_mesh.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "text/line_writer.h"

namespace tolvane::gen {

MeshSize writeGridObj(const std::filesystem::path& path, std::uint64_t triangles, bool withTexture) {
  auto side = static_cast<std::uint64_t>(std::ceil(std::sqrt(static_cast<double>(triangles) / 2))) + 1;
  text::LineWriter out(path, text::LineWriter::Mode::Output);
  MeshSize size;
  char line[128];
  out.WriteLine("# a grid of quads round a cylinder, written for the benchmarks");
  for (std::uint64_t row = 0; row < side; ++row)
    for (std::uint64_t col = 0; col < side; ++col) {
      double angle = 6.283185307 * static_cast<double>(col) / static_cast<double>(side - 1);
      double y = 0.7 * static_cast<double>(row) / static_cast<double>(side - 1);
      std::snprintf(line, sizeof line, "v %.6f %.6f %.6f", 0.2 * std::cos(angle), y, 0.1 * std::sin(angle));
      out.WriteLine(line);
      ++size.vertices;
    }
  if (withTexture)
    for (std::uint64_t row = 0; row < side; ++row)
      for (std::uint64_t col = 0; col < side; ++col) {
        std::snprintf(line, sizeof line, "vt %.6f %.6f",
                      static_cast<double>(col) / static_cast<double>(side - 1),
                      static_cast<double>(row) / static_cast<double>(side - 1));
        out.WriteLine(line);
      }
  out.WriteLine("vn 0 0 1");
  for (std::uint64_t row = 0; row + 1 < side && size.triangles < triangles; ++row) {
    if (row % 20 == 0) {
      out.WriteLine("g band" + std::to_string(row / 20));
      out.WriteLine("usemtl band" + std::to_string(row / 100));
    }
    for (std::uint64_t col = 0; col + 1 < side && size.triangles < triangles; ++col) {
      std::uint64_t a = row * side + col + 1, b = a + 1, c = a + side, d = c + 1;
      const char* form = withTexture ? "f %llu/%llu %llu/%llu %llu/%llu" : "f %llu %llu %llu";
      auto u = [](std::uint64_t v) { return static_cast<unsigned long long>(v); };
      if (withTexture)
        std::snprintf(line, sizeof line, form, u(a), u(a), u(b), u(b), u(d), u(d));
      else
        std::snprintf(line, sizeof line, form, u(a), u(b), u(d));
      out.WriteLine(line);
      if (withTexture)
        std::snprintf(line, sizeof line, form, u(a), u(a), u(d), u(d), u(c), u(c));
      else
        std::snprintf(line, sizeof line, form, u(a), u(d), u(c));
      out.WriteLine(line);
      size.triangles += 2;
    }
  }
  out.close();
  size.bytes = std::filesystem::file_size(path);
  return size;
}

}  // namespace tolvane::gen
