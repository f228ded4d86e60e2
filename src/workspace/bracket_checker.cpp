#include "workspace/bracket_checker.h"

#include "text/figure_scan.h"
#include "text/figure_text.h"
#include "workspace/list_readers.h"
#include "text/runtime_error.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

using text::contains;
using text::hasPrefix;

namespace {

struct Counts {
  float left = 1;  // the file's opening brace, before the first figureResFile
  float right = 0;
};

void countBrace(std::string_view field, Counts& c) {
  if (text::charAt(field, 1) == '{') ++c.left;
  if (text::charAt(field, 1) == '}') ++c.right;
}

// Walks the parts; returns false when a part was reported as one brace out.
bool walkParts(Program& program, text::FigureScanner& in, Counts& c) {
  // Lines without a brace or a header change nothing but the position.
  text::Needles keys{"{", "}", "actor"};
  int actors = 0;
  int leftInPart = 0, rightInPart = 0;
  std::string part;
  std::string field;
  bool rewind = false;
  auto next = [&] {
    if (in.skipLines(keys, true, false) > 0) field.clear();
    if (!in.atEnd()) field.assign(in.ReadField());
  };
  while (!in.atEnd()) {
    if (!rewind) field.assign(in.ReadField());
    if (hasPrefix(field, "actor")) ++actors;
    if (actors > 0) {
      rewind = false;
      std::size_t colon = field.find(':');
      if (colon != std::string::npos) part = field.substr(0, colon);
      leftInPart = rightInPart = 0;
      field.assign(in.ReadField());
      while (!hasPrefix(field, "actor") && !in.atEnd()) {
        if (text::charAt(field, 1) == '{') ++c.left, ++leftInPart;
        if (text::charAt(field, 1) == '}') ++c.right, ++rightInPart;
        next();
        if (field == "actor UNIVERSE" && actors >= 2) rewind = true;
        if (hasPrefix(field, "actor")) {
          rewind = true;
          break;
        }
      }
    }
    const char* missing = leftInPart == rightInPart + 1   ? "Missing right bracket in "
                          : rightInPart == leftInPart + 1 ? "Missing left bracket in "
                                                          : nullptr;
    if (missing != nullptr) {
      ui::msgBox(program.services, missing + part + ". Fix this and test again!", "Note!", ui::Buttons::OK,
                 ui::Icon::Exclamation);
      return false;
    }
    countBrace(field, c);
  }
  return true;
}

}  // namespace

void CheckBrackets(Program& program) {
  ui::Opening& f = program.opening;
  if (f.OpenFilePath.empty()) {
    std::optional<std::string> chosen;
    text::ignoreErrors([&] { chosen = ui::openDialog(program.services, program.currentDir); });
    if (!chosen || chosen->empty()) return;
    f.OpenFilePath = *chosen;
  }
  program.setBusy(true);
  // A file that cannot be opened (a folder, a file gone, one the user may not read) is
  // reported; a fault once it is read, reading past the end above all, ends the check
  // quietly.
  text::FigureScanner in(filePath(program, f.OpenFilePath));
  try {
    text::Needles figureRes{"figureResFile"};
    do in.skipLines(figureRes, true, false);
    while (!contains(in.ReadField(), "figureResFile"));
    Counts c;
    if (walkParts(program, in, c)) {
      in.close();
      ui::Picture& result = c.left == c.right  ? f.PictureBrktsOK
                            : c.left < c.right ? f.PictureBrktLeft
                                               : f.PictureBrktRight;
      result.setVisible(true);
      f.MenuFile.setEnabled(false);
      f.MenuCR2Tools.setEnabled(false);
      f.TimerPushpin.setEnabled(true);
    }
  } catch (const text::RuntimeError& e) {
    if (e.number() == text::kOutOfStringSpace) throw;  // no figure: the user is told
  }
  program.setBusy(false);
}

void DismissBracketResult(Program& program, const std::string& picture) {
  ui::Opening& f = program.opening;
  if (ui::Control* c = f.control(picture)) c->setVisible(false);
  f.PicturePushPin.setVisible(false);
  f.TimerPushpin.setEnabled(false);
  f.MenuFile.setEnabled(true);
  f.MenuCR2Tools.setEnabled(true);
}

void TimerPushpinTick(Program& program) { program.opening.PicturePushPin.setVisible(true); }

}  // namespace tolvane
