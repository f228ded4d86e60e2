// The main window as a desktop user meets it: the first start's Poser chooser (cancel
// and choose) with the real dialogs, the keyboard path to every picture button, the
// notepad's Tab, the recent-files list that closes, message boxes that belong to the
// window they come from, and the status bar.
#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <set>

#include "app/app.h"
#include "gui/form_windows.h"
#include "gui/picture_button.h"
#include "gui/qt_services.h"
#include "gui_test_support.h"
#include "program/program.h"
#include "ui/settings.h"

using namespace tolvane;
using namespace tolvane::gui;
using namespace tolvane::gui::test;

namespace {
// Acts on the next modal dialog as soon as it is up (polled, so that nested dialogs
// are reached too); gives up after a few seconds.
void whenModal(std::function<bool(QWidget*)> act) {
  auto* timer = new QTimer;
  auto tries = std::make_shared<int>(0);
  QObject::connect(timer, &QTimer::timeout, [timer, tries, act] {
    QWidget* modal = QApplication::activeModalWidget();
    if (qEnvironmentVariableIsSet("WINDOW_TEST_TRACE"))
      qWarning("tick %d %s", *tries, modal ? modal->metaObject()->className() : "none");
    if ((modal != nullptr && act(modal)) || ++*tries > 250) {
      timer->stop();
      timer->deleteLater();
    }
  });
  timer->start(20);
}
// Types a name into the dialog's file name box, as the user does.
void typeFileName(QFileDialog* dialog, const QString& path) {
  if (auto* box = dialog->findChild<QLineEdit*>("fileNameEdit"))
    box->setText(path);
  else
    dialog->selectFile(path);
}
}  // namespace

class WindowTest : public QObject {
  Q_OBJECT
 private slots:
  void firstStartCancelReportsAndChooseStores();
  void keyboardReachesAndPressesEveryPictureButton();
  void notepadTabLeavesAndCtrlTabTypes();
  void recentFilesListClosesWithEscapeOrAClickElsewhere();
  void notebookOpensCentredAndEscapeClosesIt();
  void statusBarShowsTheOpenFile();
  void saveDialogAsksBeforeReplacingAnotherFile();
};

// The first start asks for the Poser program in a dialog that says what to pick; a
// cancel ends in the run-time error report with a sentence under its number and text;
// a chosen program stores its folder.
void WindowTest::firstStartCancelReportsAndChooseStores() {
  struct Case {
    bool choose;
    std::string ploc;  // expected setting after the start ("0": not stored)
  };
  tolvane::test::TempDir dir;
  std::filesystem::create_directories(dir / "Poser" / "Runtime" / "Geometries");
  tolvane::test::writeFile(dir / "Poser" / "Poser.exe", "MZ");
  const std::string program = (dir / "Poser" / "Poser.exe").string();
  const Case cases[] = {{false, "0"}, {true, (dir / "Poser").string() + "/"}};
  for (const Case& c : cases) {
    qputenv("TOLVANE_SETTINGS", QByteArray::fromStdString((dir / "window.ini").string()));
    QtServices services;
    ui::MemorySettings settings;
    ProgramOptions options;
    options.workDir = dir.path();
    options.currentDir = dir / "Poser";
    options.appPath = dir.path().string();
    Program p(services, settings, options);
    app::wire(p);
    MainWindow window(p);
    services.setWindow(&window);
    window.show();

    QString title, sentence, report, advice;
    QStringList filters;
    whenModal([&](QWidget* modal) {
      auto* dialog = qobject_cast<QFileDialog*>(modal);
      if (dialog == nullptr) return false;
      title = dialog->windowTitle();
      filters = dialog->nameFilters();
      if (auto* label = dialog->findChild<QLabel*>("DialogSentence")) sentence = label->text();
      if (c.choose) {
        // The dialog's folder view fills in the background: try again until it takes the file.
        typeFileName(dialog, QString::fromStdString(program));
        static_cast<QDialog*>(dialog)->accept();
        return !dialog->isVisible();
      } else {
        dialog->reject();
        whenModal([&](QWidget* next) {
          auto* box = qobject_cast<QMessageBox*>(next);
          if (box == nullptr) return false;
          report = box->text();
          advice = box->informativeText();
          box->button(QMessageBox::Ok)->click();
          return true;
        });
      }
      return true;
    });
    services.setStarting(true);  // as the program's main does
    window.start();
    services.setStarting(false);
    QApplication::processEvents();

    QCOMPARE(title, QString("Find the Poser program"));
    QVERIFY(sentence.contains("Poser.exe") && sentence.contains("Runtime\\Geometries"));
    QVERIFY(filters.size() == 2 && filters[0].contains("Poser.exe") && filters[1].startsWith("All files"));
    QCOMPARE(settings.get(kAppName, "Startup", "PLoc", "0"), c.ploc);
    if (!c.choose) {
      QVERIFY(report.startsWith("Run-time error '5':"));
      QVERIFY(advice.contains("cancelled") && advice.contains("try again"));
    }
    qunsetenv("TOLVANE_SETTINGS");
  }
}

// Tab reaches every shown picture button; Space and Enter press it; its keys stand in
// its tool tip and press it from anywhere in the window.
void WindowTest::keyboardReachesAndPressesEveryPictureButton() {
  WindowFixture f;
  f.showFigurePage();
  ui::Opening& o = f.opening();
  for (ui::Picture* p : {&o.PictureCopyToDest, &o.PictureEMC, &o.PictureChangeRatio, &o.PictureEditor,
                         &o.PictureOBJExtract, &o.PictureOBJView, &o.PictureMapViewer})
    p->setVisible(true);
  FormBinding::flushAll();
  f.window->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(f.window.get()));

  std::vector<PictureButton*> shown;
  for (ui::Control* c : o.controls())
    if (auto* b = f.widget<PictureButton>(c->name()); b != nullptr && b->isVisible() && b->isEnabled())
      shown.push_back(b);
  QVERIFY(shown.size() >= 8);
  std::set<QWidget*> reached;
  f.widget<QWidget>("ListActors")->setFocus();
  for (int i = 0; i < 200 && reached.size() < shown.size(); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (auto* b = qobject_cast<PictureButton*>(QApplication::focusWidget())) reached.insert(b);
  }
  for (PictureButton* b : shown) {
    QVERIFY2(reached.count(b) == 1, qPrintable(b->objectName() + " is reached with Tab"));
    QVERIFY2(!b->accessibleName().isEmpty(), qPrintable(b->objectName() + " has an accessible name"));
  }

  struct Press {
    const char* picture;
    QKeySequence keys;  // empty: Space and Enter on the focused button
  };
  const Press presses[] = {{"PictureViewChannels", {}},
                           {"PictureTrash", QKeySequence("Ctrl+Shift+T")},
                           {"PictureJoints", QKeySequence("Ctrl+Shift+J")}};
  for (const Press& press : presses) {
    QWidget* button = f.window->widgetFor(press.picture);
    std::size_t before = f.recorder.of(press.picture, EventKind::Click).size();
    if (press.keys.isEmpty()) {
      button->setFocus();
      QTest::keyClick(button, Qt::Key_Space);
      QTest::keyClick(button, Qt::Key_Return);
      QCOMPARE(f.recorder.of(press.picture, EventKind::Click).size(), before + 2);
    } else {
      QVERIFY(button->toolTip().endsWith("(" + press.keys.toString(QKeySequence::NativeText) + ")"));
      f.widget<QWidget>("ListChannels")->setFocus();
      QTest::keySequence(f.window.get(), press.keys);
      QCOMPARE(f.recorder.of(press.picture, EventKind::Click).size(), before + 1);
    }
  }
}

void WindowTest::notepadTabLeavesAndCtrlTabTypes() {
  WindowFixture f;
  f.showFigurePage();
  ui::Opening& o = f.opening();
  o.TextOpeningNotes.setVisible(true);
  FormBinding::flushAll();
  f.window->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
  auto* notes = f.widget<QPlainTextEdit>("TextOpeningNotes");
  notes->setFocus();
  QTest::keyClicks(notes, "a");
  QTest::keyClick(notes, Qt::Key_Tab, Qt::ControlModifier);
  QTest::keyClicks(notes, "b");
  QCOMPARE(o.TextOpeningNotes.text(), std::string("a\tb"));
  QTest::keyClick(notes, Qt::Key_Tab);
  QVERIFY(!notes->hasFocus());
  QCOMPARE(o.TextOpeningNotes.text(), std::string("a\tb"));
}

void WindowTest::recentFilesListClosesWithEscapeOrAClickElsewhere() {
  WindowFixture f;
  f.showFigurePage();
  ui::Opening& o = f.opening();
  QWidget* list = f.window->widgetFor("ListMRU");
  for (int way = 0; way < 2; ++way) {
    o.ListMRU.setItems({"/figures/a.cr2", "/figures/b.cr2"});
    o.ListMRU.setVisible(true);
    FormBinding::flushAll();
    QVERIFY(list->isVisible());
    QVERIFY(qobject_cast<QFrame*>(list)->frameShape() == QFrame::Box && list->graphicsEffect() != nullptr);
    if (way == 0) {
      list->setFocus();
      QTest::keyClick(list, Qt::Key_Escape);
    } else {
      QWidget* elsewhere = f.window->widgetFor("ListActors");
      QTest::mouseClick(qobject_cast<QListWidget*>(elsewhere)->viewport(), Qt::LeftButton);
    }
    QApplication::processEvents();
    QVERIFY(!o.ListMRU.visible());
    QVERIFY(!list->isVisible());
  }
}

// The Notebook opens in the middle of the main window, closes with Escape, and a
// message box raised from it belongs to it.
void WindowTest::notebookOpensCentredAndEscapeClosesIt() {
  WindowFixture f;
  f.window->setGeometry(60, 60, 700, 520);  // inside the smallest test screen (800x600)
  QtServices services;
  services.setWindow(f.window.get());
  ui::Form* notes = nullptr;
  for (ui::Form* form : f.program->forms())
    if (form->name() == "FormNotes") notes = form;
  QVERIFY(notes != nullptr);
  notes->setCaption("Notebook");
  notes->setVisible(true);
  QApplication::processEvents();
  QWidget* window = f.window->formWindow("FormNotes");
  QVERIFY(window != nullptr && window->isVisible());
  QVERIFY((window->geometry().center() - f.window->geometry().center()).manhattanLength() < 40);
  window->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window));

  QWidget* parent = nullptr;
  whenModal([&](QWidget* modal) {
    auto* box = qobject_cast<QMessageBox*>(modal);
    if (box == nullptr) return false;
    parent = box->parentWidget();
    box->button(QMessageBox::Ok)->click();
    return true;
  });
  services.message(ui::Message{"Saved.", "Note", ui::Buttons::OK, ui::Icon::None});
  QCOMPARE(parent, window);

  QTest::keyClick(window->findChild<QPlainTextEdit*>("RichTextBox1"), Qt::Key_Escape);
  QApplication::processEvents();
  QVERIFY(!window->isVisible());
  QVERIFY(!notes->visible());
}

void WindowTest::statusBarShowsTheOpenFile() {
  WindowFixture f;
  std::filesystem::path figure = f.program.files() / "Vicky.cr2";
  tolvane::test::writeFile(figure, "{\r\nversion\r\n}\r\n");
  f.opening().LabelFileNameForEditor.setCaption(figure.string());
  f.window->binding().fire(nullptr, EventKind::Load);  // any event refreshes the status bar
  QLabel* status = f.window->statusBar()->findChild<QLabel*>();
  QVERIFY(status != nullptr);
  QVERIFY2(status->text().contains("CR2") && status->text().contains("15 bytes") && status->text().contains("3 lines"),
           qPrintable(status->text()));
  // The count follows a save.
  tolvane::test::writeFile(figure, "{\r\nversion\r\nactor\r\n}\r\n");
  f.window->binding().fire(nullptr, EventKind::Load);
  QVERIFY2(status->text().contains("22 bytes") && status->text().contains("4 lines"), qPrintable(status->text()));
}

// Choosing another existing file asks, as a save dialog does; the proposed file is the
// tool's own question and a new name needs none. (The dialog's own folder view fills in
// the background, which makes typing into it under test unreliable: the decision is
// checked here, the dialog's loop by hand.)
void WindowTest::saveDialogAsksBeforeReplacingAnotherFile() {
  tolvane::test::TempDir dir;
  for (const char* name : {"Proposed.cr2", "Other.cr2"}) tolvane::test::writeFile(dir / name, "{\r\n}\r\n");
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.startFolder = dir.path();
  request.fileName = "Proposed.cr2";
  auto path = [&](const char* name) { return QString::fromStdString((dir / name).string()); };
  QVERIFY(QtServices::asksBeforeReplacing(request, path("Other.cr2")));
  QVERIFY(!QtServices::asksBeforeReplacing(request, path("Proposed.cr2")));
  QVERIFY(!QtServices::asksBeforeReplacing(request, path("New.cr2")));
  request.kind = ui::FileDialogRequest::Kind::Open;
  QVERIFY(!QtServices::asksBeforeReplacing(request, path("Other.cr2")));
}

QObject* newWindowTest() { return new WindowTest; }

#include "window_test.moc"
