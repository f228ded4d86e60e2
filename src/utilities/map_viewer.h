// The map viewer: the figure's main texture, worked out from the text of TextMainTex (or
// the first texture the figure lists) as a path under the Poser folder, shown in
// FormViewer with scroll bars.
#pragma once

#include <filesystem>
#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::utilities {

// The path a map text names: a Poser path (one that holds "untime") becomes PLoc, its
// folders and its file name; any other text stands as it is.
std::string mapPathFromText(const std::string& mapText, const std::string& ploc);

// Whether the file holds a picture the viewer can show (BMP, JPEG, PNG or GIF); false
// for a missing file or any other bytes.
bool isViewablePicture(const std::filesystem::path& file, int* width = nullptr, int* height = nullptr);

// PictureMapViewer, left and right button.
void MapViewerClick(Program& program);
void MapViewerRightClick(Program& program);
// FormViewer's load: the picture from the map dialog's file name.
void FormViewerLoad(Program& program);

}  // namespace tolvane::utilities
