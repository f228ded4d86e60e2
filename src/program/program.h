// The program state: the forms, the settings store, the Services, the Work folder and
// the current directory. One instance lives as long as the program; every event
// handler gets it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "program/events.h"
#include "text/progress.h"
#include "text/run_time_random.h"
#include "ui/form_editor.h"
#include "ui/form_erc.h"
#include "ui/form_library.h"
#include "ui/form_install.h"
#include "ui/form_mat_coord.h"
#include "ui/form_obj.h"
#include "ui/form_phi.h"
#include "ui/form_utilities.h"
#include "ui/opening.h"
#include "ui/services.h"
#include "ui/settings.h"

namespace tolvane {

inline constexpr const char* kAppName = "Tolvane";

struct ProgramOptions {
  std::filesystem::path workDir;     // the folder scratch files go to
  std::filesystem::path currentDir;  // the starting current directory
  std::string appPath;               // the folder the program runs from (TolvaneLoc)
  std::string commandLine;           // the whole command line: one path or nothing
};

class Program {
 public:
  Program(ui::Services& services, ui::Settings& settings, ProgramOptions options);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  ui::Services& services;
  ui::Settings& settings;
  std::filesystem::path workDir;
  // The current directory is state of the program, not of the process: dialogs start
  // in it and set it to the chosen file's folder.
  std::filesystem::path currentDir;
  std::string appPath;
  std::string commandLine;
  bool quitRequested = false;
  // Shows the Manual Editor on the file in LabelFileNameForEditor; wired by the layer
  // above the tools, since the workspace may not name the editor.
  std::function<void()> onShowEditor;

  // The event table every event is dispatched through; empty until the program is wired.
  const EventTable& events() const;
  void setEvents(const EventTable* table) { m_events = table; }

  ui::Opening opening;
  ui::FormNotes formNotes;
  ui::FormEditor formEditor;
  ui::FormOBJ formOBJ;
  ui::FormListEMCs formListEMCs;
  ui::DialogERC dialogERC;
  ui::FormECM formECM;
  ui::FormPZ2 formPZ2;
  ui::FormMOR formMOR;
  ui::FormPZ2Combine formPZ2Combine;
  ui::FormPhi formPhi;
  ui::FormTree formTree;
  // The run-time's random numbers, one sequence for the whole program.
  text::RunTimeRandom random;
  // The installer's folder form and the small utilities' forms.
  ui::FormCR2Install formCR2Install;
  ui::Renamer renamer;
  ui::FormRenumber formRenumber;
  ui::FormViewer formViewer;
  ui::Magnifier magnifier;
  ui::FormScale formScale;
  ui::FormLaunch formLaunch;
  ui::FormMatCoord formMatCoord;

  // Every form by its name ("Opening", "FormNotes", ...); nullptr for an unknown name.
  ui::Form* form(const std::string& name) const;
  const std::vector<ui::Form*>& forms() const { return m_forms; }
  void addForm(ui::Form* form) { m_forms.push_back(form); }

  // A file in the Work folder, for a scratch name as the tools write it ("\cr2temp.txt").
  std::filesystem::path workFile(std::string_view name) const;
  // Sets the current directory to the folder of a file the user chose.
  void setCurrentDirFromFile(const std::string& chosen);
  // Reads the Poser folder ("PLoc") with its default, as every tool does each time.
  std::string posersFolder() const;
  // Shows or hides the busy pointer on every form and in the view.
  void setBusy(bool busy);

  // How far a long job is, in bytes: about every 100 ms of work the figures go to
  // Services::progress and the event loop runs. Call it as often as is cheap.
  void progress(std::uint64_t done, std::uint64_t total) { m_pace.at(done, total); }
  // The same beat for work that counts no bytes: the last figures are told again.
  void keepPace() { m_pace.tick(); }
  // The pace that the reading and copying loops of this program's handlers report to.
  text::Pace& pace() { return m_pace; }

 private:
  std::vector<ui::Form*> m_forms;
  const EventTable* m_events = nullptr;
  text::Pace m_pace;
  // Loops that report through text::reportProgress reach this program's pace, also
  // where a handler is called without the dispatcher (tests, benchmarks).
  text::PaceScope m_paceScope;
};

}  // namespace tolvane
