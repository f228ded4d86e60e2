// Fuzzes the figure scan and every list scan (body parts, channels, materials, geometry,
// textures) for the kinds of file they tell apart: a figure, a pose, a hair and a prop.
// Each scan runs twice, reading the file through a large window and then either through
// a small window or through a shared read of small blocks, and the two results must be
// the same, faults and all. Input: a layout byte (the kind, which small reading, its
// size), then the figure text.
#include "text/list_scans.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_files.h"
#include "text/runtime_error.h"
#include "text/shared_read.h"

namespace tolvane::fuzz {
namespace {

// All five scans' results and the number of the run-time error each stopped on.
struct Lists {
  std::vector<std::string> parts;
  text::ChannelScan channels;
  text::MaterialScan materials;
  text::GeometryScan geometry;
  text::TextureScan textures;
  int faults[5] = {0, 0, 0, 0, 0};
};

// The first of the scans whose results differ, or nothing.
const char* difference(const Lists& a, const Lists& b) {
  const text::GeometryScan &g = a.geometry, &h = b.geometry;
  const text::TextureScan &t = a.textures, &u = b.textures;
  if (a.faults[0] != b.faults[0] || a.parts != b.parts) return "body parts";
  if (a.faults[1] != b.faults[1] || a.channels.channels != b.channels.channels ||
      a.channels.reorder != b.channels.reorder)
    return "channels";
  if (a.faults[2] != b.faults[2] || a.materials.names != b.materials.names ||
      a.materials.colours != b.materials.colours || a.materials.hiLites != b.materials.hiLites)
    return "materials";
  if (a.faults[3] != b.faults[3] || g.customGeometry != h.customGeometry || g.mainFound != h.mainFound ||
      g.mainObj != h.mainObj || g.propCustomGeometry != h.propCustomGeometry || g.props != h.props)
    return "geometry";
  if (a.faults[4] != b.faults[4] || t.primaryFound != u.primaryFound || t.newMaps != u.newMaps ||
      t.texture != u.texture || t.transparency != u.transparency || t.reflection != u.reflection ||
      t.bump != u.bump)
    return "textures";
  return nullptr;
}

template <typename Scan>
void trap(int& fault, Scan scan) {
  try {
    scan();
  } catch (const text::RuntimeError& e) {
    fault = e.number();
  }
}

struct Way {
  std::size_t window = 4 << 20;
  std::size_t block = 0;  // 0: the scanner reads the file itself
  std::size_t overlap = 0;
};

std::unique_ptr<text::FigureScanner> scanner(const std::filesystem::path& file, const Way& way) {
  if (way.block == 0) return std::make_unique<text::FigureScanner>(file, way.window);
  auto shared = std::make_shared<text::SharedRead>(file, way.block, 2, way.overlap);
  return std::make_unique<text::FigureScanner>(shared, 0, way.window);
}

Lists scanAll(const std::filesystem::path& file, const std::string& kind, const Way& way) {
  bool propFile = kind == "hr2" || kind == "pp2";
  bool hair = kind == "hr2";
  // Known entries as a second open finds them in the lists.
  const std::vector<std::string> knownProps{"No Props in CR2"};
  const std::vector<std::string> knownMaps{"NO_MAP"};
  Lists l;
  trap(l.faults[0], [&] { l.parts = text::scanBodyParts(*scanner(file, way), kind); });
  trap(l.faults[1], [&] { l.channels = text::scanChannels(*scanner(file, way), hair); });
  trap(l.faults[2], [&] { l.materials = text::scanMaterials(*scanner(file, way), kind); });
  trap(l.faults[3], [&] { text::scanGeometry(*scanner(file, way), propFile, knownProps, l.geometry); });
  trap(l.faults[4], [&] { text::scanTextures(*scanner(file, way), hair, knownMaps, l.textures); });
  return l;
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::fuzz;
  static const char* const kKinds[] = {"cr2", "pz2", "hr2", "pp2"};
  std::uint8_t layout = size > 0 ? data[0] : 0;
  std::string_view body = asText(data, size).substr(std::min<std::size_t>(size, 1));
  const char* kind = kKinds[layout & 3];
  // Small enough that most lines cross an edge, large enough that a scan is not all
  // system calls.
  std::size_t step = layout >> 3;
  std::size_t small = 16 + step * 4;
  bool shared = (layout & 4) != 0;
  Way edges = shared ? Way{2 + step, small, step % 7} : Way{small, 0, 0};
  auto file = writeInput("figure.cr2", body);
  if (const char* scan = difference(scanAll(file, kind, Way{}), scanAll(file, kind, edges)))
    fail(std::string("the ") + scan + " scan of a " + kind + " differs through " +
         (shared ? "small shared blocks" : "a small window"));
  return 0;
}
