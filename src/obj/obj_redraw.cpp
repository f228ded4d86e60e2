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
class Redraw {
 public:
  Redraw(Program& program, const RedrawOptions& o)
      : m_program(program),
        m_form(program.formOBJ),
        m_o(o),
        m_groups(colourTable(m_form.ListGroupColors)),
        m_materials(colourTable(m_form.ListMATColors)),
        m_scales{m_form.xScale, m_form.yScale} {}

  void run() {
    text::FigureScanner in(filePath(m_program, m_form.captionPath()));
    auto next = Clock::now() + std::chrono::milliseconds(50);
    std::string scratch;
    std::string_view raw, line;
    while (in.rawLine(raw)) {
      text::ObjLineKind kind = text::normaliseObjLine(raw, scratch, line);
      if (kind == text::ObjLineKind::Vertex) {
        text::splitVertexLine(line, m_vertex);
        m_table.push_back({text::CSng(text::Val(m_vertex.x)), text::CSng(text::Val(m_vertex.y)),
                           text::CSng(text::Val(m_vertex.z))});
      } else if (kind == text::ObjLineKind::Group) {
        colour(line, m_groups, m_o.groupColours);
      } else if (kind == text::ObjLineKind::Material) {
        colour(line, m_materials, m_o.materialColours);
      } else if (kind == text::ObjLineKind::Face) {
        face(line);
      }
      if (Clock::now() >= next) {
        if (!m_form.drawingHidden) m_o.target->refresh();
        m_program.services.yield();
        next = Clock::now() + std::chrono::milliseconds(50);
      }
    }
    m_o.target->refresh();
  }

 private:
  void colour(std::string_view line, const std::unordered_map<std::string, ui::Colour>& colours, bool on) {
    auto found = colours.find(std::string(line));
    if (on && found != colours.end()) m_o.target->setFillColor(found->second);
  }

  void face(std::string_view line) {
    text::walkFaceCorners(line, m_corners);
    m_points.assign(m_corners.positions + 1, {});
    int w = m_o.target->width(), h = m_o.target->height();
    for (std::size_t c = 0; c < m_corners.positions; ++c) {
      PicturePoints p = project(m_table[text::cornerSlot(m_corners, c, m_table.size() - 1)], m_scales, w, h);
      std::size_t at = m_o.wholeFaces ? c : std::max<std::size_t>(c, 1);
      m_points[at] = m_o.view == 2 ? p.side : m_o.view == 3 ? p.top : p.front;
    }
    if (m_form.OptionNoColors.value()) m_form.PictureStore.setFillColor(0x800000);
    auto count = static_cast<int>(m_corners.positions);
    if (m_o.wholeFaces)
      m_o.target->polygon(m_program.services, m_points.data(), count);
    else if (count >= 2)
      m_o.target->polygon(m_program.services, m_points.data() + 1, count - 1);
  }

  Program& m_program;
  ui::FormOBJ& m_form;
  const RedrawOptions& m_o;
  std::unordered_map<std::string, ui::Colour> m_groups, m_materials;
  ViewScales m_scales;
  std::vector<ui::ObjVertex> m_table{ui::ObjVertex{}};
  text::VertexText m_vertex;
  text::FaceCorners m_corners;
  std::vector<ui::PicturePoint> m_points;
};

}  // namespace

void RefreshOBJ(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  int view = f.OptionSideView.value() ? 2 : f.OptionTopView.value() ? 3 : 1;
  ui::DrawnPicture* pictures[] = {&f.PictureStore, &f.PictureStore2, &f.PictureStore3};
  ui::DrawnPicture* target = pictures[view - 1];
  target->Cls();
  RedrawOptions options{target, view, false, f.OptionColorGroups.value(), false};
  Redraw(program, options).run();
}

void PreviewOBJ(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.PictureNoDX.Cls();
  RedrawOptions options{&f.PictureNoDX, 1, true, f.OptionColorGroups.value(), f.OptionColorMaterials.value()};
  Redraw(program, options).run();
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
