// The dial tools that stream the destination through a scratch file: bending on and
// off ("\TempBend.txt"), IK chain removal ("\TempIK.txt") and the tracking speed
// ("\TS.txt") replace the file without asking; the material colours ("\color.txt") end
// in the save dialog.
#include "morph/dial_tools.h"
#include "morph/morph_common.h"
#include "program/events.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::morph {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;

namespace {

std::string partOf(const std::string& actorsLine) {
  std::size_t star = InStr(actorsLine, "*");
  return text::Trim(star > 0 ? Left(actorsLine, static_cast<long long>(star) - 1) : actorsLine);
}

std::filesystem::path working(Program& program) {
  return text::nativePath(program.opening.LabelFileNameForEditor.caption());
}

}  // namespace

void BendClick(Program& program, bool on) {
  const std::string target = on ? "\tbend 1" : "\tbend 0";
  const std::string part = partOf(program.opening.ListActors.text());
  {
    text::StreamRewrite scratch(program.workFile("\\TempBend.txt"), true);
    text::LineReader in(working(program));
    Pacer pacer(program);
    // The first "bend" line of the file, whichever part is selected.
    if (copyUntilContains(in, scratch.out(), "bend", pacer) == target) {
      scratch.discard();
      ui::msgBox(program.services,
                 std::string("Bending is already turned ") + (on ? "on" : "off") + " for this part.",
                 "Note!");
      return;
    }
    scratch.WriteLine(target);
    copyRest(in, scratch.out(), pacer);
    in.close();
    scratch.replace(working(program));
  }
  ui::msgBox(program.services, std::string("Bending turned ") + (on ? "on" : "off") + " for " + part,
             "Note!");
}

void DumpIKClick(Program& program) {
  if (ui::msgBox(program.services,
                 "This will remove all IK Chains from the file!  Are you sure you want to do this?", "Alert!",
                 ui::Buttons::YesNo) != ui::Answer::Yes)
    return;
  {
    text::StreamRewrite scratch(program.workFile("\\TempIK.txt"), true);
    text::LineReader in(working(program));
    Pacer pacer(program);
    std::string line;
    while (in.readRawLine(line)) {
      pacer.tick();
      if (contains(line, "inkyChain")) {
        // The chain and all that follows it up to the defaultPick line go.
        do line = readLine(in);
        while (!contains(line, "defaultPick"));
      }
      scratch.WriteLine(line);
    }
    in.close();
    scratch.replace(working(program));
  }
  ui::msgBox(program.services, "IK Chains have been removed from the file.", "Note");
}

void MenuDialTrackSpeedClick(Program& program) { program.opening.ListChannelsReorder.setVisible(true); }

void TextTrackingSpeedKey(Program& program, const EventArgs& args) {
  auto& f = program.opening;
  if (args.keyCode == 27) {
    f.TextTrackingSpeed.setVisible(false);
    return;
  }
  if (args.keyCode != 13) return;
  const std::string value = f.TextTrackingSpeed.text();
  {
    text::StreamRewrite scratch(program.workFile("\\TS.txt"), true);
    text::LineReader in(working(program));
    Pacer pacer(program);
    for (long long i = 1; i < f.TrackingLine; ++i) scratch.WriteLine(readLine(in));
    std::string line = copyUntilContains(in, scratch.out(), "trackingScale", pacer);
    // Through the line's first blank, tabs and all, then the typed value.
    scratch.WriteLine(Left(line, static_cast<long long>(InStr(line, " "))) + value);
    copyRest(in, scratch.out(), pacer);
    in.close();
    scratch.replace(working(program));
  }
  f.TextTrackingSpeed.setVisible(false);
  ui::msgBox(program.services, "Dial tracking speed changed to " + value, "Note!");
}

void MatColorRightClick(Program& program) {
  ui::msgBox(program.services, "Choose a material and doubleclick here to change the material color.",
             "Note!");
}

void MatHiLiteRightClick(Program& program) {
  ui::msgBox(program.services,
             "Choose a material and doubleclick here to change the material highlight color.", "Note!");
}

namespace {

// Red, green and blue of a chosen colour (kept blue-green-red).
struct Rgb {
  int r, g, b;
};
Rgb rgbOf(ui::Colour c) {
  return {static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF), static_cast<int>((c >> 16) & 0xFF)};
}

// The material's block with its colour line replaced: "\color.txt".
void writeColour(Program& program, const std::string& material, const std::string& keyword, const Rgb& rgb) {
  text::StreamRewrite scratch(program.workFile("\\color.txt"), true);
  text::LineReader in(working(program));
  Pacer pacer(program);
  scratch.WriteLine(copyUntilContains(in, scratch.out(), "material " + material, pacer));
  std::string line;
  do {
    line = readLine(in);
    if (hasPrefix(line, keyword) || hasPrefix(line, "\t\t" + keyword)) break;
    scratch.WriteLine(line);
  } while (true);
  auto part = [](int v) { return text::StrDouble(v / 256.0); };
  scratch.WriteLine("\t\t" + keyword + " " + part(rgb.r) + " " + part(rgb.g) + " " + part(rgb.b) + " 1");
  copyRest(in, scratch.out(), pacer);
  scratch.close();
}

}  // namespace

void MaterialColourDblClick(Program& program, bool highlight) {
  auto& f = program.opening;
  int index = f.ListMaterials.listIndex();
  if (index < 0) {
    ui::msgBox(program.services, "Choose a material first.", "Error!");
    return;
  }
  const auto scratch = program.workFile("\\color.txt");
  text::deleteIgnoringErrors(scratch);
  auto chosen =
      program.services.chooseColour((highlight ? f.PictureMatHiLite : f.PictureMatColor).backColor());
  if (!chosen) return;
  const Rgb rgb = rgbOf(*chosen);
  const std::string material = f.ListMaterials.list(index);
  program.setBusy(true);
  writeColour(program, material, highlight ? "KsColor" : "KdColor", rgb);
  program.setBusy(false);
  const std::string destination = f.LabelFileNameForEditor.caption();
  if (!FileSaveStep(program, scratch, destination, destination)) return;
  // The diffuse swatch and list take the colour whichever of the two was changed.
  f.PictureMatColor.setBackColor(*chosen);
  if (index < f.ListMATColors.listCount())
    f.ListMATColors.setItem(index, text::LTrim(text::StrInteger(rgb.r) + " " + text::StrInteger(rgb.g) + " " +
                                               text::StrInteger(rgb.b)));
  ui::msgBox(program.services,
             "Material " + material + " will now show up in Poser as the color you have chosen!", "Note!");
}

}  // namespace tolvane::morph
