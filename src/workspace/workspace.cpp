// File, Open and its siblings: the kinds table, the figure page and the OBJ page of
// the main form, the leading-blank fix, the load from the command line or a drop, and
// the source pane.
#include "workspace/workspace.h"

#include <optional>

#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/gzip_file.h"
#include "text/read_only_file.h"
#include "workspace/line_ending_repair.h"
#include "text/line_writer.h"
#include "workspace/list_readers.h"
#include "text/run_time_number.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "workspace/startup.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace {

constexpr ui::Colour kPathBlue = 0xC00000;
constexpr ui::Colour kListBlue = 0x400000;

void show(std::initializer_list<ui::Control*> controls, bool visible) {
  for (ui::Control* c : controls) c->setVisible(visible);
}

void askReadOnly(Program& program, const std::string& path) {
  std::filesystem::path file = filePath(program, path);
  if (!text::isReadOnly(file)) return;
  if (ui::msgBox(
          program.services,
          "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change "
          "this attribute so it can be edited by Tolvane?",
          "Alert!", ui::Buttons::YesNo, ui::Icon::Question) == ui::Answer::Yes)
    text::clearReadOnly(file);
}

// Before any load: the OBJ page's extras go, the OBJ view button takes its upper place.
void resetPages(ui::Opening& form) {
  form.ListAllTexMaps.clear();
  form.ListChannelsReorder.clear();
  show({&form.PictureOBJExtract, &form.TextOBJScale, &form.FrameMash, &form.CheckOBJBatch,
        &form.SliderOBJScale},
       false);
  form.PictureOBJView.setTop(384);
}

// Reads up to `lines` lines; a line that begins with a blank sends the whole file
// through ChopLeadingBlanks.
void leadingBlankScan(Program& program, const std::string& path, int lines) {
  bool chop = false;
  {
    text::FigureScanner in(filePath(program, path));
    std::string_view line;
    for (int i = 0; i < lines && in.rawLine(line); ++i) {
      if (!line.empty() && line[0] == ' ') {
        chop = true;
        break;
      }
    }
  }
  if (chop) ChopLeadingBlanks(program, path);
}

void showObjPage(Program& program, const std::string& path) {
  ui::Opening& f = program.opening;
  show({&f.PictureEditor,        &f.LabelFileSize,     &f.PictureMapViewer,     &f.PictureRenameMorph,
        &f.PictureMatColor,      &f.PictureMatHiLite,  &f.ListPropObj,          &f.LabelOpenSource,
        &f.LabelOpenSourceTitle, &f.PictureCopyToDest, &f.PictureViewChannels,  &f.PictureJoints,
        &f.PictureTrash,         &f.LabelMainOBJPath,  &f.TextMainOBJ,          &f.LabelMainTex,
        &f.TextMainTex,          &f.LabelMainBump,     &f.TextMainBump,         &f.LabelMainReflect,
        &f.TextMainReflect,      &f.LabelMainTrans,    &f.TextMainTrans,        &f.LabelFileName,
        &f.LabelMaterials,       &f.ListMaterials,     &f.LabelChannelFileName, &f.ListActors,
        &f.LabelBodyParts,       &f.ListChannels,      &f.ImageSplash,          &f.PictureEMC,
        &f.PictureChangeRatio},
       false);
  f.LabelOBJFileName.setCaption(path);
  show({&f.LabelOBJFileName, &f.PictureScaleObj, &f.PictureMash, &f.PictureOBJView}, true);
  f.PictureOBJView.setFocus();
}

void showManualEditor(Program& program, std::string path) {
  RepairLineEndings(program, path);
  program.opening.LabelFileNameForEditor.setCaption(path);
  if (program.onShowEditor) program.onShowEditor();
}

// The figure page's frames and the file's size.
void showFigurePage(Program& program, const std::string& path) {
  ui::Opening& f = program.opening;
  f.LabelOBJFileName.setVisible(false);
  f.LabelOBJFileName.setCaption("");
  show({&f.PictureScaleObj, &f.PictureMash}, false);
  show({&f.FrameFigurePage, &f.FramePaths, &f.LabelFileSize, &f.PictureMapViewer}, true);
  f.LabelFileSize.setCaption(
      text::StrInteger(static_cast<long long>(text::fileLength(filePath(program, path)))) + " bytes");
  f.ListPropObj.clear();
  f.ListPropObj.setForeColor(kListBlue);
}

// The geometry, the path boxes, the file label and the materials; from `scans` when Open
// read them together, else each reader reads the file.
void listGeometryAndMaterials(Program& program, const std::string& path, const std::string& kind,
                              FigureScans* scans) {
  ui::Opening& f = program.opening;
  bool propFile = kind == "hr2" || kind == "pp2";
  if (scans)
    showGeometry(program, scans->geometry, scans->geometryFault, geometryRoot(program, propFile));
  else if (propFile)
    ListPropGeometryPropFile(program, path);
  else
    ListPropGeometry(program, path);
  f.PictureCopyToDest.setVisible(false);
  show({&f.LabelMainOBJPath, &f.TextMainOBJ, &f.LabelPropOBJs, &f.ListPropObj, &f.LabelMainTex,
        &f.TextMainTex, &f.LabelMainBump, &f.TextMainBump, &f.LabelMainTrans, &f.TextMainTrans,
        &f.LabelMainReflect, &f.TextMainReflect},
       true);
  f.TextMainTex.setText("");
  f.TextMainBump.setText("");
  if (kind != "pz3")
    for (ui::Label* l :
         {&f.LabelMainOBJPath, &f.LabelMainTex, &f.LabelMainBump, &f.LabelMainReflect, &f.LabelMainTrans})
      l->setForeColor(kPathBlue);
  f.LabelFileName.setVisible(true);
  f.LabelFileName.setCaption(displayPath(path));
  f.LabelFileNameForEditor.setCaption(path);
  show({&f.PictureMatColor, &f.PictureMatHiLite, &f.LabelMaterials}, true);
  f.ListMaterials.clear();
  f.ListMATColors.clear();
  f.ListMatHiLite.clear();
  f.ListMaterials.setVisible(true);
  if (!scans) return ListFileMaterials(program, path);
  if (scans->materialsFault) std::rethrow_exception(scans->materialsFault);
  showMaterials(program, std::move(scans->materials));
}

// Both panes show the destination: its parts, all its channels, its maps.
void listPartsAndChannels(Program& program, const std::string& path, FigureScans* scans) {
  ui::Opening& f = program.opening;
  f.LabelChannelFileName.setVisible(true);
  f.LabelChannelFileName.setCaption(displayPath(path));
  f.LabelChannelFileNameForEditor.setCaption(path);
  f.ListActors.clear();
  show({&f.ListActors, &f.LabelBodyParts}, true);
  if (!scans) {
    ListBodyParts(program, path);
  } else {
    if (scans->partsFault) std::rethrow_exception(scans->partsFault);
    showBodyParts(program, std::move(scans->parts));
  }
  f.ListChannels.clear();
  f.ListChannels.setVisible(true);
  f.ListChannels.addItem("ALL CHANNELS");
  f.ListChannels.addItem("************************");
  if (!scans) {
    ListAllChannels(program, allChannelsPath(program));
    ListTextureMaps(program, path);
    return;
  }
  f.ListChannels.setForeColor(0x400000);
  if (scans->channelsFault) std::rethrow_exception(scans->channelsFault);
  showChannels(program, std::move(scans->channels));
  showTextures(program, scans->textures, scans->texturesFault);
}

// The tools of the figure page.
void showFigureTools(Program& program) {
  ui::Opening& f = program.opening;
  f.ImageSplash.setVisible(false);
  f.TextMorphRename.setText("");
  show({&f.TextMorphRename, &f.PictureRenameMorph}, false);
  f.PictureViewChannels.setBackColor(ui::kToolRest);
  show({&f.PictureViewChannels, &f.PictureJoints, &f.PictureTrash, &f.PictureEMC, &f.PictureEditor,
        &f.PictureChangeRatio, &f.PictureOBJView, &f.LabelOpenSource, &f.LabelOpenSourceTitle},
       true);
  program.setBusy(false);
  f.MenuCR2Tools.setEnabled(true);
}

// A figure, pose, scene, hair or prop file: the figure page, filled by the five readers.
void loadFigure(Program& program, const std::string& path, int scanLines) {
  program.setBusy(true);
  program.opening.LabelFileNameForEditor.setCaption(path);
  leadingBlankScan(program, path, scanLines);
  showFigurePage(program, path);
  // The lists read the file together, once. A relative path is left to the readers one
  // by one: the geometry reader changes the current directory it is taken from.
  std::optional<FigureScans> scans;
  std::filesystem::path file = filePath(program, path);
  if (text::nativePath(path).is_absolute()) scans = scanFigureTogether(program, file, text::FileKind(path));
  FigureScans* together = scans ? &*scans : nullptr;
  listGeometryAndMaterials(program, path, text::FileKind(path), together);
  listPartsAndChannels(program, path, together);
  showFigureTools(program);
}

int leadingBlankLines(const std::string& kind) { return kind == "pz2" ? 20 : 100; }

bool isFigureKind(const std::string& kind) {
  return kind == "cr2" || kind == "pz2" || kind == "fc2" || kind == "pz3" || kind == "hr2" || kind == "pp2";
}

// A compressed file is unpacked once, up front, as busy work that shows its progress;
// the repair and the readers then reuse the unpacked copy.
void unpackShowingProgress(Program& program, const std::string& path) {
  const std::filesystem::path file = text::nativePath(path);
  if (!text::gzip::isPacked(file)) return;
  program.setBusy(true);
  { text::ReadOnlyFile unpacked(file); }
  program.setBusy(false);
}

// The repair; true when the load goes on. Only the figure and pose kinds stop on a
// refused repair.
bool repairAndGoOn(Program& program, std::string& path, const std::string& kind) {
  unpackShowingProgress(program, path);
  program.opening.OpenRefused = 0;
  RepairLineEndings(program, path);
  if (program.opening.OpenRefused == -1 && (kind == "cr2" || kind == "pz2" || kind == "fc2")) {
    program.opening.OpenRefused = 0;
    return false;
  }
  return true;
}

}  // namespace

void OpenFile(Program& program) {
  ui::Opening& f = program.opening;
  if (f.PathsDirty == 1 && ui::msgBox(program.services, "Save path changes before closing file?", "Alert!",
                                      ui::Buttons::YesNo, ui::Icon::Question) == ui::Answer::Yes)
    WritePathChanges(program, PathWriteVariant::Open);
  if (f.SkipOpenDialog != -1) {
    auto chosen = ui::openDialog(program.services, program.currentDir);
    if (!chosen || chosen->empty()) return;
    program.setCurrentDirFromFile(*chosen);
    f.OpenFilePath = *chosen;
    AddToMRU(program, f.OpenFilePath);
  }
  f.SkipOpenDialog = 0;
  f.PathsDirty = 0;
  f.LastOpenedPath = f.OpenFilePath;
  std::string path = f.OpenFilePath;
  askReadOnly(program, path);
  resetPages(f);
  std::string kind = text::FileKind(path);
  if (isFigureKind(kind)) {
    if (!repairAndGoOn(program, path, kind)) return;
    loadFigure(program, path, leadingBlankLines(kind));
  } else if (kind == "obj") {
    showObjPage(program, path);
  } else if (kind == "mtl") {
    showManualEditor(program, path);
  }
}

void LoadWithoutDialog(Program& program, const std::string& given) {
  ui::Opening& f = program.opening;
  f.FrameFigurePage.setVisible(true);
  if (given.empty()) return;
  std::string path = given;
  resetPages(f);
  std::string kind = text::FileKind(path);
  if (!repairAndGoOn(program, path, kind)) return;
  if (kind == "cr2" || kind == "pz3")
    loadFigure(program, path, 100);
  else if (kind == "obj")
    showObjPage(program, path);
}

void ChopLeadingBlanks(Program& program, const std::string& path) {
  std::filesystem::path chop = program.currentDir / "Chop.doc";
  text::deleteIgnoringErrors(chop);
  std::filesystem::path file = filePath(program, path);
  // Chop.doc stands beside the user's file: a failure on the way takes it away again.
  try {
    {
      text::FigureScanner in(file);
      text::LineWriter out(chop, text::LineWriter::Mode::Append);
      std::string_view line;
      while (in.rawLine(line)) out.WriteLine(!line.empty() && line[0] == ' ' ? line.substr(1) : line);
      out.close();
    }
    text::moveScratchInto(chop, file, true);
  } catch (...) {
    text::deleteIgnoringErrors(chop);
    throw;
  }
}

void OpenSource(Program& program) {
  ui::Opening& f = program.opening;
  show({&f.PictureBrktLeft, &f.PictureBrktRight, &f.PictureBrktsOK, &f.PicturePushPin}, false);
  f.TimerPushpin.setEnabled(false);
  f.MenuFile.setEnabled(true);
  f.MenuCR2Tools.setEnabled(true);
  if (f.LabelFileName.caption().empty()) {
    ui::msgBox(program.services, "Open a destination file first.", "Note!", ui::Buttons::OK,
               ui::Icon::Exclamation);
    return;
  }
  auto chosen = ui::openDialog(program.services, program.currentDir);
  f.OpenFilePath = chosen.value_or("");
  if (f.OpenFilePath.empty()) return;
  program.setCurrentDirFromFile(f.OpenFilePath);
  if (text::FileKind(f.OpenFilePath) != "cr2") {
    ui::msgBox(program.services, "CR2 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  askReadOnly(program, f.OpenFilePath);
  for (ui::Picture* p : {&f.PictureJoints, &f.PictureViewChannels, &f.PictureTrash})
    p->setBackColor(ui::kToolRest);
  f.ListChannels.clear();
  f.LabelChannelFileName.setCaption(displayPath(f.OpenFilePath));
  f.LabelChannelFileNameForEditor.setCaption(f.OpenFilePath);
  f.ListChannels.addItem("BODY PARTS");
  ListBodyParts(program, f.OpenFilePath);
}

}  // namespace tolvane
