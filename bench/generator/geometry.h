// Boxes, the stand-in geometry of every part and prop the generator writes: their
// corners and faces, as OBJ text or as an embedded geomCustom block.
#pragma once

#include <array>
#include <string>

#include "figure_plan.h"
#include "text_format.h"

namespace tolvane::gen {

std::array<Vec, 8> boxCorners(const Vec& center, const Vec& half);
// Quads as 0-based corner indices, wound outwards: back, front, x-, x+, bottom, top.
extern const int kBoxFaces[6][4];

// "v x y z" with numbers in Poser's short form (a value below one keeps its "0").
std::string vertexLine(const Vec& v);

// An embedded mesh: the geomCustom line at `depth`, its block one tab deeper.
void writeGeomCustom(Sink& out, int depth, const Vec& center, const Vec& half, const std::string& group,
                     const std::string& material);

}  // namespace tolvane::gen
