// Takes the screenshot the desktop's software centre shows: the main window as it runs,
// with the bundled figure opened from the command line, grabbed once the lists are
// filled. Run under Xvfb by scripts/screenshot.sh; not installed.
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <cstdio>

#include "app/app.h"
#include "gui/app_setup.h"
#include "gui/main_window.h"
#include "gui/qt_services.h"
#include "gui/qt_settings.h"
#include "program/program.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: tolvane-screenshot OUTPUT.png FIGURE\n", stderr);
    return 2;
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName(tolvane::kAppName);
  QApplication::setOrganizationName(tolvane::kAppName);
  tolvane::gui::QtServices services;
  tolvane::gui::QtSettings settings;
  tolvane::Program program(services, settings,
                           tolvane::gui::programOptions({QString::fromLocal8Bit(argv[2])}));
  tolvane::app::wire(program);
  tolvane::gui::MainWindow window(program);
  services.setWindow(&window);
  window.show();
  // The notes the figure raises on opening are closed as a user would; once none has
  // come for a while, the window is grabbed.
  int code = 1;
  int quiet = 0;
  QTimer tick;
  QObject::connect(&tick, &QTimer::timeout, [&] {
    if (QWidget* modal = QApplication::activeModalWidget()) {
      modal->close();
      quiet = 0;
    } else if (++quiet == 4) {
      code = window.grab().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
      QApplication::quit();
    }
  });
  tick.start(400);
  window.start();
  QApplication::exec();
  return code;
}
