#include "text/obj_text.h"

#include <cmath>

#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"

namespace tolvane::text {

namespace {

bool startsWith(std::string_view line, std::string_view prefix) {
  return line.substr(0, prefix.size()) == prefix;
}

// Mid from a 1-based start, as a view.
std::string_view from(std::string_view text, std::size_t start) {
  return start - 1 < text.size() ? text.substr(start - 1) : std::string_view();
}

// The text before the first blank, as Left(text, InStr(text, " ") - 1) takes it: no
// blank at all is a negative length, run-time error 5.
std::size_t blankOrFail(std::string_view text) {
  std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) raiseError(kInvalidProcedureCall);
  return blank;
}

}  // namespace

ObjLineKind normaliseObjLine(std::string& line) {
  if (startsWith(line, " ")) line.erase(0, 1);
  // The longer TAB form first, so that a tabbed texture line stays one.
  if (startsWith(line, "\tvt"))
    line = "vt " + std::string(from(line, 4));
  else if (startsWith(line, "\tv"))
    line = "v " + std::string(from(line, 3));
  if (startsWith(line, "vt")) return ObjLineKind::TextureVertex;
  if (startsWith(line, "g")) return ObjLineKind::Group;
  if (startsWith(line, "use")) return ObjLineKind::Material;
  if (startsWith(line, "v ")) {
    if (startsWith(line, "v  ")) line.erase(1, 1);
    return ObjLineKind::Vertex;
  }
  if (startsWith(line, "fo"))
    line.erase(1, 1);
  else if (startsWith(line, "\tf"))
    line = "f " + std::string(from(line, 3));
  return startsWith(line, "f ") ? ObjLineKind::Face : ObjLineKind::Ignored;
}

std::string_view groupName(std::string_view line) { return from(line, 3); }
std::string_view materialName(std::string_view line) { return from(line, 8); }

void splitVertexLine(std::string_view line, VertexText& out) {
  std::string_view t = line;
  if (charAt(t, 3) != '-') t = from(t, 4);
  bool flag = false;
  if (charAt(t, 3) == '-') {
    flag = charAt(t, 4) == '.';
    t = from(t, 3);
  }
  std::size_t blank = blankOrFail(t);
  out.x = t.substr(0, blank);
  t = t.substr(blank + 1);  // the rest, less the blank it begins with
  if (flag) {
    // "-0." and x from its fourth character, as long as x less three.
    if (out.x.size() < 3) raiseError(kInvalidProcedureCall);
    out.rewrittenX = "-0." + std::string(out.x.substr(3, out.x.size() - 3));
    out.x = out.rewrittenX;
  }
  blank = blankOrFail(t);
  out.y = t.substr(0, blank);
  out.z = t.substr(blank + 1);
}

std::string textureRecord(std::string_view line) {
  std::string_view t = from(line, 4);
  if (startsWith(t, " ")) t.remove_prefix(1);
  std::size_t blank = blankOrFail(t);
  float u = CSng(Val(t.substr(0, blank)));
  float v = CSng(Val(t.substr(blank + 1)));
  return StrSingle(u) + "*" + StrSingle(v);
}

void walkFaceCorners(std::string_view line, FaceCorners& out) {
  out.positions = 0;
  out.stored = 0;
  std::string_view rest = from(line, 3);
  for (;;) {
    std::size_t end = rest.find('/');
    if (end == std::string_view::npos) end = rest.find(' ');
    if (end == std::string_view::npos) end = rest.size();
    std::string_view index = rest.substr(0, end);
    if (!index.empty()) {
      // A relative index is only shifted by one: "-1" reaches slot 0.
      double value = index.front() == '-' ? Val(index) + 1 : Val(index);
      if (out.index.size() <= out.positions) {
        out.index.resize(out.positions + 1);
        out.set.resize(out.positions + 1);
      }
      for (std::size_t p = out.stored; p < out.positions; ++p) out.set[p] = 0;
      out.index[out.positions] = value;
      out.set[out.positions] = 1;
      out.stored = out.positions + 1;
    }
    ++out.positions;
    std::size_t blank = rest.find(' ');
    if (blank == std::string_view::npos) break;
    rest = rest.substr(blank + 1);
  }
}

std::uint32_t cornerSlot(const FaceCorners& corners, std::size_t position, std::uint64_t vertexCount) {
  if (position >= corners.stored) raiseError(kSubscriptOutOfRange);
  double value = corners.set[position] ? corners.index[position] : 0.0;
  double slot = std::nearbyint(value);
  if (!(slot >= 0 && slot <= static_cast<double>(vertexCount))) raiseError(kSubscriptOutOfRange);
  return static_cast<std::uint32_t>(slot);
}

}  // namespace tolvane::text
