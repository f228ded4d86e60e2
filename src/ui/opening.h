// The main form: the two panes of the workspace, the path boxes, the tool pictures,
// the menus, and the form-level state that the tools read (the paths of the
// destination and source, PathsDirty, SelectedPart, ...).
#pragma once

#include <string>
#include <vector>

#include "ui/form.h"

namespace tolvane::ui {

class Opening : public Form {
 public:
  Opening();

  // Form-level state.
  std::string OpenFilePath;
  std::string LastOpenedPath;
  int PathsDirty = 0;
  std::string NewObjLine;
  int SkipOpenDialog = 0;
  int OpenRefused = 0;
  std::string SelectedPart;
  int MRUCount = 0;
  bool ExtraMaterialsMode = false;
  // The folder the master CR2 tool wrote to last: the stock figures' library root, or
  // empty for a master of the open file.
  std::string MasterLibPath;

  // Menus.
  MenuItem MenuFile{this, "MenuFile", "&File"};
  MenuItem MenuFileOpen{this, "MenuFileOpen", "&Open..."};
  MenuItem MenuFileSave{this, "MenuFileSave", "&Save"};
  MenuItem MenuFileSaveAs{this, "MenuFileSaveAs", "Save &As..."};
  MenuItem menuRecent{this, "menuRecent", "&Recent Files"};
  MenuItem MenuFileExit{this, "MenuFileExit", "E&xit"};
  MenuItem MenuCR2Tools{this, "MenuCR2Tools", "&CR2 Tools"};
  MenuItem MenuBrack{this, "MenuBrack", "&Bracket Checker"};
  MenuItem MenuAttrib{this, "MenuAttrib", "Clear &ReadOnly Attributes..."};
  MenuItem menuEditor{this, "menuEditor", "&Manual Editor"};
  MenuItem MenuPropObjRel{this, "MenuPropObjRel", "Prop Obj File Relocator"};
  MenuItem MenuPropTexRel{this, "MenuPropTexRel", "Prop Texture File Relocator"};
  // Dial attribute tools. MenuTwist, MenuLimits and MenuTransferParts stand in the menu
  // and do nothing when clicked.
  MenuItem MenuDials{this, "MenuDials", "Hide/Unhide Dials"};
  MenuItem MenuBendOff{this, "MenuBendOff", "Turn Off Bending"};
  MenuItem MenuBendOn{this, "MenuBendOn", "Turn On Bending"};
  MenuItem menuDialTrackSpeed{this, "menuDialTrackSpeed", "Dial Tracking Speed"};
  MenuItem MenuDumpIK{this, "MenuDumpIK", "Remove IK Chains"};
  MenuItem MenuTwist{this, "MenuTwist", "Remove/Replace Twist Parameters"};
  MenuItem MenuLimits{this, "MenuLimits", "Force/Unforce Limits"};
  MenuItem menuMirror{this, "menuMirror", "Mirror Morphs"};
  MenuItem menuMirrorOpen{this, "menuMirrorOpen", "Open Mirrored Morph Result"};
  MenuItem MenuTransferParts{this, "MenuTransferParts", "Transfer Body Parts"};
  MenuItem MenuNotepad{this, "MenuNotepad", "&Notepad"};
  MenuItem MenuNotebook{this, "MenuNotebook", "Open Note&book"};
  MenuItem menuERCUnique{this, "menuERCUnique", "ERC &Unique Name"};
  MenuItem MenuLibrary{this, "MenuLibrary", "&Library Files"};
  MenuItem MenuPoseFile{this, "MenuPoseFile", "Pose File Creator"};
  MenuItem menuMatFile{this, "menuMatFile", "MAT/MAP File Creator"};
  MenuItem MenuMor{this, "MenuMor", "MOR File Creator"};
  MenuItem menuCombinePZ2{this, "menuCombinePZ2", "Combine PZ2 MOR Files"};
  MenuItem MenuMasterCR2{this, "MenuMasterCR2", "&Master CR2"};
  MenuItem MenuP3Male{this, "MenuP3Male", "P3 Male"};
  MenuItem MenuP3Female{this, "MenuP3Female", "P3 Female"};
  MenuItem MenuP4Male{this, "MenuP4Male", "P4 Male"};
  MenuItem MenuP4Female{this, "MenuP4Female", "P4 Female"};
  MenuItem MenuVic{this, "MenuVic", "Victoria"};
  MenuItem MenuAnyMasterStandard{this, "MenuAnyMasterStandard", "Standard Master"};
  MenuItem MenuAnyMasterNoFBM{this, "MenuAnyMasterNoFBM", "Remove FBM's"};
  MenuItem menuNullFig{this, "menuNullFig", "Create Null Figure"};
  MenuItem menuGeomSwitch{this, "menuGeomSwitch", "Geometry Switching"};
  MenuItem MenuPZ3Cr2Conv{this, "MenuPZ3Cr2Conv", "PZ3 to CR2 Convertor"};
  MenuItem MenuMakeMTL{this, "MenuMakeMTL", "MTL File Creator"};
  MenuItem MenuPZ3AVI{this, "MenuPZ3AVI", "Create AVI Background File"};
  MenuItem MenuP3P4Cam{this, "MenuP3P4Cam", "P3 to P4 Camera Convertor"};
  MenuItem MenuPhi{this, "MenuPhi", "Create Phi File"};
  MenuItem MenuViewPhi{this, "MenuViewPhi", "View Phi File"};
  MenuItem MenuHelp{this, "MenuHelp", "&Help"};
  MenuItem MenuAbout{this, "MenuAbout", "&About Tolvane"};

  // Start, recently used list, notes, closing effect.
  ListBox ListMRU{this, "ListMRU"};
  TextBox TextOpeningNotes{this, "TextOpeningNotes", true};
  Image ImageSplash{this, "ImageSplash"};
  Image PictureTile{this, "PictureTile"};
  Timer TimerTileClose{this, "TimerTileClose", 10};

  // File labels.
  Label LabelFileName{this, "LabelFileName"};
  Label LabelFileNameForEditor{this, "LabelFileNameForEditor"};
  Label LabelChannelFileName{this, "LabelChannelFileName"};
  Label LabelChannelFileNameForEditor{this, "LabelChannelFileNameForEditor"};
  Label LabelFileSize{this, "LabelFileSize"};
  Label LabelOBJFileName{this, "LabelOBJFileName"};
  Label LabelOpenSource{this, "LabelOpenSource"};
  Label LabelOpenSourceTitle{this, "LabelOpenSourceTitle"};
  Label LabelBodyParts{this, "LabelBodyParts"};
  Label LabelMaterials{this, "LabelMaterials"};
  Label LabelPropOBJs{this, "LabelPropOBJs"};

  // The panes and the hidden lists.
  ListBox ListActors{this, "ListActors", true};
  ListBox ListChannels{this, "ListChannels", true};
  ListBox ListChannelsReorder{this, "ListChannelsReorder"};
  ListBox ListChannelsReorderByPart{this, "ListChannelsReorderByPart"};
  ListBox ListChannelsReorderNewOrder{this, "ListChannelsReorderNewOrder"};
  ListBox ListChannelsReorderReordered{this, "ListChannelsReorderReordered"};
  ListBox ListMaterials{this, "ListMaterials"};
  ListBox ListMATColors{this, "ListMATColors"};
  ListBox ListMatHiLite{this, "ListMatHiLite"};
  ListBox ListPropObj{this, "ListPropObj"};
  ListBox ListAllTexMaps{this, "ListAllTexMaps"};
  ListBox ListEMCs{this, "ListEMCs"};
  // Geometry switching: the actors or props to choose from, the chosen one's alternates.
  ListBox ListAltGeomActors{this, "ListAltGeomActors"};
  ListBox ListAltGeomNames{this, "ListAltGeomNames"};
  Timer TimerListAllTexMaps{this, "TimerListAllTexMaps", 3000};

  // Path boxes and their labels.
  Label LabelMainOBJPath{this, "LabelMainOBJPath"};
  TextBox TextMainOBJ{this, "TextMainOBJ"};
  Label LabelMainTex{this, "LabelMainTex"};
  TextBox TextMainTex{this, "TextMainTex"};
  Label LabelMainBump{this, "LabelMainBump"};
  TextBox TextMainBump{this, "TextMainBump"};
  Label LabelMainReflect{this, "LabelMainReflect"};
  TextBox TextMainReflect{this, "TextMainReflect"};
  Label LabelMainTrans{this, "LabelMainTrans"};
  TextBox TextMainTrans{this, "TextMainTrans"};

  // Material swatches.
  Picture PictureMatColor{this, "PictureMatColor"};
  Picture PictureMatHiLite{this, "PictureMatHiLite"};

  // Tool pictures.
  Picture PictureViewChannels{this, "PictureViewChannels"};
  Picture PictureCopyToDest{this, "PictureCopyToDest"};
  Picture PictureTrash{this, "PictureTrash"};
  Picture PictureJoints{this, "PictureJoints"};
  Picture PictureEMC{this, "PictureEMC"};
  Picture PictureEditor{this, "PictureEditor"};
  Picture PictureChangeRatio{this, "PictureChangeRatio"};
  Picture PictureRenameMorph{this, "PictureRenameMorph"};
  Picture PictureChannelReorderDone{this, "PictureChannelReorderDone"};
  Picture PictureOBJView{this, "PictureOBJView"};
  Picture PictureOBJExtract{this, "PictureOBJExtract"};
  Picture PictureScaleObj{this, "PictureScaleObj"};
  Picture PictureMash{this, "PictureMash"};
  Picture PictureMapViewer{this, "PictureMapViewer"};
  Picture PictureMirror{this, "PictureMirror"};
  TextBox TextMorphRename{this, "TextMorphRename"};
  OptionButton OptionChannelRename{this, "OptionChannelRename"};
  OptionButton OptionBodyPartRename{this, "OptionBodyPartRename"};
  TextBox TextTrackingSpeed{this, "TextTrackingSpeed"};
  // The side lists of the twist and limit routines: no control shows them, but a double
  // click on an entry runs the routine (a right click restores the twist lines).
  ListBox ListTwistParts{this, "ListTwistParts"};
  ListBox ListLimitParts{this, "ListLimitParts"};
  Label LabelX{this, "LabelX"};
  Label LabelY{this, "LabelY"};
  Label LabelZ{this, "LabelZ"};
  // The new figure name of the ERC unique name tool; Enter writes the copy.
  TextBox TextERCUnique{this, "TextERCUnique"};

  // OBJ page controls of the main form.
  TextBox TextOBJScale{this, "TextOBJScale"};
  Slider SliderOBJScale{this, "SliderOBJScale", 1, 1000};
  CheckBox CheckOBJBatch{this, "CheckOBJBatch"};
  ListBox ListOBJBatch{this, "ListOBJBatch"};  // hidden: the batch's OBJ paths
  Frame FrameMash{this, "FrameMash"};
  OptionButton OptionMashOBJ{this, "OptionMashOBJ", &FrameMash};
  OptionButton OptionMashMorph{this, "OptionMashMorph", &FrameMash};

  // The frames that carry the figure page.
  Frame FrameFigurePage{this, "FrameFigurePage"};
  Frame FramePaths{this, "FramePaths"};

  // Bracket Checker results.
  Picture PictureBrktsOK{this, "PictureBrktsOK"};
  Picture PictureBrktLeft{this, "PictureBrktLeft"};
  Picture PictureBrktRight{this, "PictureBrktRight"};
  Picture PicturePushPin{this, "PicturePushPin"};
  Timer TimerPushpin{this, "TimerPushpin", 700};

  // Channel and morph tools: where the last drag began ("Channels" or "Actors"),
  // whether dragging from each pane is on, the rename wait state, the morph chosen for
  // mirroring, and the line number of the trackingScale line found last.
  std::string DragSource;
  bool ListChannelsDragOn = false;
  bool ListActorsDragOn = false;
  int RenameWaitState = 0;
  std::string MirrorMorph;
  long long TrackingLine = 0;
  // The form's mode value: 69 while a double-click in ListActors chooses the body part
  // to transfer.
  int ToolMode = 0;

  // Body part transfer. MenuTransferParts starts nothing; the tool's picture is kept out
  // of sight: a click on it sets ToolMode to 69, a file dropped on it is the target.
  // The folder and file lists are the tool's own pickers, shown while it runs.
  Picture PictureTransferParts{this, "PictureTransferParts"};
  ComboBox DirTransferParts{this, "DirTransferParts"};
  ListBox FileTransferParts{this, "FileTransferParts"};
  // The target's IK chains, then the chosen chain's lines; the chain's link weights.
  ListBox ListTransferChains{this, "ListTransferChains"};
  ListBox ListTransferWeights{this, "ListTransferWeights"};
  // Where the guided run stands; each step that waits for the user is a state that the
  // next event advances.
  enum class TransferStep { Rest, PartCut, AwaitObj, AwaitName, AwaitChain, AwaitPlace };
  struct BodyPartTransfer {
    TransferStep step = TransferStep::Rest;
    std::string part;          // the moved part's name with suffix, as "lHand:1"
    std::string filePattern = "*.cr2";
    std::string target;        // the dropped figure
    std::string newPath;       // "New-" and its name, in the file list's folder
    std::string objLine;       // the new main OBJ line
    std::string newName;       // the typed name of the new part
    std::vector<std::string> chainHeads;  // the inkyChain lines of the target, in order
    int chain = -1;            // the chosen chain, by its order in the file
    int linkAt = -1;           // the new link's place among the chain's links
    std::string linkWeight;    // its weight, as written
  } Transfer;

  // Install and utilities: the install menu, the inventory list and its three pictures,
  // the hidden labels the install keeps its state in, the utilities' menu lines.
  MenuItem MenuInstallCR2{this, "MenuInstallCR2", "Install Files From CR2"};
  MenuItem menuDialRenamer{this, "menuDialRenamer", "Dial Renamer"};
  MenuItem menuRenumberFiles{this, "menuRenumberFiles", "Renumber File Sequence"};
  MenuItem menuCheckVer{this, "menuCheckVer", "Check for Current Version and News"};
  MenuItem menuWebTutorials{this, "menuWebTutorials", "Web Tutorials"};
  MenuItem MenuHelpContents{this, "MenuHelpContents", "Tolvane Help"};
  MenuItem MenuPoser{this, "MenuPoser", "Start Poser"};
  MenuItem MenuQuickboot{this, "MenuQuickboot", "Quickboot"};
  MenuItem MenuMagnifier{this, "MenuMagnifier", "Magnifier"};
  MenuItem MenuGraphPaper{this, "MenuGraphPaper", "Graph Paper"};
  MenuItem MenuLauncher{this, "MenuLauncher", "Launcher"};
  MenuItem MenuCoordMat{this, "MenuCoordMat", "Coordinate Materials with OBJ"};
  MenuItem menuNewCR2ExtOBJ{this, "menuNewCR2ExtOBJ", "New CR2 with External OBJ"};
  ListBox ListOBJExtract{this, "ListOBJExtract", true};
  Frame FrameExtractObj{this, "FrameExtractObj"};
  OptionButton OptionSepObjFiles{this, "OptionSepObjFiles", &FrameExtractObj};
  OptionButton OptionOneObjFile{this, "OptionOneObjFile", &FrameExtractObj};
  ListBox ListboxListCR2Files{this, "ListboxListCR2Files"};
  Picture PicturePrintCR2Files{this, "PicturePrintCR2Files"};
  Picture PictureInstallCR2{this, "PictureInstallCR2"};
  Picture PictureCR2InstallCancel{this, "PictureCR2InstallCancel"};
  Label LabelRtDir{this, "LabelRtDir"};
  Label LabelSaveObjPath{this, "LabelSaveObjPath"};
  Label LabelCR2NameLength{this, "LabelCR2NameLength"};
  Label LabelTexPathCR2Install{this, "LabelTexPathCR2Install"};
  Label LabelObjPathCR2Install{this, "LabelObjPathCR2Install"};
};

// The notes file viewer ("Open Notebook").
class FormNotes : public Form {
 public:
  FormNotes();
  TextBox RichTextBox1{this, "RichTextBox1", true};
  Label CommandSave{this, "CommandSave"};
  Label CommandClose{this, "CommandClose"};
};

}  // namespace tolvane::ui
