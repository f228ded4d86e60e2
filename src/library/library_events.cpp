#include "library/library_events.h"

#include <utility>

#include "library/converters.h"
#include "library/geometry_switch.h"
#include "library/master_cr2.h"
#include "library/mor_files.h"
#include "library/pose_editor.h"

namespace tolvane {

void registerLibraryEvents(EventTable& table) {
  const char* masters[] = {"MenuP3Male", "MenuP3Female", "MenuP4Male", "MenuP4Female",
                           "MenuVic",    "MenuAnyMasterStandard", "MenuAnyMasterNoFBM"};
  for (int i = 0; i < 7; ++i)
    table.add("Opening", masters[i], EventKind::Click,
              [number = i + 1](Program& p, const EventArgs&) { library::MakeMasterCR2(p, number); });
  using Plain = void (*)(Program&);
  struct Entry {
    const char* form;
    const char* control;
    EventKind kind;
    Plain handler;
  };
  const Entry plain[] = {
      {"Opening", "menuNullFig", EventKind::Click, library::CreateNullFigure},
      {"Opening", "menuGeomSwitch", EventKind::Click, library::GeomSwitchMenu},
      {"Opening", "MenuPZ3Cr2Conv", EventKind::Click, library::ConvertSceneToFigure},
      {"Opening", "MenuMakeMTL", EventKind::Click, library::MakeMTL},
      {"Opening", "MenuPZ3AVI", EventKind::Click, library::MakeAVIBackground},
      {"Opening", "MenuP3P4Cam", EventKind::Click, library::RestoreCamera},
      {"Opening", "ListAltGeomActors", EventKind::DblClick, library::AltGeomActorsDblClick},
      {"Opening", "ListAltGeomActors", EventKind::RightClick, library::AltGeomActorsRightClick},
      // The pose and material file editor.
      {"Opening", "MenuPoseFile", EventKind::Click, [](Program& p) { library::ShowPoseEditor(p, false); }},
      {"Opening", "menuMatFile", EventKind::Click, [](Program& p) { library::ShowPoseEditor(p, true); }},
      {"FormPZ2", "ListActorsPZ2", EventKind::DblClick, library::PoseActorsDblClick},
      {"FormPZ2", "ListMaterialsMAT", EventKind::DblClick, library::PoseMaterialsDblClick},
      {"FormPZ2", "ListMaterialsMAT", EventKind::Click, library::PoseMaterialsClick},
      {"FormPZ2", "ListMaterialsMAT", EventKind::RightRelease, library::PoseMaterialsRightRelease},
      {"FormPZ2", "LabelChangeColor", EventKind::Click, [](Program& p) { library::PoseChangeColorAdvice(p, false); }},
      {"FormPZ2", "Frame1", EventKind::Click, [](Program& p) { library::PoseChangeColorAdvice(p, true); }},
      {"FormPZ2", "LabelDonePZ2", EventKind::Click, library::PoseDone},
      {"FormPZ2", "LabelCancelPZ2", EventKind::Click, library::PoseCancel},
      {"FormPZ2", "FormPZ2", EventKind::Unload, library::PoseUnload},
      // The MOR file editor and the PZ2 welder.
      {"Opening", "MenuMor", EventKind::Click, library::ShowMorEditor},
      {"FormMOR", "ListMorphs", EventKind::Click, library::MorMorphsClick},
      {"FormMOR", "TextValue", EventKind::Enter, library::MorValueEnter},
      {"FormMOR", "LabelDone", EventKind::Click, library::MorDone},
      {"FormMOR", "LabelCancel", EventKind::Click, library::MorCancel},
      {"Opening", "menuCombinePZ2", EventKind::Click, library::ShowWelder},
      {"FormPZ2Combine", "LabelOpenSecond", EventKind::Click, library::WelderOpenSecond},
      {"FormPZ2Combine", "ListFile1", EventKind::Click, [](Program& p) { library::WelderFileClick(p, false); }},
      {"FormPZ2Combine", "ListFile2", EventKind::Click, [](Program& p) { library::WelderFileClick(p, true); }},
      {"FormPZ2Combine", "LabelDone", EventKind::Click, library::WelderDone},
      {"FormPZ2Combine", "LabelCancel", EventKind::Click, library::WelderCancel},
  };
  for (const Entry& entry : plain) {
    Plain handler = entry.handler;
    table.add(entry.form, entry.control, entry.kind, [handler](Program& p, const EventArgs&) { handler(p); });
  }
}

}  // namespace tolvane
