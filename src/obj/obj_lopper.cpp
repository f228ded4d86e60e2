// The lopper: faces with a corner in a box dragged on a still picture, or every face of
// the groups whose colour was clicked, are left out of Lop.txt, which then takes the
// name the user gives. The Phi lopper goes by way of FormTree; PictureNewFile starts
// over with another OBJ.
#include <cstdlib>
#include <unordered_map>

#include "obj/obj_geometry.h"
#include "obj/obj_load.h"
#include "obj/obj_redraw.h"
#include "obj/obj_tools.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/obj_text.h"
#include "text/record_file.h"
#include "text/run_time_number.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/list_readers.h"
#include "workspace/workspace.h"

namespace tolvane::obj {

namespace {

ui::Colour rgb(int red, int green, int blue) {
  return static_cast<ui::Colour>(red) | (static_cast<ui::Colour>(green) << 8) |
         (static_cast<ui::Colour>(blue) << 16);
}

// The colour of a clicked point: -1 outside the picture, as the picture reports it.
long long colourAt(const ui::DrawnPicture& picture, int x, int y) {
  if (x < 0 || y < 0 || x >= picture.width() || y >= picture.height()) return -1;
  return static_cast<long long>(ui::colourOfPixel(picture.raster().pixel(x, y)));
}

ui::PicturePoint viewPoint(const PicturePoints& p, int view) {
  return view == 2 ? p.side : view == 3 ? p.top : p.front;
}

// The save of Lop.txt: a name of an existing file is replaced only on Yes.
void saveLop(Program& program) {
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.startFolder = program.currentDir;
  request.filter = "OBJ(*.obj)|*.obj";
  auto chosen = program.services.fileDialog(request);
  if (!chosen || chosen->empty()) return;  // Lop.txt stays
  std::string name = *chosen;
  if (text::FileKind(name) != "obj" && text::nativePath(name).extension().empty()) name += ".obj";
  program.setCurrentDirFromFile(name);
  std::filesystem::path target = filePath(program, name);
  bool exists = text::fileExists(target);
  if (exists && ui::msgBox(program.services, "File already exists. Overwrite?", "Note!", ui::Buttons::YesNo,
                           ui::Icon::Question) != ui::Answer::Yes)
    return;
  text::moveScratchInto(program.workFile("Lop.txt"), target, exists);
}

}  // namespace

void RunLopper(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.LabelWait.setVisible(true);
  program.setBusy(true);
  struct Done {
    Program& p;
    ~Done() {
      p.formOBJ.LabelWait.setVisible(false);
      p.setBusy(false);
    }
  } done{program};
  std::filesystem::path lop = program.workFile("Lop.txt");
  text::deleteIgnoringErrors(lop);
  text::LineWriter out(lop, text::LineWriter::Mode::Append);
  std::string_view record;
  {
    text::RecordFile vertices(program.workFile("VArray.txt"), kVertexRecord);
    while (vertices.nextView(record)) out.WriteLine(trimmedView(record));
  }
  {
    text::RecordFile textures(program.workFile("VTArray.txt"), kVertexRecord);
    for (std::string line; textures.nextView(record);) {
      line.clear();
      appendTextureLine(line, record);
      out.WriteLine(line);
    }
  }
  std::vector<double> clicked;
  for (const std::string& entry : f.ListLop.items()) clicked.push_back(text::Val(entry));
  std::unordered_map<std::string, ui::Colour> groupColours;
  for (const std::string& item : f.ListGroupColors.items()) {
    int r, g, b;
    colourOfItem(item, r, g, b);
    groupColours.emplace(item.substr(0, item.find('*')), rgb(r, g, b));
  }
  int view = f.currentView;
  int x1 = f.boxX1, y1 = f.boxY1, x2 = f.boxX2, y2 = f.boxY2;
  bool boxed = f.boxSet;
  ViewScales scales = viewScales(f);
  int w = f.PictureStore.width(), h = f.PictureStore.height();
  ui::DrawnPicture& shown = f.PictureObjViewer2;
  shown.Cls();
  std::string lastGroup;
  bool removed = false;
  text::FaceCorners corners;
  std::vector<ui::PicturePoint> points, projected(f.vertexTable.size());
  std::vector<char> projectedYet(f.vertexTable.size());
  text::FigureScanner in(filePath(program, f.captionPath()));
  std::string scratch;
  std::string_view raw, line;
  while (in.rawLine(raw)) {
    if (raw.empty()) continue;
    switch (text::normaliseObjLine(raw, scratch, line)) {
      case text::ObjLineKind::Group: {
        if (line != lastGroup) out.WriteLine(line);
        lastGroup.assign(line);
        auto found = groupColours.find(lastGroup);
        ui::Colour fill = found == groupColours.end() ? ui::kBlack : found->second;
        for (ui::DrawnPicture* p : {&f.PictureStore, &f.PictureStore2, &f.PictureStore3, &shown})
          p->setFillColor(fill);
        // A colour within 2% of a clicked one counts as the same.
        removed = false;
        for (double c : clicked)
          if (fill >= 0.98 * c && fill <= 1.02 * c) removed = true;
        break;
      }
      case text::ObjLineKind::Material:
        out.WriteLine(line);
        break;
      case text::ObjLineKind::Face: {
        if (removed || !text::hasPrefix(line, "f ")) break;
        text::walkFaceCorners(line, corners);
        points.resize(corners.positions);
        bool marked = false;
        for (std::size_t c = 0; c < corners.positions; ++c) {
          // A vertex is projected when a face first uses it; faces share their corners.
          std::uint32_t slot = text::cornerSlot(corners, c, f.vertexCount);
          if (slot >= projectedYet.size()) {
            projectedYet.resize(slot + 1);
            projected.resize(slot + 1);
          }
          if (!projectedYet[slot]) {
            projected[slot] = viewPoint(project(f.vertexTable[slot], scales, w, h), view);
            projectedYet[slot] = 1;
          }
          ui::PicturePoint p = projected[slot];
          points[c] = p;
          if (boxed && p.x > x1 && p.x < x2 && p.y > y1 && p.y < y2) marked = true;
        }
        if (marked) break;
        shown.polygon(program.services, points.data(), static_cast<int>(points.size()));
        out.WriteLine(trimmedView(line));
        break;
      }
      default:
        break;
    }
  }
  in.close();
  out.close();
  shown.refresh();
}

void PictureLopClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.lopMode == 0) {
    f.lopMode = -1;
    f.ListLop.clear();
    f.boxSet = false;
    f.PictureLop.setBackColor(0x008000);
    return;
  }
  f.lopMode = 0;
  f.PictureLop.setBackColor(0xC0E0FF);
  if (f.ListLop.listCount() == 0) return;
  f.boxSet = false;
  RunLopper(program);
  f.ListLop.clear();
  saveLop(program);
}

void StillPictureLopPress(Program& program, const EventArgs& args) {
  ui::FormOBJ& f = program.formOBJ;
  if (args.button != 1) return;
  int x = static_cast<int>(args.x), y = static_cast<int>(args.y);
  f.boxX1 = f.boxX2 = x;
  f.boxY1 = f.boxY2 = y;
  f.boxDragging = true;
}

void StillPictureLopMove(Program& program, const EventArgs& args) {
  ui::FormOBJ& f = program.formOBJ;
  if (!f.boxDragging || args.button != 1 || args.x < 0 || args.y < 0) return;
  ui::DrawnPicture& picture = currentPicture(f);
  invertBox(picture, f.boxX1, f.boxY1, f.boxX2, f.boxY2);
  f.boxX2 = static_cast<int>(args.x);
  f.boxY2 = static_cast<int>(args.y);
  invertBox(picture, f.boxX1, f.boxY1, f.boxX2, f.boxY2);
  picture.refresh();
}

// Every release in lop mode asks about the box. A click that did not move takes the
// colour under it for the lopper; a Yes runs the lopper at once with the box and the
// colours taken so far (a box of no size holds no corner).
void StillPictureLopRelease(Program& program, const EventArgs& args) {
  ui::FormOBJ& f = program.formOBJ;
  if (!f.boxDragging) return;
  f.boxDragging = false;
  ui::DrawnPicture& picture = currentPicture(f);
  invertBox(picture, f.boxX1, f.boxY1, f.boxX2, f.boxY2);
  picture.refresh();
  f.boxX2 = static_cast<int>(args.x);
  f.boxY2 = static_cast<int>(args.y);
  if (f.boxX1 > f.boxX2) std::swap(f.boxX1, f.boxX2);
  if (f.boxY1 > f.boxY2) std::swap(f.boxY1, f.boxY2);
  long long colour = colourAt(picture, static_cast<int>(args.x), static_cast<int>(args.y));
  if (f.boxX1 == f.boxX2 && f.boxY1 == f.boxY2 && colour >= 0 && colour != static_cast<long long>(ui::kWhite))
    f.ListLop.addItem(std::to_string(colour));
  if (ui::msgBox(program.services, "Do you want to remove the mesh in this box?", "Alert!", ui::Buttons::YesNo,
                 ui::Icon::Exclamation) != ui::Answer::Yes)
    return;
  f.boxSet = true;
  RunLopper(program);
  f.boxSet = false;
  saveLop(program);
}

void PicturePhiLopperClick(Program& program) {
  ui::FormTree& tree = program.formTree;
  tree.returnTo = "FormOBJ";
  tree.objPath = program.formOBJ.captionPath();
  fireEvent(program, "FormTree", "FormTree", EventKind::Load);
}

void PicturePhiLopperRightClick(Program& program) {
  ui::msgBox(program.services,
             "Click this to bring up a phi listing. Click a part, then the icon, and all parts in the hierarchy "
             "below and including the chosen part will be removed.",
             "Note");
}

void PhiLopperReturn(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (program.opening.TextMainOBJ.text().empty()) return;
  f.loaded = false;
  deleteToolScratch(program);
  for (ui::ListBox* l : {&f.ListGroups, &f.ListMaterials, &f.ListGrpRen, &f.ListMatRen}) l->clear();
  LoadObj(program);
}

void PictureNewFileClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  deleteToolScratch(program);
  for (ui::ListBox* l : {&f.ListGroups, &f.ListMaterials, &f.ListGrpRen, &f.ListMatRen}) l->clear();
  for (ui::Control* c : std::initializer_list<ui::Control*>{&f.PictureNotes, &f.LabelUVMap, &f.LabelSecMap,
                                                           &f.LabelSaveMap, &f.TextMapSize, &f.TextMapSizeSec})
    c->setVisible(false);
  for (ui::DrawnPicture* p :
       {&f.PictureOBJViewer, &f.PictureObjViewer2, &f.PictureStore, &f.PictureStore2, &f.PictureStore3,
        &f.PictureNoDX, &f.PictureUVMap, &f.PictureSecMap, &f.PictureZoom, &f.PictureAddObjFront,
        &f.PictureAddObjSide, &f.PictureAddObjTop}) {
    p->Cls();
    p->refresh();
  }
  f.secondaryHeld = false;
  f.PictureMerge.setVisible(false);
  if (f.useParamObj) {
    LoadObj(program);
    return;
  }
  OpenFile(program);
}

}  // namespace tolvane::obj
