// The joint parameter transfer: PictureJoints copies the joint and twist channels of a
// body part of the source (chosen in ListChannels under "BODY PARTS") over the joint
// blocks of a body part of the destination (chosen in ListActors), through
// "\jointfile.txt", "\tempjoint.txt" and "\Jnt.txt", and ends in the save dialog.
#pragma once

namespace tolvane {
class Program;
}  // namespace tolvane

namespace tolvane::morph {

void JointsClick(Program& program);
void JointsRightClick(Program& program);

}  // namespace tolvane::morph
