// The workspace list readers: each walks the open file once from its first line and
// fills its lists on the main form. Open runs them in this order: ListPropGeometry (or
// ListPropGeometryPropFile), ListFileMaterials, ListBodyParts, ListAllChannels,
// ListTextureMaps. Tools that change parts or channels run them again to refresh.
#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "text/list_scans.h"

namespace tolvane {
class Program;
namespace ui {
class ListBox;
}

void ListPropGeometry(Program& program, const std::string& path);
void ListPropGeometryPropFile(Program& program, const std::string& path);
void ListFileMaterials(Program& program, const std::string& path);
void ListBodyParts(Program& program, const std::string& path);
void ListAllChannels(Program& program, const std::string& path);
void ListTextureMaps(Program& program, const std::string& path);

// What each reader shows of its scan, in the reader's order of effects; a scan that
// stopped on a fault shows what the reader showed before the fault, then raises it.
void showGeometry(Program& program, const text::GeometryScan& scan, std::exception_ptr fault,
                  const std::string& root);
void showMaterials(Program& program, text::MaterialScan scan);
void showBodyParts(Program& program, std::vector<std::string> entries);
void showChannels(Program& program, text::ChannelScan lists);
void showTextures(Program& program, const text::TextureScan& scan, std::exception_ptr fault);
// The folder the main geometry's path starts from.
std::string geometryRoot(const Program& program, bool propFile);

// The five scans Open lists a figure with, made together in one read of the file: each
// on its own thread, the event loop running meanwhile. Each result keeps the fault its
// scan stopped on.
struct FigureScans {
  text::GeometryScan geometry;
  std::exception_ptr geometryFault;
  text::MaterialScan materials;
  std::exception_ptr materialsFault;
  std::vector<std::string> parts;
  std::exception_ptr partsFault;
  text::ChannelScan channels;
  std::exception_ptr channelsFault;
  text::TextureScan textures;
  std::exception_ptr texturesFault;
};
FigureScans scanFigureTogether(Program& program, const std::filesystem::path& file, const std::string& kind);

// The display form of a path in the file labels: whole below 43 characters, else
// "..." and its last 45 characters.
std::string displayPath(const std::string& path);

// The file a path text names: backslashes read as separators, a relative name taken
// from the program's current directory.
std::filesystem::path filePath(const Program& program, const std::string& text);

// Adds a reader's entries at the end of a list at once, so that the view refreshes
// once; the selection stays.
void appendEntries(ui::ListBox& list, std::vector<std::string> entries);

// The file ListAllChannels reads: the destination, or the source when the two file
// labels differ.
std::string allChannelsPath(const Program& program);

// A click on ListMaterials: the swatches show that material's colours.
void ListMaterialsClick(Program& program);
// A colour list entry ("256  128  51.2") as a swatch colour (blue, green, red).
unsigned swatchColour(const std::string& entry);

// The pop-up list of texture values over TextMainTex and its timer.
void TextMainTexMouseMove(Program& program);
void HideAllTexMaps(Program& program);
void TextMainOBJMouseMove(Program& program);
}  // namespace tolvane
