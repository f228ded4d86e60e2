#include "gui/app_setup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryFile>

#include "gui/qt_text.h"

namespace tolvane::gui {

namespace {
bool canWriteIn(const QString& folder) {
  QTemporaryFile probe(folder + "/.tolvane-probe-XXXXXX");
  return probe.open();
}
}  // namespace

std::filesystem::path workFolder() {
  QString folder = qEnvironmentVariable("TOLVANE_WORKDIR");
  if (folder.isEmpty()) {
    folder = QCoreApplication::applicationDirPath();
    if (!canWriteIn(folder)) folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
  }
  QDir().mkpath(folder);
  return std::filesystem::path(toPathText(QDir::toNativeSeparators(folder)));
}

ProgramOptions programOptions(const QStringList& arguments) {
  ProgramOptions options;
  options.workDir = workFolder();
  options.currentDir = std::filesystem::path(toPathText(QDir::currentPath()));
  options.appPath = toPathText(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
  // The whole command line is one path: no parsing, no quotes removed.
  options.commandLine = toPathText(arguments.join(' '));
  return options;
}

}  // namespace tolvane::gui
