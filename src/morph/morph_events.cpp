// Registers the handlers of the channel viewer and the morph tools.
#include "morph/morph_events.h"

#include "morph/body_part_transfer.h"
#include "morph/channel_reorder.h"
#include "morph/channel_viewer.h"
#include "morph/dial_tools.h"
#include "morph/joint_transfer.h"
#include "morph/mirror_morph.h"
#include "morph/morph_common.h"
#include "morph/morph_copy.h"
#include "morph/morph_remove.h"
#include "morph/morph_rename.h"
#include "morph/morph_target_export.h"
#include "program/events.h"
#include "program/program.h"

namespace tolvane {

namespace {
// A picture button: the left click acts, the right click explains.
void addPicture(EventTable& table, const std::string& name, void (*left)(Program&), void (*right)(Program&)) {
  table.add("Opening", name, EventKind::Click, [left](Program& p, const EventArgs&) { left(p); });
  table.add("Opening", name, EventKind::RightClick, [right](Program& p, const EventArgs&) { right(p); });
}
}  // namespace

void registerMorphEvents(EventTable& table) {
  using namespace morph;
  addPicture(table, "PictureViewChannels", ViewChannelsClick, ViewChannelsRightClick);
  addPicture(table, "PictureCopyToDest", CopyToDestClick, CopyToDestRightClick);
  addPicture(table, "PictureRenameMorph", RenameMorphClick, RenameMorphRightClick);
  addPicture(table, "PictureTrash", TrashClick, TrashRightClick);
  table.add("Opening", "PictureTrash", EventKind::Drop, TrashDrop);
  // The name box serves the rename tool, and the body part transfer while it waits
  // for the new part's name.
  table.add("Opening", "TextMorphRename", EventKind::Key, [](Program& p, const EventArgs& args) {
    if (!TransferNameKey(p, args)) TextMorphRenameKey(p, args);
  });

  table.add("Opening", "ListChannels", EventKind::Press, ListChannelsPress);
  table.add("Opening", "ListChannels", EventKind::Release, ListChannelsRelease);
  table.add("Opening", "ListChannels", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ListChannelsDblClick(p); });
  table.add("Opening", "ListChannels", EventKind::MouseMove,
            [](Program& p, const EventArgs&) { ListChannelsMouseMove(p); });
  table.add("Opening", "ListActors", EventKind::Press, ListActorsPress);
  table.add("Opening", "ListActors", EventKind::DblClick, [](Program& p, const EventArgs&) {
    if (p.opening.ToolMode == 69)
      TransferCutOut(p);
    else if (isOn(p.opening.PictureMirror))
      MirrorToPart(p);
    else
      ListActorsDblClick(p);
  });

  table.add("Opening", "ListChannelsReorderNewOrder", EventKind::Drop, NewOrderDrop);
  table.add("Opening", "PictureChannelReorderDone", EventKind::Click,
            [](Program& p, const EventArgs&) { ReorderDoneClick(p); });
  table.add("Opening", "ListChannelsReorder", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ListChannelsReorderDblClick(p); });
  registerChannelToolEvents(table);
}

void registerChannelToolEvents(EventTable& table) {
  using namespace morph;
  auto menu = [&table](const std::string& name, void (*handler)(Program&)) {
    table.add("Opening", name, EventKind::Click, [handler](Program& p, const EventArgs&) { handler(p); });
  };
  menu("MenuDials", MenuDialsClick);
  menu("MenuBendOff", [](Program& p) { BendClick(p, false); });
  menu("MenuBendOn", [](Program& p) { BendClick(p, true); });
  menu("menuDialTrackSpeed", MenuDialTrackSpeedClick);
  menu("MenuDumpIK", DumpIKClick);
  // The twist and limit routines are complete, but these two menu lines start nothing.
  menu("MenuTwist", [](Program&) {});
  menu("MenuLimits", [](Program&) {});
  table.add("Opening", "ListTwistParts", EventKind::DblClick,
            [](Program& p, const EventArgs&) { RemoveTwist(p, p.opening.ListTwistParts.text()); });
  table.add("Opening", "ListTwistParts", EventKind::RightClick,
            [](Program& p, const EventArgs&) { RestoreTwist(p, p.opening.ListTwistParts.text()); });
  table.add("Opening", "ListLimitParts", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ForceLimits(p, p.opening.ListLimitParts.text()); });
  // Body part transfer: the menu line starts nothing; the tool's hidden picture and its
  // lists carry the routine.
  menu("MenuTransferParts", [](Program&) {});
  menu("PictureTransferParts", TransferPictureClick);
  table.add("Opening", "PictureTransferParts", EventKind::Drop, TransferDrop);
  table.add("Opening", "DirTransferParts", EventKind::Change,
            [](Program& p, const EventArgs&) { TransferDirChange(p); });
  menu("FileTransferParts", TransferFileClick);
  table.add("Opening", "ListTransferChains", EventKind::DblClick,
            [](Program& p, const EventArgs&) { TransferChainDblClick(p); });
  menu("ListTransferChains", TransferChainClick);
  menu("menuMirror", MenuMirrorClick);
  menu("menuMirrorOpen", MenuMirrorOpenClick);
  menu("LabelX", [](Program& p) { HideDialClick(p, 'X'); });
  menu("LabelY", [](Program& p) { HideDialClick(p, 'Y'); });
  menu("LabelZ", [](Program& p) { HideDialClick(p, 'Z'); });
  table.add("Opening", "TextTrackingSpeed", EventKind::Key, TextTrackingSpeedKey);

  table.add("Opening", "PictureMatColor", EventKind::RightClick,
            [](Program& p, const EventArgs&) { MatColorRightClick(p); });
  table.add("Opening", "PictureMatHiLite", EventKind::RightClick,
            [](Program& p, const EventArgs&) { MatHiLiteRightClick(p); });
  table.add("Opening", "PictureMatColor", EventKind::DblClick,
            [](Program& p, const EventArgs&) { MaterialColourDblClick(p, false); });
  table.add("Opening", "PictureMatHiLite", EventKind::DblClick,
            [](Program& p, const EventArgs&) { MaterialColourDblClick(p, true); });

  addPicture(table, "PictureJoints", JointsClick, JointsRightClick);
  addPicture(table, "PictureMirror", MirrorClick, MirrorRightClick);
  table.add("Opening", "ListChannels", EventKind::RightRelease,
            [](Program& p, const EventArgs&) { ExportMorphTarget(p); });
}

}  // namespace tolvane
