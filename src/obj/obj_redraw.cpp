#include "obj/obj_redraw.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>

#include "obj/obj_geometry.h"
#include "obj/obj_load.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/obj_text.h"
#include "text/run_time_number.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

using Clock = std::chrono::steady_clock;

std::unordered_map<std::string, ui::Colour> colourTable(const ui::ListBox& list) {
  std::unordered_map<std::string, ui::Colour> table;
  for (const std::string& item : list.items()) {
    int r, g, b;
    colourOfItem(item, r, g, b);
    table.emplace(item.substr(0, item.find('*')), static_cast<ui::Colour>(r) |
                                                      (static_cast<ui::Colour>(g) << 8) |
                                                      (static_cast<ui::Colour>(b) << 16));
  }
  return table;
}

struct RedrawOptions {
  ui::DrawnPicture* target;
  int view;         // 1 front, 2 side, 3 top
  bool wholeFaces;  // every corner (the preview) or from the second on (the pictures)
  bool groupColours, materialColours;
};

// One pass over the OBJ with the load's line rules, drawing each face into the target.
void redraw(Program& program, const RedrawOptions& o) {
  ui::FormOBJ& f = program.formOBJ;
  auto groups = colourTable(f.ListGroupColors), materials = colourTable(f.ListMATColors);
  ViewScales scales{f.xScale, f.yScale};
  std::vector<ui::ObjVertex> table{ui::ObjVertex{}};
  text::VertexText vt;
  text::FaceCorners corners;
  std::vector<ui::PicturePoint> points;
  int w = o.target->width(), h = o.target->height();
  text::FigureScanner in(filePath(program, f.captionPath()));
  auto next = Clock::now() + std::chrono::milliseconds(50);
  std::string scratch;
  std::string_view raw, line;
  while (in.rawLine(raw)) {
    text::ObjLineKind kind = text::normaliseObjLine(raw, scratch, line);
    if (kind == text::ObjLineKind::Vertex) {
      text::splitVertexLine(line, vt);
      table.push_back(
          {text::CSng(text::Val(vt.x)), text::CSng(text::Val(vt.y)), text::CSng(text::Val(vt.z))});
    } else if (kind == text::ObjLineKind::Group || kind == text::ObjLineKind::Material) {
      bool group = kind == text::ObjLineKind::Group;
      auto& colours = group ? groups : materials;
      auto found = colours.find(std::string(line));
      if ((group ? o.groupColours : o.materialColours) && found != colours.end())
        o.target->setFillColor(found->second);
    } else if (kind == text::ObjLineKind::Face) {
      text::walkFaceCorners(line, corners);
      points.assign(corners.positions + 1, {});
      for (std::size_t c = 0; c < corners.positions; ++c) {
        PicturePoints p = project(table[text::cornerSlot(corners, c, table.size() - 1)], scales, w, h);
        std::size_t at = o.wholeFaces ? c : std::max<std::size_t>(c, 1);
        points[at] = o.view == 2 ? p.side : o.view == 3 ? p.top : p.front;
      }
      if (f.OptionNoColors.value()) f.PictureStore.setFillColor(0x800000);
      if (o.wholeFaces)
        o.target->polygon(program.services, points.data(), static_cast<int>(corners.positions));
      else if (corners.positions >= 2)
        o.target->polygon(program.services, points.data() + 1, static_cast<int>(corners.positions - 1));
    }
    if (Clock::now() >= next) {
      if (!f.drawingHidden) o.target->refresh();
      program.services.yield();
      next = Clock::now() + std::chrono::milliseconds(50);
    }
  }
  o.target->refresh();
}

}  // namespace

void RefreshOBJ(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  int view = f.OptionSideView.value() ? 2 : f.OptionTopView.value() ? 3 : 1;
  ui::DrawnPicture* pictures[] = {&f.PictureStore, &f.PictureStore2, &f.PictureStore3};
  ui::DrawnPicture* target = pictures[view - 1];
  target->Cls();
  redraw(program, {target, view, false, f.OptionColorGroups.value(), false});
}

void PreviewOBJ(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.PictureNoDX.Cls();
  redraw(program, {&f.PictureNoDX, 1, true, f.OptionColorGroups.value(), f.OptionColorMaterials.value()});
}

void invertBox(ui::DrawnPicture& picture, int x1, int y1, int x2, int y2) {
  if (x1 == x2 && y1 == y2) return;
  ui::Raster& r = picture.raster();
  auto invert = [&r](int x, int y) {
    if (x >= 0 && y >= 0 && x < r.width() && y < r.height()) r.setPixel(x, y, r.pixel(x, y) ^ 0x00FFFFFFu);
  };
  int left = std::min(x1, x2), right = std::max(x1, x2), top = std::min(y1, y2), bottom = std::max(y1, y2);
  for (int x = left; x <= right; ++x) {
    invert(x, top);
    if (bottom != top) invert(x, bottom);
  }
  for (int y = top + 1; y < bottom; ++y) {
    invert(left, y);
    if (right != left) invert(right, y);
  }
}

void drawZoomArea(ui::FormOBJ& form) {
  const ui::Raster& from = currentPicture(form).raster();
  ui::Raster& to = form.PictureZoom.raster();
  int x1 = std::clamp(form.zoomX1, 0, from.width() - 1), x2 = std::clamp(form.zoomX2, 0, from.width() - 1);
  int y1 = std::clamp(form.zoomY1, 0, from.height() - 1), y2 = std::clamp(form.zoomY2, 0, from.height() - 1);
  if (x2 <= x1 || y2 <= y1) return;
  for (int y = 0; y < to.height(); ++y)
    for (int x = 0; x < to.width(); ++x)
      to.setPixel(x, y, from.pixel(x1 + x * (x2 - x1) / to.width(), y1 + y * (y2 - y1) / to.height()));
  form.PictureZoom.refresh();
}

}  // namespace tolvane::obj
