// The desktop program's command line: --help, --version, and the file to open. It is
// read before the window system is reached, so that --help and --version answer on a
// machine without a display. The file names left after the options are joined with
// blanks into the one path the program opens, as a path with blanks that the shell split
// was always taken whole.
#pragma once

#include <QStringList>
#include <string>

namespace tolvane::gui {

struct CommandLine {
  enum class Action { Run, Help, Version, Error } action = Action::Run;
  std::string output;  // what --help, --version or an error prints
  QStringList files;   // the positional arguments
};

// `arguments` with the program's name first, as QCoreApplication::arguments() has them.
CommandLine parseCommandLine(const QStringList& arguments);

}  // namespace tolvane::gui
