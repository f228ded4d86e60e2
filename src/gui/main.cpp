// Tolvane, the desktop program: the main window over the program state.
#include <QApplication>
#include <QStyleFactory>

#include "app/app.h"
#include "gui/app_setup.h"
#include "gui/main_window.h"
#include "gui/qt_services.h"
#include "gui/qt_settings.h"
#include "program/program.h"

int main(int argc, char** argv) {
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
  tolvane::Program program(services, settings,
                           tolvane::gui::programOptions(QApplication::arguments().mid(1)));
  tolvane::app::wire(program);
  tolvane::gui::MainWindow window(program);
  services.setWindow(&window);
  window.show();
  services.setStarting(true);
  window.start();
  services.setStarting(false);
  return QApplication::exec();
}
