#include "ui/opening.h"

namespace tolvane::ui {

Opening::Opening() : Form("Opening") {
  setCaption("Tolvane");
  setVisible(true);
  // Nothing is open: the figure page waits behind the splash picture.
  for (Control* c : controls()) {
    if (c->kind() == ControlKind::Picture || c->kind() == ControlKind::Label ||
        c->kind() == ControlKind::ListBox || c->kind() == ControlKind::TextBox ||
        c->kind() == ControlKind::Frame || c->kind() == ControlKind::Option ||
        c->kind() == ControlKind::CheckBox || c->kind() == ControlKind::Slider)
      c->setVisible(false);
  }
  TextOpeningNotes.setVisible(true);
  MenuCR2Tools.setEnabled(false);
  LabelFileNameForEditor.setVisible(false);
  LabelChannelFileNameForEditor.setVisible(false);
  PictureTile.setVisible(false);
  constexpr Colour kPathBlue = 0xC00000;
  for (Label* l : {&LabelMainOBJPath, &LabelMainTex, &LabelMainBump, &LabelMainReflect, &LabelMainTrans})
    l->setForeColor(kPathBlue);
  LabelOpenSource.setCaption("Open Source");
  LabelOpenSourceTitle.setCaption("Source file:");
  LabelBodyParts.setCaption("Body Parts");
  LabelMaterials.setCaption("Materials");
  LabelPropOBJs.setCaption("Prop OBJs");
  LabelMainOBJPath.setCaption("Main OBJ");
  LabelMainTex.setCaption("Texture");
  LabelMainBump.setCaption("Bump");
  LabelMainReflect.setCaption("Reflection");
  LabelMainTrans.setCaption("Transparency");
  OptionChannelRename.setCaption("Channel");
  OptionBodyPartRename.setCaption("Body part");
  OptionChannelRename.setValue(true);
  LabelX.setCaption("X");
  LabelY.setCaption("Y");
  LabelZ.setCaption("Z");
  DirTransferParts.setVisible(false);
  CheckOBJBatch.setToolTip("Scales all files in the current folder.");
  ListChannelsReorder.setToolTip("Doubleclick a channel to change the tracking speed.");
  ListTwistParts.setItems({"Thigh", "Hip (as alternate Thigh name)", "Shoulder"});
}

FormNotes::FormNotes() : Form("FormNotes") {
  setCaption("Notebook");
  CommandSave.setCaption("Save");
  CommandClose.setCaption("Close");
}

}  // namespace tolvane::ui
