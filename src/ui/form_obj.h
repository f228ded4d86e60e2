// The OBJ workbench's form: the vertex table and the live view's vertex list in memory,
// the bounds, counters and view scales of the last load, the live view's camera and
// rotation state, the pending renames, and the controls (the still pictures, the group
// and material lists with their hidden colour lists, the rename boxes, the options).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/drawn_picture.h"
#include "ui/form.h"
#include "ui/mesh_renderer.h"

namespace tolvane::ui {

constexpr const char* kObjViewerCaption = "OBJ Viewer ";
// Pixel size of the drawing pictures: the still pictures, the live view, the preview.
constexpr int kObjPictureSize = 480;

// A list shown with a colour per line: the coloured listing of groups or materials.
class ColourList : public ListBox {
 public:
  ColourList(Form* form, std::string name) : ListBox(form, std::move(name)) {}
  const std::vector<Colour>& colours() const { return m_colours; }
  void setLines(std::vector<std::string> lines, std::vector<Colour> colours);

 private:
  std::vector<Colour> m_colours;
};

struct ObjVertex {
  float x = 0, y = 0, z = 0;
};

class FormOBJ : public Form {
 public:
  FormOBJ();

  // Back to the state of a form just shown: lists, labels, boxes and pictures.
  void reset();
  // The path of the geometry, read back from the caption after "OBJ Viewer ".
  std::string captionPath() const;

  // Flags a caller sets before LabelView's click.
  bool reload = false;
  bool useParamObj = false;
  bool loaded = false;

  // The mesh of the last load. Slot 0 of the vertex table stays all zero.
  std::vector<ObjVertex> vertexTable{ObjVertex{}};
  float maxX = 0, minX = 0, maxY = 0;
  std::uint64_t faceCount = 0, recordCount = 0, vertexCount = 0, textureCount = 0;
  bool hasTextureVertices = false;
  // The live view's list: the first three corners of the faces, scaled.
  VertexList vertexList;
  double xScale = 1, yScale = 1;
  int currentView = 1;  // 1 front, 2 side, 3 top

  // The sizes the view scales come from: the visible viewer and the screen in pixels,
  // the drawing picture in inches, which makes a mesh in Poser's units (a figure about
  // 0.7 high) fill the live view.
  double screenWidth = 1280, screenHeight = 1024;
  double viewerWidth = kObjPictureSize, viewerHeight = kObjPictureSize;
  double viewer2WidthInches = kObjPictureSize / 96.0, viewer2HeightInches = kObjPictureSize / 96.0;

  // Live view state; the angle, speed and camera outlive a load.
  std::int32_t angle = 0;
  std::int16_t speed = 1;
  float zoom = 0;          // 0: not used yet (starts at 2.0)
  float cameraHeight = 0;  // 0: not used yet (starts at 2.5)
  std::int16_t stopFlag = 0;
  bool drawingHidden = false;
  float material[3] = {1, 0, 0};
  bool secondaryHeld = false;  // a secondary mesh is shown beside this one
  // The renderer of the live view: the window's, or the software one into
  // PictureObjViewer2's pixels.
  MeshRenderer& renderer();
  void setRenderer(MeshRenderer* renderer) { m_externalRenderer = renderer; }

  // Corners of the zoom rectangle.
  int zoomX1 = 0, zoomY1 = 0, zoomX2 = 0, zoomY2 = 0;
  bool zoomDragging = false;

  // A rename or a deletion is pending until the form closes.
  bool renamed = false;
  // A close is waiting for the group or material list to be closed.
  int closeWaiting = 0;  // 1 the material list, 2 the group list

  // The secondary mesh of PictureAddOBJ: its vertex count and the scales of its pictures.
  std::uint64_t addVertexCount = 0;
  // Where the user dragged it, in model units: the shift the merge adds to its vertices.
  double addShiftX = 0, addShiftY = 0, addShiftZ = 0;
  // The lopper: lop mode (-1 while PictureLop is down), the box corners in picture units
  // (a box is set once a drag ended) and the view it was drawn in.
  std::int16_t lopMode = 0;
  int boxX1 = 0, boxY1 = 0, boxX2 = 0, boxY2 = 0;
  bool boxSet = false;
  bool boxDragging = false;

  Label LabelView{this, "LabelView"};
  Label LabelMirror{this, "LabelMirror"};
  Label LabelWait{this, "LabelWait"};
  Label LabelBiggestX{this, "LabelBiggestX"};
  Label LabelSmallestX{this, "LabelSmallestX"};
  Label LabelBiggestY{this, "LabelBiggestY"};
  Label LabelUVMap{this, "LabelUVMap"};
  Label LabelViewCR2TexMap{this, "LabelViewCR2TexMap"};
  Label LabelSecMap{this, "LabelSecMap"};
  Label LabelSaveMap{this, "LabelSaveMap"};
  Label LabelMakeUV{this, "LabelMakeUV"};
  Label LabelApplyMap{this, "LabelApplyMap"};
  Label LabelHotKeys{this, "LabelHotKeys"};
  Label LabelBoss{this, "LabelBoss"};
  Label LabelPlay{this, "LabelPlay"};
  Label LabelRichRename{this, "LabelRichRename"};
  Label CommandListGroups{this, "CommandListGroups"};
  Label CommandListMats{this, "CommandListMats"};

  Picture PictureNewFile{this, "PictureNewFile"};
  Picture PictureNotes{this, "PictureNotes"};
  Picture PictureLop{this, "PictureLop"};
  Picture PicturePhiLopper{this, "PicturePhiLopper"};
  Picture PictureAddOBJ{this, "PictureAddOBJ"};
  Picture PictureMerge{this, "PictureMerge"};

  DrawnPicture PictureOBJViewer{this, "PictureOBJViewer", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureObjViewer2{this, "PictureObjViewer2", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureStore{this, "PictureStore", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureStore2{this, "PictureStore2", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureStore3{this, "PictureStore3", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureNoDX{this, "PictureNoDX", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureUVMap{this, "PictureUVMap", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureSecMap{this, "PictureSecMap", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureZoom{this, "PictureZoom", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureAddObjFront{this, "PictureAddObjFront", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureAddObjSide{this, "PictureAddObjSide", kObjPictureSize, kObjPictureSize};
  DrawnPicture PictureAddObjTop{this, "PictureAddObjTop", kObjPictureSize, kObjPictureSize};
  Image ImageBoss{this, "ImageBoss"};
  Image ImageRDS{this, "ImageRDS"};

  Frame FrameView{this, "FrameView"};
  OptionButton OptionFrontView{this, "OptionFrontView", &FrameView};
  OptionButton OptionSideView{this, "OptionSideView", &FrameView};
  OptionButton OptionTopView{this, "OptionTopView", &FrameView};
  Frame FrameColors{this, "FrameColors"};
  OptionButton OptionColorGroups{this, "OptionColorGroups", &FrameColors};
  OptionButton OptionColorMaterials{this, "OptionColorMaterials", &FrameColors};
  OptionButton OptionNoColors{this, "OptionNoColors", &FrameColors};
  // The two drawing modes of the live view can be on together.
  CheckBox OptionShowPolys{this, "OptionShowPolys"};
  CheckBox OptionShowPoints{this, "OptionShowPoints"};
  CheckBox CheckHiddenFaces{this, "CheckHiddenFaces"};
  CheckBox CheckSaveGroups{this, "CheckSaveGroups"};
  CheckBox CheckSaveMaterials{this, "CheckSaveMaterials"};

  ListBox ListGroups{this, "ListGroups"};
  ListBox ListMaterials{this, "ListMaterials"};
  ListBox ListGroupColors{this, "ListGroupColors"};
  ListBox ListMATColors{this, "ListMATColors"};
  ListBox ListGrpRen{this, "ListGrpRen"};
  ListBox ListMatRen{this, "ListMatRen"};
  ListBox ListGroupsSave{this, "ListGroupsSave", true};
  ListBox ListMaterialsSave{this, "ListMaterialsSave", true};
  ListBox ListHotKeys{this, "ListHotKeys"};
  // One colour value for each click on the mesh in lop mode.
  ListBox ListLop{this, "ListLop"};
  ColourList RichTextBoxGroups{this, "RichTextBoxGroups"};
  ColourList RichTextBoxMaterials{this, "RichTextBoxMaterials"};

  TextBox TextGrpRename{this, "TextGrpRename"};
  TextBox TextMatRename{this, "TextMatRename"};
  TextBox TextNotes{this, "TextNotes", true};
  TextBox TextMapSize{this, "TextMapSize"};
  TextBox TextMapSizeSec{this, "TextMapSizeSec"};

  // Turns the live view one step per tick while the rotation runs.
  Timer TimerRotate{this, "TimerRotate", 16};

 private:
  void setUp();
  MeshRenderer* m_externalRenderer = nullptr;
  std::unique_ptr<MeshRenderer> m_softwareRenderer;
};

// The captions of the key table, in the order ListHotKeys shows them.
const std::vector<std::string>& objHotKeyCaptions();

}  // namespace tolvane::ui
