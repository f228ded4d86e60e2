// Remove: PictureTrash is the drop target that takes lines dragged from ListChannels
// (morph channels and control blocks, through "\XMorph.txt") and from ListActors
// (whole body parts, through "\cr2.doc"). Each selected line is one pass over the file.
#pragma once

#include <string>

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

void TrashClick(Program& program);
void TrashRightClick(Program& program);
// A drop on PictureTrash; args.source names the list the lines came from.
void TrashDrop(Program& program, const EventArgs& args);
// A press in ListActors: a drag from it may begin.
void ListActorsPress(Program& program, const EventArgs& args);
// The Delete key (46) in ListChannels or ListActors, with the trash on: the selected
// lines go to PictureTrash as a drag would take them. `list` is "ListChannels" or
// "ListActors".
void TrashByKey(Program& program, const std::string& list, const EventArgs& args);

// The removals themselves, on the selected lines of their lists.
void RemoveMorphs(Program& program);
void RemoveBodyParts(Program& program);

}  // namespace tolvane::morph
