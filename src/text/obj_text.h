// The Wavefront OBJ text as the workbench reads it: the dialect's normalisations (one
// leading blank off, the TAB forms, "fo", "v" with two blanks), the kind of each line,
// the positional vertex parser with its two oddities, the texture record "u*v", and the
// corner walk that takes the vertex index of each corner of a face. Every OBJ tool reads
// lines through these, so that all of them see a file the same way.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::text {

enum class ObjLineKind { Ignored, Vertex, TextureVertex, Group, Material, Face };

// Rewrites `line` as the dialect reads it and tells its kind. Tests are exact and
// case-sensitive: any line that begins with "g" is a group, any that begins with "use"
// a material; "vn", comments, "mtllib", "o", "s" and blank lines are ignored.
ObjLineKind normaliseObjLine(std::string& line);
// The same for a line read as a view: `line` becomes the normalised text, a view of `raw`
// when no rewrite is needed, else of `scratch`, which holds the rewritten line.
ObjLineKind normaliseObjLine(std::string_view raw, std::string& scratch, std::string_view& line);

// Name of a group line (from its third character) and of a material line (from the
// eighth).
std::string_view groupName(std::string_view line);
std::string_view materialName(std::string_view line);

// The three coordinate texts of a vertex line, cut by position. A line whose third
// character is not "-" loses "v " and one character more, so a positive x keeps only
// what follows its first digit ("v 1.5 ..." gives x ".5"); an x of the form "-.ddd"
// becomes "-0." and its digits from the second on ("-.512" gives "-0.12"). Too few
// fields is run-time error 5.
struct VertexText {
  std::string_view x, y, z;
  std::string rewrittenX;  // holds the "-0." form when the flag rewrote x
};
void splitVertexLine(std::string_view line, VertexText& out);

// The record of a texture line: u and v narrowed to single precision in the run-time's
// number text, joined by "*".
std::string textureRecord(std::string_view line);

// The corner walk of a face line. Each corner's index is the text before its first "/"
// (else its first blank); one beginning with "-" becomes its value plus one ("-1" is
// slot 0). An empty index (a second blank, a trailing blank) takes a corner position
// but stores nothing there.
struct FaceCorners {
  std::vector<double> index;  // by corner position; valid below `stored`
  std::size_t positions = 0;  // corner positions the walk went through
  std::size_t stored = 0;     // one past the last position that was stored
  std::vector<char> set;      // whether a position holds an index
};
void walkFaceCorners(std::string_view line, FaceCorners& out);

// The vertex slot of corner `position`: a position past the stored ones, or a slot
// outside 0 to `vertexCount`, is run-time error 9.
std::uint32_t cornerSlot(const FaceCorners& corners, std::size_t position, std::uint64_t vertexCount);

}  // namespace tolvane::text
