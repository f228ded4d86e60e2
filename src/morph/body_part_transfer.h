// Body part transfer: a part of the open figure is cut out into "\bp.txt" (its
// declaration, "*end geom*", its definition), and a target figure dropped on the tool's
// picture is written anew as "New-" and its name, with the part under a new name, a new
// main OBJ line and, if wished, a place in one of its IK chains. The target and the open
// figure are never changed. The run is guided: each step that waits for the user (the
// OBJ pick, the name, the chain, the place in it) is a state of Opening::Transfer that
// the next event advances.
#pragma once

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

// A click on the tool's picture: a double-click in ListActors now picks the part.
void TransferPictureClick(Program& program);
// The double-click in ListActors while the mode value is 69: the cut-out.
void TransferCutOut(Program& program);
// A figure dropped on the tool's picture: from its file list, or from the desktop.
void TransferDrop(Program& program, const EventArgs& args);
// The tool's folder list moved: the file list follows, with the pattern of the step.
void TransferDirChange(Program& program);
// A click in the tool's file list: the OBJ pick while the tool waits for one.
void TransferFileClick(Program& program);
// A key in TextMorphRename; false when the transfer is not waiting for its name, so
// that the rename tool has the key.
bool TransferNameKey(Program& program, const EventArgs& args);
// The chain lists: a double-click picks the chain, a click the place in it.
void TransferChainDblClick(Program& program);
void TransferChainClick(Program& program);

}  // namespace tolvane::morph
