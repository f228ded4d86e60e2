// The secondary mesh (PictureAddOBJ) in its own scratch arrays and pictures, moved by
// drags on the still pictures, and the merge of both meshes into MergeTest.obj.
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
        for (std::size_t c = 0; c < n; ++c) {
          PicturePoints p = project(table[text::cornerSlot(corners, c, table.size() - 1)], scales, w, h);
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

// The run-time text of a coordinate with the merge's lead: "-0" and the text behind the
// sign for a negative value, else "0" and the trimmed text.
std::string leadText(double value) {
  std::string t = text::Trim(text::StrSingle(value));
  return text::hasPrefix(t, "-") ? "-0" + text::Mid(t, 2) : "0" + t;
}

}  // namespace

// The text before and behind the first "*" of a texture record, each trimmed.
std::string textureLine(std::string_view record) {
  std::string_view r = trimmedView(record);
  std::size_t star = r.find('*');
  std::string line = "vt ";
  line += trimmedView(r.substr(0, star));
  line += ' ';
  if (star != std::string_view::npos) line += trimmedView(r.substr(star + 1));
  return line;
}

namespace {

// A face of the secondary mesh with both offsets: each corner's first and second number.
std::string offsetFace(std::string_view record, std::uint64_t vertexOffset, std::uint64_t textureOffset) {
  std::string out = "f";
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
    long long a = static_cast<long long>(text::Val(first)) + static_cast<long long>(vertexOffset);
    long long b = static_cast<long long>(text::Val(second)) + static_cast<long long>(textureOffset);
    out += " " + std::to_string(a) + "/" + std::to_string(b);
    at = end;
  }
  return out;
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
  f.PictureAddObjFront.setTop(text::CLng(-f.addShiftY * downY));
  f.PictureAddObjSide.setTop(text::CLng(-f.addShiftY * downY));
  f.PictureAddObjTop.setTop(text::CLng(f.addShiftZ * downY));
  f.PictureAddObjFront.setToolTip(std::to_string(text::CLng(f.addShiftX * across * scales.x)));
  f.PictureAddObjSide.setToolTip(std::to_string(text::CLng(f.addShiftZ * across * scales.y)));
  f.PictureAddObjTop.setToolTip(std::to_string(text::CLng(f.addShiftX * across * scales.x)));
}

void PictureMergeClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  program.setBusy(true);
  std::filesystem::path merge = program.workFile("Merge.txt");
  text::deleteIgnoringErrors(merge);
  try {
    text::LineWriter out(merge, text::LineWriter::Mode::Append);
    std::string_view record;
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
        std::string t(trimmedView(record.substr(1)));
        std::size_t b1 = t.find(' ');
        std::size_t b2 = b1 == std::string::npos ? std::string::npos : t.find(' ', b1 + 1);
        double x = text::Val(t.substr(0, b1));
        double y = b1 == std::string::npos ? 0 : text::Val(t.substr(b1 + 1, b2 - b1 - 1));
        double z = b2 == std::string::npos ? 0 : text::Val(t.substr(b2 + 1));
        out.WriteLine("v " + leadText(x + f.addShiftX) + " " + leadText(y + f.addShiftY) + " " +
                      leadText(z + f.addShiftZ));
      }
    }
    for (const char* name : {"VTArray.txt", "VTArrayAdd.txt"}) {
      text::RecordFile textures(program.workFile(name), kVertexRecord);
      while (textures.nextView(record)) {
        out.WriteLine(textureLine(record));
        if (std::string(name) == "VTArray.txt") ++textureOffset;
      }
    }
    for (const char* name : {"FArray.txt", "FArrayAdd.txt"}) {
      bool secondary = std::string(name) == "FArrayAdd.txt";
      text::RecordFile faces(program.workFile(name), kFaceRecord);
      while (faces.nextView(record)) {
        if (record.substr(0, 5) == "     ") continue;
        std::string_view t = trimmedView(record);
        if (secondary && text::hasPrefix(t, "f"))
          out.WriteLine(offsetFace(t, vertexOffset, textureOffset));
        else
          out.WriteLine(t);
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
