// Tolvane, the desktop program: the main window over the program state.
#include <QApplication>

#include "app/app.h"
#include "gui/app_setup.h"
#include "gui/main_window.h"
#include "gui/qt_services.h"
#include "gui/qt_settings.h"
#include "program/program.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(tolvane::kAppName);
  QApplication::setOrganizationName(tolvane::kAppName);

  tolvane::gui::QtServices services;
  tolvane::gui::QtSettings settings;
  tolvane::Program program(services, settings,
                           tolvane::gui::programOptions(QApplication::arguments().mid(1)));
  tolvane::app::wire(program);
  tolvane::gui::MainWindow window(program);
  services.setWindow(&window);
  window.show();
  window.start();
  return QApplication::exec();
}
