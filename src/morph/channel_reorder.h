// Channel reorder: a double-click in ListActors lists the part's channels, the user
// drags them into a new order, and PictureChannelReorderDone rewrites the part's
// channels block in that order through "\Reorder.cr2". Also the tracking line that a
// double-click in ListChannelsReorder finds for the tracking speed box.
#pragma once

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

// The double-click in ListActors.
void ListActorsDblClick(Program& program);
// A drop on ListChannelsReorderNewOrder: the current line of the part's list moves there.
void NewOrderDrop(Program& program, const EventArgs& args);
void ReorderDoneClick(Program& program);
void ListChannelsReorderDblClick(Program& program);

}  // namespace tolvane::morph
