// The secondary mesh (PictureAddOBJ) in its own scratch arrays and pictures, moved by
// drags on the still pictures, and the merge of both meshes into MergeTest.obj.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

#include "obj/obj_geometry.h"
#include "obj/obj_load.h"
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

namespace tolvane::obj {

namespace {

ui::DrawnPicture& addPicture(ui::FormOBJ& f, int view) {
  return view == 2 ? f.PictureAddObjSide : view == 3 ? f.PictureAddObjTop : f.PictureAddObjFront;
}

// Shows the Add picture of the current view over the still picture.
void displayAdd(ui::FormOBJ& f) {
  for (int view = 1; view <= 3; ++view) addPicture(f, view).setVisible(f.secondaryHeld && view == f.currentView);
}

void parseSecondary(Program& program, const std::filesystem::path& source) {
  ui::FormOBJ& f = program.formOBJ;
  for (const char* name : {"FArrayAdd.txt", "VArrayAdd.txt", "VTArrayAdd.txt"})
    text::deleteIgnoringErrors(program.workFile(name));
  text::RecordFile faces(program.workFile("FArrayAdd.txt"), kFaceRecord);
  text::RecordFile vertices(program.workFile("VArrayAdd.txt"), kVertexRecord);
  text::RecordFile textures(program.workFile("VTArrayAdd.txt"), kVertexRecord);
  ViewScales scales = viewScales(f);
  std::vector<ui::ObjVertex> table{ui::ObjVertex{}};
  text::VertexText vt;
  text::FaceCorners corners;
  std::vector<ui::PicturePoint> front, side, top;
  std::vector<PicturePoints> projected;
  std::vector<char> done;
  for (ui::DrawnPicture* p : {&f.PictureAddObjFront, &f.PictureAddObjSide, &f.PictureAddObjTop}) {
    p->Cls();
    p->setFillColor(0x800000);
  }
  int w = f.PictureAddObjFront.width(), h = f.PictureAddObjFront.height();
  text::FigureScanner in(source);
  std::string scratch;
  std::string_view raw, line;
  while (in.rawLine(raw)) {
    switch (text::normaliseObjLine(raw, scratch, line)) {
      case text::ObjLineKind::Vertex: {
        vertices.put(line);
        text::splitVertexLine(line, vt);
        table.push_back({text::CSng(text::Val(vt.x)), text::CSng(text::Val(vt.y)), text::CSng(text::Val(vt.z))});
        break;
      }
      case text::ObjLineKind::TextureVertex:
        textures.put(text::textureRecord(line));
        break;
      case text::ObjLineKind::Group:
      case text::ObjLineKind::Material:
        faces.put(line);
        break;
      case text::ObjLineKind::Face: {
        faces.put(line);
        text::walkFaceCorners(line, corners);
        std::size_t n = corners.positions;
        front.resize(n);
        side.resize(n);
        top.resize(n);
        projected.resize(table.size());
        done.resize(table.size());
        for (std::size_t c = 0; c < n; ++c) {
          // A vertex is projected when a face first uses it; faces share their corners.
          std::uint32_t slot = text::cornerSlot(corners, c, table.size() - 1);
          if (!done[slot]) {
            projected[slot] = project(table[slot], scales, w, h);
            done[slot] = 1;
          }
          const PicturePoints& p = projected[slot];
          front[c] = p.front;
          side[c] = p.side;
          top[c] = p.top;
        }
        int count = static_cast<int>(n);
        f.PictureAddObjFront.polygon(program.services, front.data(), count);
        f.PictureAddObjSide.polygon(program.services, side.data(), count);
        f.PictureAddObjTop.polygon(program.services, top.data(), count);
        break;
      }
      case text::ObjLineKind::Ignored:
        break;
    }
  }
  in.close();
  for (text::RecordFile* file : {&faces, &vertices, &textures}) file->close();
  f.addVertexCount = table.size() - 1;
  for (ui::DrawnPicture* p : {&f.PictureAddObjFront, &f.PictureAddObjSide, &f.PictureAddObjTop}) p->refresh();
}

// Appends the run-time text of a coordinate with the merge's lead: "-0" and the text
// behind the sign for a negative value, else "0" and the trimmed text.
void appendLeadText(std::string& out, double value) {
  std::string t = text::StrSingle(value);
  std::string_view v = trimmedView(t);
  if (text::hasPrefix(v, "-")) {
    out += "-0";
    v.remove_prefix(1);
  } else {
    out += '0';
  }
  out += v;
}

}  // namespace

// The text before and behind the first "*" of a texture record, each trimmed.
void appendTextureLine(std::string& out, std::string_view record) {
  std::string_view r = trimmedView(record);
  std::size_t star = r.find('*');
  out += "vt ";
  out += trimmedView(r.substr(0, star));
  out += ' ';
  if (star != std::string_view::npos) out += trimmedView(r.substr(star + 1));
}

std::string textureLine(std::string_view record) {
  std::string line;
  appendTextureLine(line, record);
  return line;
}

namespace {

// The whole part of a corner's number: a plain integer is read directly, anything else
// (a fraction, a sign, trailing text) through the run-time's reading.
long long cornerNumber(std::string_view number) {
  long long whole = 0;
  auto parsed = std::from_chars(number.data(), number.data() + number.size(), whole);
  if (parsed.ec == std::errc() && parsed.ptr == number.data() + number.size()) return whole;
  return static_cast<long long>(text::Val(number));
}

void appendNumber(std::string& out, long long value) {
  char digits[24];
  auto written = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, written.ptr);
}

// A face of the secondary mesh with both offsets: each corner's first and second number.
void appendOffsetFace(std::string& out, std::string_view record, std::uint64_t vertexOffset,
                      std::uint64_t textureOffset) {
  out += 'f';
  std::string_view rest = record.substr(1);
  std::size_t at = 0;
  while (at < rest.size()) {
    while (at < rest.size() && rest[at] == ' ') ++at;
    if (at >= rest.size()) break;
    std::size_t end = rest.find(' ', at);
    if (end == std::string_view::npos) end = rest.size();
    std::string_view corner = rest.substr(at, end - at);
    std::size_t slash = corner.find('/');
    std::string_view first = corner.substr(0, slash);
    std::string_view second;
    if (slash != std::string_view::npos) {
      second = corner.substr(slash + 1);
      second = second.substr(0, second.find('/'));
    }
    out += ' ';
    appendNumber(out, cornerNumber(first) + static_cast<long long>(vertexOffset));
    out += '/';
    appendNumber(out, cornerNumber(second) + static_cast<long long>(textureOffset));
    at = end;
  }
}

}  // namespace

void PictureAddOBJClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  ui::Services& s = program.services;
  auto chosen = ui::openDialog(s, program.currentDir, "Open Secondary OBJ");
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::filesystem::path source = filePath(program, *chosen);
  if (text::isReadOnly(source)) {
    if (ui::msgBox(s,
                   "This is a read-only file, probably from a CD.  It cannot be edited.  Would you like to change "
                   "this attribute so it can be edited by Tolvane?",
                   "Alert!", ui::Buttons::YesNo, ui::Icon::Exclamation) != ui::Answer::Yes)
      return;
    text::clearReadOnly(source);
  }
  program.setBusy(true);
  try {
    parseSecondary(program, source);
  } catch (...) {
    program.setBusy(false);
    throw;
  }
  program.setBusy(false);
  f.addShiftX = f.addShiftY = f.addShiftZ = 0;
  f.secondaryHeld = true;
  f.PictureMerge.setVisible(true);
  displayAdd(f);
}

void MoveTopAdd(Program& program, int view, int dx, int dy) {
  ui::FormOBJ& f = program.formOBJ;
  ViewScales scales = viewScales(f);
  double across = f.PictureStore.width() / 6.0;
  double downY = scales.y * scales.y;
  switch (view) {
    case 2:
      f.addShiftZ += dx / (across * scales.y);
      f.addShiftY -= dy / downY;
      break;
    case 3:
      f.addShiftX += dx / (across * scales.x);
      f.addShiftZ += dy / downY;
      break;
    default:
      f.addShiftX += dx / (across * scales.x);
      f.addShiftY -= dy / downY;
      break;
  }
  // Each Add picture sits where its two coordinates put it.
  int which = 1;
  for (ui::DrawnPicture* p : {&f.PictureAddObjFront, &f.PictureAddObjSide, &f.PictureAddObjTop}) {
    int left = 0, top = 0;
    AddPictureOffset(f, which++, left, top);
    p->setTop(top);
    p->setToolTip(std::to_string(left));
  }
}

void AddPictureOffset(const ui::FormOBJ& form, int view, int& dx, int& dy) {
  ViewScales scales = viewScales(form);
  double across = form.PictureStore.width() / 6.0;
  double downY = scales.y * scales.y;
  // A picture dragged far off is kept within reach of a 32-bit pixel position.
  auto pixels = [](double value) { return static_cast<int>(std::lround(std::clamp(value, -1e6, 1e6))); };
  switch (view) {
    case 2:
      dx = pixels(form.addShiftZ * across * scales.y);
      dy = pixels(-form.addShiftY * downY);
      break;
    case 3:
      dx = pixels(form.addShiftX * across * scales.x);
      dy = pixels(form.addShiftZ * downY);
      break;
    default:
      dx = pixels(form.addShiftX * across * scales.x);
      dy = pixels(-form.addShiftY * downY);
      break;
  }
}

void PictureMergeClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  program.setBusy(true);
  std::filesystem::path merge = program.workFile("Merge.txt");
  text::deleteIgnoringErrors(merge);
  try {
    text::LineWriter out(merge, text::LineWriter::Mode::Append);
    std::string_view record;
    std::string line;
    std::uint64_t vertexOffset = 0, textureOffset = 0;
    {
      text::RecordFile main(program.workFile("VArray.txt"), kVertexRecord);
      while (main.nextView(record)) {
        if (!text::hasPrefix(record, "v")) continue;
        out.WriteLine(trimmedView(record));
        ++vertexOffset;
      }
    }
    {
      text::RecordFile add(program.workFile("VArrayAdd.txt"), kVertexRecord);
      while (add.nextView(record)) {
        if (!text::hasPrefix(record, "v")) continue;
        std::string_view t = trimmedView(record.substr(1));
        std::size_t b1 = t.find(' ');
        std::size_t b2 = b1 == std::string_view::npos ? std::string_view::npos : t.find(' ', b1 + 1);
        double x = text::Val(t.substr(0, b1));
        double y = b1 == std::string_view::npos ? 0 : text::Val(t.substr(b1 + 1, b2 - b1 - 1));
        double z = b2 == std::string_view::npos ? 0 : text::Val(t.substr(b2 + 1));
        // Only x takes the lead, for the loader drops the first character of a
        // positive x; y and z are the plain trimmed text.
        line.assign("v ");
        appendLeadText(line, x + f.addShiftX);
        line += ' ';
        line += trimmedView(text::StrSingle(y + f.addShiftY));
        line += ' ';
        line += trimmedView(text::StrSingle(z + f.addShiftZ));
        out.WriteLine(line);
      }
    }
    for (bool secondary : {false, true}) {
      text::RecordFile textures(program.workFile(secondary ? "VTArrayAdd.txt" : "VTArray.txt"), kVertexRecord);
      while (textures.nextView(record)) {
        line.clear();
        appendTextureLine(line, record);
        out.WriteLine(line);
        if (!secondary) ++textureOffset;
      }
    }
    for (bool secondary : {false, true}) {
      text::RecordFile faces(program.workFile(secondary ? "FArrayAdd.txt" : "FArray.txt"), kFaceRecord);
      while (faces.nextView(record)) {
        if (record.substr(0, 5) == "     ") continue;
        std::string_view t = trimmedView(record);
        if (secondary && text::hasPrefix(t, "f")) {
          line.clear();
          appendOffsetFace(line, t, vertexOffset, textureOffset);
          out.WriteLine(line);
        } else {
          out.WriteLine(t);
        }
      }
    }
    out.close();
    text::moveScratchInto(merge, program.workFile("MergeTest.obj"), true);
  } catch (...) {
    program.setBusy(false);
    throw;
  }
  program.setBusy(false);
  ui::msgBox(program.services, "The merged mesh is saved as " + program.workFile("MergeTest.obj").string(),
             "Note!");
}

}  // namespace tolvane::obj
