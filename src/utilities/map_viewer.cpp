#include "utilities/map_viewer.h"

#include <fstream>

#include "program/program.h"
#include "text/figure_text.h"
#include "ui/services.h"

namespace tolvane::utilities {

namespace {

unsigned be16(const unsigned char* p) { return (p[0] << 8) | p[1]; }
unsigned le16(const unsigned char* p) { return p[0] | (p[1] << 8); }
long le32(const unsigned char* p) {
  return static_cast<long>(static_cast<std::int32_t>(p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned>(p[3]) << 24)));
}

// The size in a JPEG's frame header, searched through its markers.
bool jpegSize(std::ifstream& in, int& w, int& h) {
  in.seekg(2);
  unsigned char m[9];
  while (in.read(reinterpret_cast<char*>(m), 4)) {
    if (m[0] != 0xFF) return false;
    unsigned len = be16(m + 2);
    if (m[1] >= 0xC0 && m[1] <= 0xCF && m[1] != 0xC4 && m[1] != 0xC8 && m[1] != 0xCC) {
      if (!in.read(reinterpret_cast<char*>(m), 5)) return false;
      h = static_cast<int>(be16(m + 1));
      w = static_cast<int>(be16(m + 3));
      return w > 0 && h > 0;
    }
    if (len < 2) return false;
    in.seekg(len - 2, std::ios::cur);
  }
  return false;
}

}  // namespace

std::string mapPathFromText(const std::string& mapText, const std::string& ploc) {
  if (!text::contains(mapText, "untime")) return mapText;
  std::string rest = mapText;
  if (text::InStr(rest, ":") == 2) rest = text::Mid(rest, 3);
  std::string folders;
  for (std::size_t c = text::InStr(rest, ":"); c > 0; c = text::InStr(rest, ":")) {
    folders += text::Left(rest, static_cast<long long>(c) - 1) + "\\";
    rest = text::Mid(rest, static_cast<long long>(c) + 1);
  }
  if (!rest.empty() && rest.back() == '"') rest.pop_back();
  return ploc + folders + rest;
}

bool isViewablePicture(const std::filesystem::path& file, int* width, int* height) {
  std::ifstream in(file, std::ios::binary);
  unsigned char h[32] = {};
  if (!in.read(reinterpret_cast<char*>(h), sizeof h)) return false;
  int w = 0, ht = 0;
  if (h[0] == 'B' && h[1] == 'M') {
    w = static_cast<int>(le32(h + 18));
    ht = static_cast<int>(std::labs(le32(h + 22)));
  } else if (h[0] == 0x89 && h[1] == 'P' && h[2] == 'N' && h[3] == 'G') {
    w = static_cast<int>((h[16] << 24) | (h[17] << 16) | (h[18] << 8) | h[19]);
    ht = static_cast<int>((h[20] << 24) | (h[21] << 16) | (h[22] << 8) | h[23]);
  } else if (h[0] == 'G' && h[1] == 'I' && h[2] == 'F' && h[3] == '8') {
    w = static_cast<int>(le16(h + 6));
    ht = static_cast<int>(le16(h + 8));
  } else if (h[0] == 0xFF && h[1] == 0xD8) {
    if (!jpegSize(in, w, ht)) return false;
  } else {
    return false;
  }
  if (w <= 0 || ht <= 0) return false;
  if (width) *width = w;
  if (height) *height = ht;
  return true;
}

void MapViewerRightClick(Program& program) {
  ui::msgBox(program.services, "Click this to view a map.", "Info");
}

void MapViewerClick(Program& program) {
  ui::Opening& f = program.opening;
  std::string ploc = program.posersFolder();
  std::string map = f.TextMainTex.text();
  if (f.ListAllTexMaps.listCount() >= 1) map = f.ListAllTexMaps.list(0);
  map = mapPathFromText(map, ploc);
  bool isDefault = text::contains(map, "efault");
  if (map == "NO_MAP" || isDefault) {
    std::string question =
        isDefault ? "Please locate the default map." : "There is no map listed in the CR2.  Continue anyway?";
    if (ui::msgBox(program.services, question, "Note!", ui::Buttons::YesNo) != ui::Answer::Yes) return;
    std::optional<std::string> chosen = ui::openDialog(program.services, program.currentDir);
    if (!chosen) return;
    program.setCurrentDirFromFile(*chosen);
    map = *chosen;
    if (text::Right(map, 3) == "tif" || text::Right(map, 3) == "png") {
      ui::msgBox(program.services, "Can't display " + text::Right(map, 3) + "'s yet, sorry!", "Note!");
      return;
    }
  }
  if (!map.empty() && map.front() == '"') map = text::Mid(map, 2, static_cast<long long>(map.size()) - 2);
  program.formViewer.MapFileName = map;
  f.OptionChannelRename.setVisible(false);
  f.OptionBodyPartRename.setVisible(false);
  program.formViewer.setVisible(true);
  FormViewerLoad(program);
}

void FormViewerLoad(Program& program) {
  ui::FormViewer& v = program.formViewer;
  int w = 0, h = 0;
  std::filesystem::path file = text::nativePath(v.MapFileName);
  if (!isViewablePicture(file, &w, &h)) {
    v.PictureWidth = v.PictureHeight = 0;
    v.picChild.setToolTip("");
    ui::msgBox(program.services, "Map not present!", "Note!", ui::Buttons::OK, ui::Icon::Exclamation);
    return;
  }
  v.PictureWidth = w;
  v.PictureHeight = h;
  // The view reads the picture from the path the image carries as its tool tip.
  v.picChild.setToolTip(file.string());
  v.picChild.changed();
}

}  // namespace tolvane::utilities
