// Tolvane, the desktop program: the main window over the program state.
#include <QApplication>
#include <cstdio>
#include <QStyleFactory>

#include "app/app.h"
#include "gui/app_setup.h"
#include "gui/command_line.h"
#include "gui/main_window.h"
#include "gui/qt_services.h"
#include "gui/qt_settings.h"
#include "program/program.h"

int main(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  const tolvane::gui::CommandLine line = tolvane::gui::parseCommandLine(arguments);
  if (line.action != tolvane::gui::CommandLine::Action::Run) {
    bool error = line.action == tolvane::gui::CommandLine::Action::Error;
    std::fputs(line.output.c_str(), error ? stderr : stdout);
    return error ? 2 : 0;
  }
  QApplication app(argc, argv);
  // One look on every desktop and in screenshots: Fusion with the platform's palette.
  if (QStyle* fusion = QStyleFactory::create("Fusion")) {
    QPalette platform = QApplication::palette();
    QApplication::setStyle(fusion);
    QApplication::setPalette(platform);
  }
  QApplication::setApplicationName(tolvane::kAppName);
  QApplication::setOrganizationName(tolvane::kAppName);

  tolvane::gui::QtServices services;
  tolvane::gui::QtSettings settings;
  tolvane::Program program(services, settings, tolvane::gui::programOptions(line.files));
  tolvane::app::wire(program);
  tolvane::gui::MainWindow window(program);
  services.setWindow(&window);
  window.show();
  services.setStarting(true);
  window.start();
  services.setStarting(false);
  return QApplication::exec();
}
