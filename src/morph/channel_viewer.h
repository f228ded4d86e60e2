// The channel viewer: PictureViewChannels switches ListChannels between every morph
// channel of the file and the morph channels of the part chosen in ListActors, and the
// mouse events of ListChannels that start drags and fill the reorder list.
#pragma once

#include <string>
#include <vector>

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

// The left click on PictureViewChannels.
void ViewChannelsClick(Program& program);
void ViewChannelsRightClick(Program& program);

// The lines a part's channels show under the head "Channels for ...": two lines per
// plain morph, seven per EMC group. `selectedPart` begins with its blank. The file must
// hold the part's header twice; a run past the end inside the channels ends quietly.
// With a program, the scan yields to its event loop while it reads.
std::vector<std::string> ScanPartChannels(const std::string& path, const std::string& selectedPart,
                                          Program* program = nullptr);

// The part name kept in SelectedPart, taken from a ListActors line.
std::string selectedPartOf(const std::string& actorsLine);

// The path the all-channels list is read from: the source when one is open.
std::string allChannelsPath(Program& program);

void ListChannelsPress(Program& program, const EventArgs& args);
void ListChannelsRelease(Program& program, const EventArgs& args);
void ListChannelsDblClick(Program& program);
void ListChannelsMouseMove(Program& program);

}  // namespace tolvane::morph
