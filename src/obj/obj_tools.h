// The workbench's mesh tools: the mirror, the secondary mesh and the merge, the UV
// templates, the lopper and the start over with a new file.
#pragma once

#include <string>
#include <string_view>

#include "program/events.h"
#include "text/run_time_number.h"

namespace tolvane {
class Program;
namespace ui {
class FormOBJ;
}
}  // namespace tolvane

namespace tolvane::obj {

// LabelMirror: the three questions, the flip of the vertex text, the save and reload.
void LabelMirrorClick(Program& program);

// PictureAddOBJ: the secondary mesh, parsed into its own arrays and drawn in the three
// Add pictures; PictureMerge: both meshes in MergeTest.obj.
void PictureAddOBJClick(Program& program);
void PictureMergeClick(Program& program);
// A drag on a still picture while a secondary mesh is held moves the Add pictures.
void MoveTopAdd(Program& program, int view, int dx, int dy);
// How far the secondary mesh's picture for `view` (1 front, 2 side, 3 top) is drawn
// from where it was parsed, in picture pixels: the held shift in that view's two axes.
void AddPictureOffset(const ui::FormOBJ& form, int view, int& dx, int& dy);

// The UV templates.
void LabelUVMapClick(Program& program);
void LabelSecMapClick(Program& program);
void LabelSaveMapClick(Program& program);
// Enter in TextMapSize (secondary false) or TextMapSizeSec (true): the bitmap beside the OBJ.
void SaveMapTemplate(Program& program, bool secondary);
// A map-size box got the focus: the prompt text goes.
void MapSizeFocus(Program& program, bool secondary);
void LabelMakeUVClick(Program& program);
void LabelViewCR2TexMapClick(Program& program);
void LabelViewCR2TexMapRightClick(Program& program);
void LabelApplyMapClick(Program& program);
void LabelApplyMapRightClick(Program& program);

// The lopper.
void PictureLopClick(Program& program);
void StillPictureLopPress(Program& program, const EventArgs& args);
void StillPictureLopMove(Program& program, const EventArgs& args);
void StillPictureLopRelease(Program& program, const EventArgs& args);
// Writes Lop.txt: the vertices, the texture vertices, the faces that stay.
void RunLopper(Program& program);
void PicturePhiLopperClick(Program& program);
void PicturePhiLopperRightClick(Program& program);
// FormTree came back to the workbench.
void PhiLopperReturn(Program& program);
void PictureNewFileClick(Program& program);

// A record without the blanks around it, as a view.
inline std::string_view trimmedView(std::string_view record) {
  record = record.substr(0, text::lengthWithoutTrailingBlanks(record));
  std::size_t first = record.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : record.substr(first);
}

// "vt " and the two texts of a texture record ("u*v"), each trimmed; the append form
// adds the line to `out`.
std::string textureLine(std::string_view record);
void appendTextureLine(std::string& out, std::string_view record);

// Deletes the scratch files of the later tools, as the close does.
void deleteToolScratch(Program& program);

}  // namespace tolvane::obj
