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

// A corner index: plain digits, as nearly every file writes them, are read at once;
// anything else goes through Val.
double indexValue(std::string_view index) {
  if (index.size() > 9) return Val(index);
  std::uint32_t value = 0;
  for (char c : index) {
    if (c < '0' || c > '9') return Val(index);
    value = value * 10 + static_cast<std::uint32_t>(c - '0');
  }
  return value;
}

// `line` becomes `prefix` and the text of `line` from `start` (0-based), kept in
// `scratch`; `line` may already view `scratch`.
void rewrite(std::string& scratch, std::string_view& line, std::string_view prefix, std::size_t start) {
  std::string text(prefix);
  if (start < line.size()) text.append(line.substr(start));
  scratch.swap(text);
  line = scratch;
}

}  // namespace

ObjLineKind normaliseObjLine(std::string_view raw, std::string& scratch, std::string_view& line) {
  line = raw;
  if (startsWith(line, " ")) line.remove_prefix(1);
  if (line.empty()) return ObjLineKind::Ignored;
  // The longer TAB form first, so that a tabbed texture line stays one.
  if (line[0] == '\t') {
    if (startsWith(line, "\tvt"))
      rewrite(scratch, line, "vt ", 3);
    else if (startsWith(line, "\tv"))
      rewrite(scratch, line, "v ", 2);
  }
  switch (line[0]) {
    case 'v':
      if (startsWith(line, "vt")) return ObjLineKind::TextureVertex;
      if (!startsWith(line, "v ")) return ObjLineKind::Ignored;
      if (startsWith(line, "v  ")) rewrite(scratch, line, "v", 2);
      return ObjLineKind::Vertex;
    case 'g':
      return ObjLineKind::Group;
    case 'u':
      return startsWith(line, "use") ? ObjLineKind::Material : ObjLineKind::Ignored;
    case 'f':
      if (startsWith(line, "fo")) rewrite(scratch, line, "f", 2);
      return startsWith(line, "f ") ? ObjLineKind::Face : ObjLineKind::Ignored;
    case '\t':
      if (!startsWith(line, "\tf")) return ObjLineKind::Ignored;
      rewrite(scratch, line, "f ", 2);
      return ObjLineKind::Face;
    default:
      return ObjLineKind::Ignored;
  }
}

ObjLineKind normaliseObjLine(std::string& line) {
  std::string scratch;
  std::string_view view;
  ObjLineKind kind = normaliseObjLine(line, scratch, view);
  line = std::string(view);
  return kind;
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
      double value = index.front() == '-' ? Val(index) + 1 : indexValue(index);
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
