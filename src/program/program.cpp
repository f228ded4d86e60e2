#include "program/program.h"

#include "text/figure_text.h"
#include "text/gzip_file.h"

namespace tolvane {

Program::Program(ui::Services& services_, ui::Settings& settings_, ProgramOptions options)
    : services(services_),
      settings(settings_),
      workDir(std::move(options.workDir)),
      currentDir(std::move(options.currentDir)),
      appPath(std::move(options.appPath)),
      commandLine(std::move(options.commandLine)),
      m_pace([this](std::uint64_t done, std::uint64_t total) {
        // The windows show the figures of a busy job only; other work just yields.
        for (ui::Form* f : m_forms)
          if (f->busy()) f->setProgress(done, total);
        services.progress(done, total);
        services.yieldHoldingInput();
      }),
      m_paceScope(m_pace) {
  addForm(&opening);
  addForm(&formNotes);
  addForm(&formEditor);
  addForm(&formOBJ);
  addForm(&formListEMCs);
  addForm(&dialogERC);
  addForm(&formECM);
  addForm(&formPZ2);
  addForm(&formMOR);
  addForm(&formPZ2Combine);
  addForm(&formPhi);
  addForm(&formTree);
  for (ui::Form* f : std::initializer_list<ui::Form*>{&formCR2Install, &renamer, &formRenumber, &formViewer,
                                                      &magnifier, &formScale, &formLaunch, &formMatCoord})
    addForm(f);
  // Compressed figures are unpacked beside the other scratch files.
  text::gzip::setUnpackFolder(workDir);
}

const EventTable& Program::events() const {
  static const EventTable none;
  return m_events != nullptr ? *m_events : none;
}

ui::Form* Program::form(const std::string& name) const {
  for (ui::Form* f : m_forms)
    if (f->name() == name) return f;
  return nullptr;
}

std::filesystem::path Program::workFile(std::string_view name) const { return text::workFile(workDir, name); }

void Program::setCurrentDirFromFile(const std::string& chosen) {
  std::filesystem::path folder = text::nativePath(chosen).parent_path();
  if (!folder.empty()) currentDir = folder;
}

std::string Program::posersFolder() const { return settings.get(kAppName, "Startup", "PLoc", "0"); }

void Program::setBusy(bool busy) {
  // A job that starts counts its time and bytes afresh.
  if (busy && !opening.busy()) m_pace.restart();
  for (ui::Form* f : m_forms) f->setBusy(busy);
  services.setBusy(busy);
}

}  // namespace tolvane
