#include "gui/app_setup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "gui/qt_text.h"
#include "program/data_folder.h"

namespace tolvane::gui {

std::filesystem::path workFolder() {
  std::filesystem::path folder = chooseWorkFolder(
      toPathText(qEnvironmentVariable("TOLVANE_WORKDIR")), toPathText(QCoreApplication::applicationDirPath()),
      toPathText(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)));
  QDir().mkpath(fromPath(folder));
  return std::filesystem::path(toPathText(QDir::toNativeSeparators(fromPath(folder))));
}

ProgramOptions programOptions(const QStringList& arguments) {
  ProgramOptions options;
  options.workDir = workFolder();
  options.currentDir = std::filesystem::path(toPathText(QDir::currentPath()));
  options.appPath = toPathText(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
  // The file arguments left after the options are one path, joined with blanks.
  options.commandLine = toPathText(arguments.join(' '));
  return options;
}

}  // namespace tolvane::gui
