// The main window during a long open: the status bar's bar counts in percent, the
// window keeps painting, clicks made meanwhile start nothing, and the bar goes away
// when the open ends.
#include <QApplication>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "app/app.h"
#include "generator/generator.h"
#include "gui/form_binding.h"
#include "gui/main_window.h"
#include "gui/qt_services.h"
#include "program/program.h"
#include "test_files.h"
#include "ui/settings.h"

using namespace tolvane;
namespace fs = std::filesystem;

namespace {

// The desktop services with the user's answers given at once: OK to every message and
// the figure to the open dialog, so that nothing waits for a person.
class AnsweringServices : public gui::QtServices {
 public:
  fs::path figure;
  ui::Answer message(const ui::Message&) override { return ui::Answer::OK; }
  std::optional<std::string> fileDialog(const ui::FileDialogRequest&) override { return figure.string(); }
};

// Counts the paint events of the main window and its widgets while a handler runs.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* window) : m_window(window) {}
  int paints = 0;
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Paint && widget != nullptr && widget->window() == m_window &&
        gui::FormBinding::handlerRunning())
      ++paints;
    return false;
  }

 private:
  QWidget* m_window;
};

}  // namespace

class ProgressGuiTest : public QObject {
  Q_OBJECT

 private slots:
  void largeOpenShowsPercentKeepsPaintingAndTakesNoClicks() {
    test::TempDir dir;
    fs::create_directories(dir / "work");
    AnsweringServices services;
    services.figure = dir / "big.cr2";
    gen::LargeFigureOptions options;
    options.targetBytes = 32ull << 20;
    gen::writeLargeFigure(services.figure, options);
    QVERIFY(fs::file_size(services.figure) > gui::MainWindow::kMeasuredFrom);

    qputenv("TOLVANE_SETTINGS", QByteArray::fromStdString((dir / "window.ini").string()));
    ui::MemorySettings settings;
    settings.save(kAppName, "Startup", "PLoc", (dir / "Poser").string() + "/");
    ProgramOptions po;
    po.workDir = dir / "work";
    po.currentDir = dir.path();
    Program program(services, settings, po);
    app::wire(program);
    // Every chance to report is taken, so that the test does not hang on the machine's speed.
    program.pace().setEvery(std::chrono::steady_clock::duration::zero());
    std::vector<std::string> fired;
    gui::MainWindow window(program, [&fired](Program& p, const std::string& form, const std::string& control,
                                             EventKind kind, const EventArgs& args) {
      fired.push_back(control);
      return fireEvent(p, form, control, kind, args);
    });
    services.setWindow(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QProgressBar* bar = window.progressBar();
    QVERIFY(bar->isHidden());

    // What the bar shows while the open runs, looked at from the event loop it yields to,
    // and a click on a tool button that must start nothing on top of the open.
    QList<int> shown;
    bool clicked = false;
    QTimer probe;
    probe.setInterval(0);
    QObject::connect(&probe, &QTimer::timeout, [&] {
      if (!gui::FormBinding::handlerRunning() || !bar->isVisible()) return;
      if (bar->maximum() == 100) shown << bar->value();
      if (!clicked) {
        clicked = true;
        QTest::mouseClick(window.widgetFor("PictureViewChannels"), Qt::LeftButton);
        QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
      }
    });
    PaintCounter paints(&window);
    qApp->installEventFilter(&paints);
    probe.start();
    window.binding().fire(&program.opening.MenuFileOpen, EventKind::Click);
    probe.stop();
    qApp->removeEventFilter(&paints);
    qunsetenv("TOLVANE_SETTINGS");

    QCOMPARE(program.opening.LabelFileNameForEditor.caption(), services.figure.string());
    QVERIFY2(!shown.isEmpty(), "the bar counted in percent during the open");
    for (int value : shown) QVERIFY(value >= 0 && value <= 100);
    QVERIFY(std::is_sorted(shown.begin(), shown.end()));
    QVERIFY2(paints.paints > 0, "the window painted during the open");
    QVERIFY(clicked);
    QCOMPARE(fired, std::vector<std::string>{"MenuFileOpen"});
    QVERIFY(bar->isHidden());
    QCOMPARE(bar->maximum(), 0);
  }
};

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ProgressGuiTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "progress_test.moc"
