#include "ui/form_obj.h"

#include <cstring>

namespace tolvane::ui {

void ColourList::setLines(std::vector<std::string> lines, std::vector<Colour> colours) {
  m_colours = std::move(colours);
  m_colours.resize(lines.size(), kBlack);
  setItems(std::move(lines));
}

const std::vector<std::string>& objHotKeyCaptions() {
  static const std::vector<std::string> captions = {
      "ESC:show/hide drawing", "R: refresh OBJ",     "Space: start/stop rotate",
      "Numpad /: zoom out",    "Numpad *: zoom in",  "Numpad +: move up",
      "Numpad -: move down",   "Numpad 9: speed up", "Numpad 3: slow down!"};
  return captions;
}

FormOBJ::FormOBJ() : Form("FormOBJ") {
  LabelView.setCaption("View OBJ");
  LabelMirror.setCaption("Mirror");
  LabelWait.setCaption("Loading, please wait...");
  LabelUVMap.setCaption("UV Map");
  LabelViewCR2TexMap.setCaption("View CR2 Texture Map");
  LabelSecMap.setCaption("Secondary Map");
  LabelSaveMap.setCaption("Save Map");
  LabelMakeUV.setCaption("Make UV");
  LabelApplyMap.setCaption("Apply Map");
  LabelHotKeys.setCaption("Hot Keys");
  LabelRichRename.setCaption("Rename");
  CommandListGroups.setCaption("List Groups");
  CommandListMats.setCaption("List Materials");
  OptionFrontView.setCaption("Front");
  OptionSideView.setCaption("Side");
  OptionTopView.setCaption("Top");
  OptionColorGroups.setCaption("Color Groups");
  OptionColorMaterials.setCaption("Color Materials");
  OptionNoColors.setCaption("No Colors");
  OptionShowPolys.setCaption("Polygons");
  OptionShowPoints.setCaption("Points");
  CheckHiddenFaces.setCaption("Show All Faces");
  CheckSaveGroups.setCaption("Save Selected Groups");
  CheckSaveMaterials.setCaption("Save Selected Materials");
  const char* renameTip = "Doubleclick to rename, check box at bottom to select groups to save.";
  ListGroups.setToolTip(renameTip);
  ListMaterials.setToolTip(renameTip);
  TextGrpRename.setToolTip("Hit enter when done editing");
  TextMatRename.setToolTip("Hit enter when done editing");
  PictureZoom.setToolTip("Click and drag in the white window...");
  ListHotKeys.setToolTip("Right click to hide");
  LabelHotKeys.setToolTip("Right click to hide");
  ListHotKeys.setItems(objHotKeyCaptions());
  for (DrawnPicture* p :
       {&PictureOBJViewer, &PictureObjViewer2, &PictureStore, &PictureStore2, &PictureStore3, &PictureNoDX,
        &PictureUVMap, &PictureSecMap, &PictureZoom, &PictureAddObjFront, &PictureAddObjSide,
        &PictureAddObjTop})
    p->setBackColor(kWhite);
  setUp();
}

void FormOBJ::setUp() {
  LabelBoss.setCaption("Boss Button");
  LabelPlay.setCaption("PLAY");
  OptionFrontView.setValue(true);
  OptionColorGroups.setValue(true);
  OptionShowPolys.setValue(true);
  OptionShowPoints.setValue(false);
  CheckHiddenFaces.setValue(false);
  CheckSaveGroups.setValue(false);
  CheckSaveMaterials.setValue(false);
  TextMapSize.setText("Enter Map Size");
  TextMapSizeSec.setText("Enter Map Size");
  lopMode = 0;
  boxSet = boxDragging = false;
  ListLop.clear();
  for (Control* c : std::initializer_list<Control*>{&LabelMirror,
                                                    &LabelWait,
                                                    &LabelUVMap,
                                                    &LabelViewCR2TexMap,
                                                    &LabelSecMap,
                                                    &LabelSaveMap,
                                                    &TextMapSize,
                                                    &TextMapSizeSec,
                                                    &PictureSecMap,
                                                    &PictureMerge,
                                                    &ListLop,
                                                    &LabelRichRename,
                                                    &CommandListGroups,
                                                    &CommandListMats,
                                                    &PictureNewFile,
                                                    &PictureNotes,
                                                    &PictureLop,
                                                    &PicturePhiLopper,
                                                    &PictureObjViewer2,
                                                    &PictureStore,
                                                    &PictureStore2,
                                                    &PictureStore3,
                                                    &PictureNoDX,
                                                    &PictureUVMap,
                                                    &PictureAddObjFront,
                                                    &PictureAddObjSide,
                                                    &PictureAddObjTop,
                                                    &ImageBoss,
                                                    &ImageRDS,
                                                    &OptionShowPolys,
                                                    &OptionShowPoints,
                                                    &CheckSaveGroups,
                                                    &CheckSaveMaterials,
                                                    &ListGroups,
                                                    &ListMaterials,
                                                    &ListGroupColors,
                                                    &ListMATColors,
                                                    &ListGrpRen,
                                                    &ListMatRen,
                                                    &ListGroupsSave,
                                                    &ListMaterialsSave,
                                                    &ListHotKeys,
                                                    &RichTextBoxGroups,
                                                    &RichTextBoxMaterials,
                                                    &TextGrpRename,
                                                    &TextMatRename,
                                                    &TextNotes})
    c->setVisible(false);
  TimerRotate.setEnabled(false);
}

void FormOBJ::reset() {
  for (ListBox* l : {&ListGroups, &ListMaterials, &ListGroupColors, &ListMATColors, &ListGrpRen, &ListMatRen,
                     static_cast<ListBox*>(&ListGroupsSave), static_cast<ListBox*>(&ListMaterialsSave)})
    l->clear();
  RichTextBoxGroups.setLines({}, {});
  RichTextBoxMaterials.setLines({}, {});
  for (TextBox* t : {&TextGrpRename, &TextMatRename, &TextNotes}) t->setText("");
  for (Label* l : {&LabelBiggestX, &LabelSmallestX, &LabelBiggestY}) l->setCaption("");
  for (DrawnPicture* p :
       {&PictureOBJViewer, &PictureObjViewer2, &PictureStore, &PictureStore2, &PictureStore3, &PictureNoDX,
        &PictureUVMap, &PictureSecMap, &PictureZoom, &PictureAddObjFront, &PictureAddObjSide,
        &PictureAddObjTop}) {
    p->Cls();
    p->refresh();
  }
  vertexTable.assign(1, ObjVertex{});
  vertexList.release();
  maxX = minX = maxY = 0;
  faceCount = recordCount = vertexCount = textureCount = 0;
  hasTextureVertices = false;
  loaded = reload = useParamObj = false;
  renamed = false;
  closeWaiting = 0;
  stopFlag = 0;
  drawingHidden = false;
  secondaryHeld = false;
  addVertexCount = 0;
  addShiftX = addShiftY = addShiftZ = 0;
  setUp();
}

std::string FormOBJ::captionPath() const {
  const std::string& c = caption();
  std::size_t skip = std::strlen(kObjViewerCaption);
  return c.size() > skip ? c.substr(skip) : std::string();
}

MeshRenderer& FormOBJ::renderer() {
  if (m_externalRenderer != nullptr) return *m_externalRenderer;
  if (!m_softwareRenderer)
    m_softwareRenderer =
        softwareMeshRenderer(PictureObjViewer2.raster(), [this] { PictureObjViewer2.refresh(); });
  return *m_softwareRenderer;
}

}  // namespace tolvane::ui
