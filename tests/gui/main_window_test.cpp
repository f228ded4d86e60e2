// The main window as the user meets it: menus, panes, clicks, drags and drops, the
// handlers of the program behind them, and the windows of other forms.
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <tuple>

#include "gui/binders.h"
#include "gui/picture_button.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;
using namespace tolvane::gui;
using namespace tolvane::gui::test;

class MainWindowTest : public QObject {
  Q_OBJECT
 private slots:
  void comesUpWithMenusAndPanes();
  void widgetsFireTheirEvents();
  void linesAndFilesDropOnTheForm();
  void notebookWindowFollowsItsForm();
  void libraryWindowsBindEveryControl();
  void sampleFigureFillsThePanes();
};

void MainWindowTest::comesUpWithMenusAndPanes() {
  WindowFixture f;
  QStringList titles;
  for (QAction* a : f.window->menuBar()->actions()) titles << a->text();
  QCOMPARE(titles, QStringList({"&File", "&CR2 Tools", "&Library Files", "&Help"}));
  // Each menu's entries with their shortcuts, in order; "-" is a separator.
  auto entries = [&](const char* menu) {
    QStringList out;
    for (QAction* a : f.window->menuFor(menu)->actions())
      out << (a->isSeparator() ? "-" : a->text() + " " + a->shortcut().toString());
    return out;
  };
  QCOMPARE(entries("MenuFile"), QStringList({"&Open... Ctrl+O", "&Save Ctrl+S", "Save &As... Ctrl+Shift+S",
                                             "&Recent Files ", "-", "E&xit Ctrl+Q"}));
  QCOMPARE(entries("MenuCR2Tools"),
           QStringList({"&Bracket Checker Ctrl+B", "&Manual Editor Ctrl+E", "Clear &ReadOnly Attributes... ",
                        "-", "Hide/Unhide Dials ", "Turn Off Bending ", "Turn On Bending ", "Dial Tracking Speed ",
                        "Remove IK Chains ", "Remove/Replace Twist Parameters ", "Force/Unforce Limits ",
                        "Mirror Morphs ", "Open Mirrored Morph Result ", "Transfer Body Parts ", "-",
                        "Prop Obj File Relocator ", "Prop Texture File Relocator ", "-", "&Notepad ",
                        "Open Note&book ", "-", "ERC &Unique Name ", "Install Files From CR2 ", "Dial Renamer ",
                        "Renumber File Sequence ", "Check for Current Version and News ", "Web Tutorials ",
                        "Tolvane Help ", "Start Poser ", "Quickboot ", "Magnifier ", "Graph Paper ", "Launcher ",
                        "Coordinate Materials with OBJ ", "New CR2 with External OBJ "}));
  QCOMPARE(entries("MenuHelp"), QStringList({"&Help ", "&About Tolvane F1"}));
  // The panes give their lines to drags and take several at once.
  for (const char* pane : {"ListActors", "ListChannels"}) {
    auto* list = f.widget<LineList>(pane);
    QVERIFY(list != nullptr);
    QCOMPARE(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(list->dragSource(), QString("Opening.") + pane);
  }
  // Every control of the form has a widget or a menu entry.
  for (ui::Control* c : f.opening().controls())
    if (c->kind() != ui::ControlKind::Menu && c->kind() != ui::ControlKind::Timer)
      QVERIFY2(f.window->widgetFor(c->name()) != nullptr, c->name().c_str());

  auto* progress = f.window->findChild<QProgressBar*>();
  QVERIFY(!progress->isVisible());
  f.opening().setBusy(true);
  QVERIFY(progress->isVisible());
  f.opening().setBusy(false);
  QVERIFY(!progress->isVisible());
  // A form whose unload does not ask to quit keeps its window.
  QVERIFY(!f.window->close());
  QCOMPARE(f.recorder.of("Opening", EventKind::Unload).size(), size_t(1));
  QVERIFY(f.window->isVisible());
}

void MainWindowTest::widgetsFireTheirEvents() {
  WindowFixture f;
  f.showFigurePage();
  auto* view = f.widget<PictureButton>("PictureViewChannels");
  QTest::mouseClick(view, Qt::LeftButton);
  QTest::mouseClick(view, Qt::RightButton);
  QTest::mouseClick(f.widget<QLabel>("LabelMainTex"), Qt::LeftButton);
  QTest::mouseDClick(f.widget<QLineEdit>("TextMainOBJ"), Qt::LeftButton);
  // The notes box takes its clicks on the viewport.
  QTest::mouseClick(f.widget<QPlainTextEdit>("TextOpeningNotes")->viewport(), Qt::RightButton);
  auto* rename = f.widget<QLineEdit>("TextMorphRename");
  rename->setFocus();
  QTest::keyClicks(rename, "hip");
  QTest::keyClick(rename, Qt::Key_Return);
  const std::tuple<const char*, EventKind, size_t> counts[] = {
      {"PictureViewChannels", EventKind::Click, 1}, {"PictureViewChannels", EventKind::RightClick, 1},
      {"PictureViewChannels", EventKind::Press, 2}, {"LabelMainTex", EventKind::Click, 1},
      {"TextMainOBJ", EventKind::DblClick, 1},      {"TextOpeningNotes", EventKind::RightClick, 1},
      {"TextMorphRename", EventKind::Key, 4},       {"TextMorphRename", EventKind::Enter, 1},
      {"TextMorphRename", EventKind::Change, 3}};
  for (const auto& [control, kind, n] : counts) QVERIFY2(f.recorder.of(control, kind).size() == n, control);
  auto keys = f.recorder.of("TextMorphRename", EventKind::Key);
  QCOMPARE(keys[0].args.keyCode, int('H'));
  QCOMPARE(keys[3].args.keyCode, 13);

  // A list's selection reaches the model before the click does; Ctrl adds a line.
  f.opening().ListChannels.setItems({"ALL CHANNELS", "************************", "hip:1\tPBMBelly"});
  FormBinding::flushAll();
  auto* list = f.widget<QListWidget>("ListChannels");
  QPoint line = list->visualItemRect(list->item(2)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, line);
  QCOMPARE(f.opening().ListChannels.listIndex(), 2);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    list->visualItemRect(list->item(0)).center());
  QCOMPARE(f.opening().ListChannels.selectedIndexes(), std::vector<int>({0, 2}));
  auto clicks = f.recorder.of("ListChannels", EventKind::Click);
  QCOMPARE(clicks.size(), size_t(2));
  QCOMPARE(clicks[0].channelsSelected, std::vector<int>({2}));
  QCOMPARE(clicks[1].channelsSelected, std::vector<int>({0, 2}));
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line);
  QCOMPARE(f.recorder.of("ListChannels", EventKind::DblClick).size(), size_t(1));

  f.window->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
  QTest::keyClick(f.window.get(), Qt::Key_O, Qt::ControlModifier);
  QCOMPARE(f.recorder.of("MenuFileOpen", EventKind::Click).size(), size_t(1));
  // While a Bracket Checker result holds the File menu, its shortcuts do nothing.
  f.opening().MenuFile.setEnabled(false);
  QApplication::processEvents();
  QTest::keyClick(f.window.get(), Qt::Key_O, Qt::ControlModifier);
  QCOMPARE(f.recorder.of("MenuFileOpen", EventKind::Click).size(), size_t(1));
  f.opening().MenuFile.setEnabled(true);
  QApplication::processEvents();
  f.window->menuFor("MenuFile")->actions().at(0)->trigger();
  QCOMPARE(f.recorder.of("MenuFileOpen", EventKind::Click).size(), size_t(2));
  emit f.window->menuFor("MenuFile")->aboutToShow();
  QCOMPARE(f.recorder.of("MenuFile", EventKind::Click).size(), size_t(1));

  // A timer of the form ticks while its model is enabled.
  f.opening().TimerPushpin.setInterval(5);
  f.opening().TimerPushpin.setEnabled(true);
  QTRY_VERIFY(f.recorder.of("TimerPushpin", EventKind::Timer).size() >= 2);
  f.opening().TimerPushpin.setEnabled(false);
  QApplication::processEvents();
  size_t ticks = f.recorder.of("TimerPushpin", EventKind::Timer).size();
  QTest::qWait(30);
  QCOMPARE(f.recorder.of("TimerPushpin", EventKind::Timer).size(), ticks);
}

void MainWindowTest::linesAndFilesDropOnTheForm() {
  WindowFixture f;
  f.showFigurePage();
  f.opening().ListChannels.setItems({"ALL CHANNELS", "************************", "chest:1\tTwist"});
  FormBinding::flushAll();
  auto* list = f.widget<LineList>("ListChannels");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
  std::unique_ptr<QMimeData> lines(list->mimeData(list->selectedItems()));
  QCOMPARE(lines->text(), QString("chest:1\tTwist"));
  dropOn(f.window->widgetFor("PictureTrash"), lines.get());
  // Other pictures take no lines.
  dropOn(f.window->widgetFor("PictureJoints"), lines.get());
  QVERIFY(f.recorder.of("PictureJoints", EventKind::Drop).empty());
  // The Delete key on the pane does what the drop does.
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Delete);
  auto drops = f.recorder.of("PictureTrash", EventKind::Drop);
  QCOMPARE(drops.size(), size_t(2));
  for (const RecordedEvent& drop : drops) QCOMPARE(drop.args.source, std::string("Opening.ListChannels"));
  QCOMPARE(drops[1].channelsSelected, std::vector<int>({2}));

  // Wherever a file from the desktop lands, the boxes included, the window takes it.
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile("/tmp/figures/Vicky.cr2")});
  QWidget* targets[] = {f.window->widgetFor("ListActors"), f.window->widgetFor("TextMainOBJ"),
                        f.widget<QPlainTextEdit>("TextOpeningNotes")->viewport()};
  for (QWidget* target : targets) dropOn(target, &files);
  drops = f.recorder.of("Opening", EventKind::Drop);
  QCOMPARE(drops.size(), std::size(targets));
  for (const RecordedEvent& drop : drops)
    QCOMPARE(drop.args.files, std::vector<std::string>({"/tmp/figures/Vicky.cr2"}));
  QCOMPARE(f.opening().TextMainOBJ.text(), std::string());
}

void MainWindowTest::notebookWindowFollowsItsForm() {
  WindowFixture f;
  ui::FormNotes& notes = f.program->formNotes;
  notes.RichTextBox1.setText("**** 1/2/2026 ****\r\nfirst note");
  notes.setVisible(true);
  QWidget* window = f.window->formWindow("FormNotes");
  QVERIFY(window != nullptr);
  QVERIFY(window->isVisible());
  QCOMPARE(window->windowTitle(), QString("Notebook"));
  auto* text = window->findChild<QPlainTextEdit*>("RichTextBox1");
  QCOMPARE(text->toPlainText(), QString("**** 1/2/2026 ****\nfirst note"));
  text->appendPlainText("second");
  QCOMPARE(notes.RichTextBox1.text(), std::string("**** 1/2/2026 ****\r\nfirst note\r\nsecond"));

  QTest::mouseClick(window->findChild<QPushButton*>("CommandSave"), Qt::LeftButton);
  QCOMPARE(f.recorder.of("CommandSave", EventKind::Click).size(), size_t(1));
  QCOMPARE(f.recorder.of("CommandSave", EventKind::Click)[0].form, std::string("FormNotes"));

  window->close();
  QVERIFY(!notes.visible());
  QCOMPARE(f.recorder.of("FormNotes", EventKind::Unload).size(), size_t(1));
  notes.setVisible(true);
  QVERIFY(window->isVisible());
  notes.setVisible(false);
  QVERIFY(!window->isVisible());
}

void MainWindowTest::libraryWindowsBindEveryControl() {
  WindowFixture f;
  const std::tuple<ui::Form*, const char*, const char*> forms[] = {
      {&f.program->formPZ2, "PZ2 Editor", "LabelDonePZ2"},
      {&f.program->formMOR, "PZ2 Editor -- MOR Files", "LabelDone"},
      {&f.program->formPZ2Combine, "PZ2 Welder", "LabelDone"},
  };
  for (const auto& [form, title, done] : forms) {
    form->setVisible(true);
    QWidget* window = f.window->formWindow(form->name());
    QVERIFY(window != nullptr);
    QCOMPARE(window->windowTitle(), QString(title));
    // Every control of the model has its widget, by the control's name.
    for (ui::Control* control : form->controls())
      QVERIFY2(window->findChild<QWidget*>(QString::fromStdString(control->name())) != nullptr,
               control->name().c_str());
    QTest::mouseClick(window->findChild<QPushButton*>(done), Qt::LeftButton);
    auto clicks = f.recorder.of(done, EventKind::Click);
    QVERIFY(!clicks.empty());
    QCOMPARE(clicks.back().form, form->name());
    form->setVisible(false);
    QVERIFY(!window->isVisible());
  }
  // The material controls show with the mode.
  ui::FormPZ2& pose = f.program->formPZ2;
  pose.setVisible(true);
  QWidget* window = f.window->formWindow("FormPZ2");
  QTRY_VERIFY(!window->findChild<QWidget*>("CheckIncludeMaps")->isVisible());
  pose.CheckIncludeMaps.setVisible(true);
  QTRY_VERIFY(window->findChild<QWidget*>("CheckIncludeMaps")->isVisible());
}

void MainWindowTest::sampleFigureFillsThePanes() {
  // A whole session: the start runs the form's load, the figure comes in as the launcher
  // takes it, dropped on the window, and the close ends the program.
  WindowFixture f(true);
  auto samples = tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime", f.program.files());
  f.program.settings.save("Tolvane", "Startup", "PLoc", f.program.files().string() + "/");
  f.program.settings.save("Tolvane", "MRUFiles", "0", "/figures/a.cr2");
  f.window->start();
  QCOMPARE(f.recorder.of("Opening", EventKind::Load).size(), size_t(1));
  auto* mru = f.widget<QListWidget>("ListMRU");
  QCOMPARE(mru->item(0)->text(), QString("/figures/a.cr2"));
  // Recent Files floats the list at the top left of the window; the File menu puts it away.
  f.window->menuFor("MenuFile")->actions().at(3)->trigger();
  QVERIFY(mru->isVisible());
  QCOMPARE(mru->pos(), QPoint(8, 8));
  emit f.window->menuFor("MenuFile")->aboutToShow();
  QVERIFY(!mru->isVisible());
  auto figure = samples / "Libraries" / "Character" / "Tolvane" / "Ava.cr2";
  for (int i = 0; i < 5; ++i) f.program.services.answer(ui::Answer::OK);  // notes on the file's maps
  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(figure.string()))});
  dropOn(f.window->widgetFor("ImageSplash"), &mime);
  QApplication::processEvents();
  auto* actors = f.widget<QListWidget>("ListActors");
  QVERIFY(actors->isVisible());
  QCOMPARE(actors->item(0)->text().left(6), QString(" BODY:"));
  QCOMPARE(f.widget<QListWidget>("ListChannels")->item(0)->text(), QString("ALL CHANNELS"));
  QVERIFY(!f.window->widgetFor("ImageSplash")->isVisible());
  QVERIFY(f.window->menuFor("MenuCR2Tools")->menuAction()->isEnabled());
  QVERIFY(f.window->close());
  QVERIFY(f.program->quitRequested);
  QVERIFY(!f.window->isVisible());
}

QObject* newMainWindowTest() { return new MainWindowTest; }

#include "main_window_test.moc"
