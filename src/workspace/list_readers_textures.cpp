// The texture reader: the primary material's four map values for the path boxes and
// every texture value of the file in the pop-up list ListAllTexMaps.
#include <exception>

#include "text/figure_scan.h"
#include "text/list_scans.h"
#include "text/runtime_error.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

using text::contains;

void showTextures(Program& program, const text::TextureScan& scan, std::exception_ptr fault) {
  ui::Opening& form = program.opening;
  if (!scan.primaryFound && !fault) {
    ui::msgBox(program.services,
               "Either there is no texture map listed, or the primary material is not called \"skin\".",
               "Note!", ui::Buttons::OK, ui::Icon::Exclamation);
    form.TextMainTex.setText("NO_MAP");
    return;
  }
  for (const std::string& value : scan.newMaps) form.ListAllTexMaps.addItem(value);
  if (!scan.newMaps.empty())
    ui::msgBox(program.services, "There is more than one texture map used in this CR2.", "ALERT!",
               ui::Buttons::OK, ui::Icon::Exclamation);
  if (fault) std::rethrow_exception(fault);
  form.TextMainTex.setText(scan.texture);
  form.TextMainTrans.setText(scan.transparency.empty() ? "NO_MAP" : scan.transparency);
  form.TextMainReflect.setText(scan.reflection.empty() ? "NO_MAP" : scan.reflection);
  form.TextMainBump.setText(scan.bump.empty() ? "NO_MAP" : scan.bump);
}

void ListTextureMaps(Program& program, const std::string& path) {
  text::TextureScan scan;
  std::exception_ptr fault;
  try {
    text::FigureScanner in(filePath(program, path));
    text::scanTextures(in, text::FileKind(path) == "hr2", program.opening.ListAllTexMaps.items(), scan);
  } catch (const text::RuntimeError&) {
    fault = std::current_exception();
  }
  showTextures(program, scan, fault);
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
