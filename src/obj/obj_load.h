// The OBJ workbench's load (LabelView): one pass over the OBJ text fills the vertex
// table, copies groups, materials and faces into FArray.txt, vertices into VArray.txt
// and texture vertices into VTArray.txt, fills the group and material lists with their
// colours, draws the three still pictures and builds the live view's list. A model
// lower than 0.1 is shown from a stretched copy (Param.obj); a file with fewer than
// three records is shown as a morph's points.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// Record widths of the scratch arrays.
constexpr std::size_t kFaceRecord = 400;
constexpr std::size_t kVertexRecord = 50;

// LabelView's click.
void LoadObj(Program& program);

// The geometry path of a plain load: an OBJ opened by itself, else the main form's
// TextMainOBJ, a colon path under the Poser folder's Runtime\Geometries.
std::string plainSourcePath(Program& program);

// A colour item of ListGroupColors and ListMATColors: "g head*12 200 54".
std::string colourItem(const std::string& line, int red, int green, int blue);
// Red, green and blue of an item, 0 where the item has none.
void colourOfItem(const std::string& item, int& red, int& green, int& blue);

}  // namespace tolvane::obj
