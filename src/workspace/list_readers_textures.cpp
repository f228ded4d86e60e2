// The texture reader: the primary material's four map values for the path boxes and
// every texture value of the file in the pop-up list ListAllTexMaps.
#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

using text::contains;

namespace {

// Up to the primary material; false when the file has none.
bool findPrimaryMaterial(text::FigureScanner& in, bool hair) {
  text::Needles keys = hair ? text::Needles{"material skin", "\tmaterial"} : text::Needles{"material skin"};
  std::string_view line;
  for (;;) {
    in.skipLines(keys, false, false);
    if (!in.rawLine(line)) return false;
    if (contains(line, "material skin")) return true;
    if (hair && text::hasPrefix(line, "\tmaterial")) return true;
  }
}

struct MapValues {
  std::string transparency, reflection, bump, lastTexture;
};

}  // namespace

void ListTextureMaps(Program& program, const std::string& path) {
  ui::Opening& form = program.opening;
  text::FigureScanner in(filePath(program, path));
  yieldWhileReading(program, in);
  if (!findPrimaryMaterial(in, text::FileKind(path) == "hr2")) {
    in.close();
    ui::msgBox(program.services,
               "Either there is no texture map listed, or the primary material is not called \"skin\".",
               "Note!", ui::Buttons::OK, ui::Icon::Exclamation);
    form.TextMainTex.setText("NO_MAP");
    return;
  }
  MapValues maps;
  bool noMoreTextures = false;
  bool alerted = false;
  text::Needles keys{"Map"};  // every map keyword ends so
  std::string_view view;
  for (;;) {
    in.skipLines(keys, true, false);
    if (!in.field(view)) break;
    std::string field(view);
    if (contains(field, "transparencyMap")) maps.transparency = text::Mid(field, 17);
    if (contains(field, "reflectionMap")) maps.reflection = text::Mid(field, 14);
    if (contains(field, "bumpMap")) maps.bump = text::Mid(field, 8);
    if (!contains(field, "textureMap") || noMoreTextures) continue;
    if (field == "textureMap" && contains(in.ReadField(), "textureMap")) {
      noMoreTextures = true;
      continue;
    }
    std::string value = text::Mid(field, 12);
    if (form.ListAllTexMaps.indexOf(value) < 0) {
      form.ListAllTexMaps.addItem(value);
      if (!alerted) {
        alerted = true;
        ui::msgBox(program.services, "There is more than one texture map used in this CR2.", "ALERT!",
                   ui::Buttons::OK, ui::Icon::Exclamation);
      }
    }
    maps.lastTexture = field;
  }
  in.close();
  std::size_t quote = text::InStr(maps.lastTexture, "\"");
  std::string texture = quote > 0 ? text::Mid(maps.lastTexture, static_cast<long long>(quote))
                                  : text::Mid(maps.lastTexture, 12);
  if (contains(texture, "tringRes")) texture = "Default P4 Map";
  form.TextMainTex.setText(texture);
  form.TextMainTrans.setText(maps.transparency.empty() ? "NO_MAP" : maps.transparency);
  form.TextMainReflect.setText(maps.reflection.empty() ? "NO_MAP" : maps.reflection);
  form.TextMainBump.setText(maps.bump.empty() ? "NO_MAP" : maps.bump);
}

void TextMainTexMouseMove(Program& program) {
  ui::Opening& form = program.opening;
  if (form.ListAllTexMaps.listCount() == 0) return;
  form.ListAllTexMaps.setVisible(true);
  form.TimerListAllTexMaps.setEnabled(true);
}

void HideAllTexMaps(Program& program) {
  program.opening.ListAllTexMaps.setVisible(false);
  program.opening.TimerListAllTexMaps.setEnabled(false);
}

void TextMainOBJMouseMove(Program& program) {
  program.opening.TextMainOBJ.setToolTip(program.opening.LabelOBJFileName.caption());
}

}  // namespace tolvane
