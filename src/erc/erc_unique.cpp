#include "erc/erc_unique.h"

#include "erc/erc_common.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::erc {

namespace {
// The whole copy is made under this name first; the output takes its name once whole.
constexpr const char* kScratch = "\\Unique.tmp";
}  // namespace

void ERCUniqueMenu(Program& program) {
  const std::string path = program.opening.LabelFileNameForEditor.caption();
  std::string kind = text::PlainKind(path);
  if (kind != "pz3" && kind != "cr2") {
    ui::msgBox(program.services, "CR2 or PZ3 files only!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  ui::msgBox(
      program.services,
      "Do not use this tool with files that have multiple figures in them!  If this is the case, use the "
      "Manual Editor, Find\\Replace.\rIf you continue, a text box will appear. Type in your new name and "
      "hit enter.",
      "Alert!");
  program.opening.TextERCUnique.setVisible(true);
  program.opening.TextERCUnique.setFocus();
}

void TextERCUniqueEnter(Program& program) {
  auto& f = program.opening;
  const std::string path = f.LabelFileNameForEditor.caption();
  const std::string newName = f.TextERCUnique.text();
  const std::string output = "\\Unique." + text::Right(path, 3);
  text::deleteIgnoringErrors(program.workFile(output));
  text::StreamRewrite scratch(program.workFile(kScratch), true);
  try {
    text::FigureScanner in(text::nativePath(path));
    Pacer pacer(program);
    std::string_view line;
    while (in.rawLine(line)) {
      std::size_t at = line.find("Figure ");
      if (at == std::string_view::npos)
        scratch.WriteLine(line);
      else
        scratch.WriteLine(std::string(line.substr(0, at)) + newName);
      pacer.tick();
    }
    in.close();
    scratch.replace(program.workFile(output));
  } catch (...) {
    scratch.discard();
    throw;
  }
  ui::msgBox(
      program.services,
      "New file saved as " + program.workFile(output).string() + ", move or rename before doing another.",
      "Note!");
}

}  // namespace tolvane::erc
