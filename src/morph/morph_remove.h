// Remove: PictureTrash is the drop target that takes lines dragged from ListChannels
// (morph channels and control blocks, through "\XMorph.txt") and from ListActors
// (whole body parts, through "\cr2.doc"). Each selected line is one pass over the file.
#pragma once

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


// The removals themselves, on the selected lines of their lists.
void RemoveMorphs(Program& program);
void RemoveBodyParts(Program& program);

}  // namespace tolvane::morph
