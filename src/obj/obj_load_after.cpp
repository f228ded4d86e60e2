#include "obj/obj_load_after.h"

#include <cmath>
#include <cstdlib>

#include "obj/obj_geometry.h"
#include "obj/obj_load.h"
#include "program/program.h"
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "text/line_writer.h"
#include "text/record_file.h"
#include "text/run_time_number.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

constexpr std::uint64_t kMorphLength = 1000;
constexpr ui::Colour kBasicGreen = 0x008000;

std::string stretchedVertexLine(std::string_view line) {
  std::string rest = text::Mid(line, 3);
  std::string x = text::Left(rest, static_cast<long long>(text::InStr(rest, " ")));
  rest = text::Mid(rest, static_cast<long long>(x.size()) + 1);
  std::string y = text::Left(rest, static_cast<long long>(text::InStr(rest, " ")));
  std::string z = text::Mid(rest, static_cast<long long>(y.size()) + 1);
  std::size_t dot = text::InStr(y, ".");
  std::string fraction = text::Mid(y, static_cast<long long>(dot) + 1);
  double multiplier = 1;
  for (std::size_t i = 0; i < fraction.size() && fraction[i] == '0'; ++i) multiplier *= 10;
  float stretched = text::CSng(text::Val("." + fraction) * multiplier +
                               text::Val(text::Left(y, static_cast<long long>(dot))));
  return "v " + x + text::Trim(text::StrSingle(stretched)) + " " + z;
}

// A coordinate of a morph's vertex record: one beginning with "-" is moved by one unit.
double morphCoordinate(const std::string& text) {
  if (text::hasPrefix(text, "-")) return text::Val(text::LTrim(text::StrDouble(text::Val(text) + 1)));
  return text::Val(text);
}

double expandedValue(double value) {
  std::string t = text::StrDouble(value);
  return text::contains(t, "E") ? text::Val(expandExponent(t)) : value;
}

void drawMorphPoints(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  double ys = f.viewerHeight * 15 / f.screenHeight, xs = f.viewerWidth * 15 / f.screenWidth;
  double offsetY = -0.004 * ys, offsetX = -0.008 * xs;
  double w = f.PictureStore.width(), h = f.PictureStore.height();
  text::RecordFile vertices(program.workFile("VArray.txt"), kVertexRecord);
  std::string record;
  while (vertices.next(record)) {
    std::string t = text::Mid(text::Trim(record), 3);
    std::size_t blank = t.find(' ');
    std::string x = t.substr(0, blank);
    std::string rest = blank == std::string::npos ? std::string() : t.substr(blank + 1);
    std::string y = rest.substr(0, rest.find(' '));
    double px = (w / 6) * (expandedValue(morphCoordinate(x) * xs) + offsetX / 2) + w / 2;
    double py = h - (expandedValue(morphCoordinate(y) * ys) + offsetY);
    f.PictureStore.setPixel(program.services, text::CLng(px), text::CLng(py), kBasicGreen);
  }
  vertices.close();
  f.PictureStore.refresh();
}

void endOfLoad(ui::FormOBJ& f) {
  f.LabelWait.setVisible(false);
  for (ui::Control* c : std::initializer_list<ui::Control*>{
           &f.LabelUVMap, &f.OptionShowPoints, &f.OptionShowPolys, &f.PictureNotes, &f.LabelViewCR2TexMap})
    c->setVisible(true);
  f.PictureLop.setEnabled(true);
  f.PicturePhiLopper.setEnabled(true);
  f.stopFlag = 0;
}

}  // namespace

std::string expandExponent(const std::string& text) {
  std::size_t e = text.find('E');
  long exponent = std::labs(static_cast<long>(text::Val(text.substr(e + 1))));
  std::string mantissa = text::Trim(text.substr(0, e));
  bool negative = text::hasPrefix(mantissa, "-");
  if (negative) mantissa.erase(0, 1);
  std::string digits = text::Replace(mantissa, ".", "");
  std::string expanded =
      (negative ? "-0." : "0.") + std::string(static_cast<std::size_t>(exponent), '0') + digits;
  return text::Left(expanded, 8);
}

void writeStretchedCopy(const std::filesystem::path& source, const std::filesystem::path& copy) {
  text::deleteIgnoringErrors(copy);
  text::FigureScanner in(source);
  text::LineWriter out(copy, text::LineWriter::Mode::Append);
  std::string_view line;
  while (in.rawLine(line))
    out.WriteLine(text::hasPrefix(line, "v ") ? stretchedVertexLine(line) : std::string(line));
  out.close();
}

void finishLoad(Program& program, bool fromCopy) {
  ui::FormOBJ& f = program.formOBJ;
  for (ui::DrawnPicture* p : {&f.PictureStore, &f.PictureStore2, &f.PictureStore3}) p->refresh();
  f.loaded = true;
  writeBoundLabels(f);
  // A stretched copy that is still lower than 0.1 is shown as it is rather than
  // stretched again and again.
  if (f.maxY < 0.1 && !fromCopy) {
    writeStretchedCopy(filePath(program, f.captionPath()), program.workFile("Param.obj"));
    f.useParamObj = true;
    f.LabelWait.setVisible(false);
    return LoadObj(program);
  }
  endOfLoad(f);
  if (text::fileLength(program.workFile("FArray.txt")) < kMorphLength) {
    program.setBusy(false);
    ui::msgBox(program.services, "This is a morph obj -- no faces in the file.", "Note!", ui::Buttons::OK);
    drawMorphPoints(program);
  }
  program.setBusy(false);
}

}  // namespace tolvane::obj
