// Registers the handlers of the channel viewer and the morph tools.
#include "morph/morph_events.h"

#include "morph/channel_reorder.h"
#include "morph/channel_viewer.h"
#include "morph/morph_copy.h"
#include "morph/morph_remove.h"
#include "morph/morph_rename.h"
#include "program/events.h"

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
  table.add("Opening", "TextMorphRename", EventKind::Key, TextMorphRenameKey);

  table.add("Opening", "ListChannels", EventKind::Press, ListChannelsPress);
  table.add("Opening", "ListChannels", EventKind::Release, ListChannelsRelease);
  table.add("Opening", "ListChannels", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ListChannelsDblClick(p); });
  table.add("Opening", "ListChannels", EventKind::MouseMove,
            [](Program& p, const EventArgs&) { ListChannelsMouseMove(p); });
  table.add("Opening", "ListActors", EventKind::Press, ListActorsPress);
  table.add("Opening", "ListActors", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ListActorsDblClick(p); });

  table.add("Opening", "ListChannelsReorderNewOrder", EventKind::Drop, NewOrderDrop);
  table.add("Opening", "PictureChannelReorderDone", EventKind::Click,
            [](Program& p, const EventArgs&) { ReorderDoneClick(p); });
  table.add("Opening", "ListChannelsReorder", EventKind::DblClick,
            [](Program& p, const EventArgs&) { ListChannelsReorderDblClick(p); });
}

}  // namespace tolvane
