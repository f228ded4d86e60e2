// The main window as the user meets it: menus, panes, clicks, drags and drops, the
// handlers of the program behind them, and the windows of other forms.
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include "gui/binders.h"
#include "gui/picture_button.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;
using namespace tolvane::gui;
using namespace tolvane::gui::test;

namespace {
QAction* actionNamed(QMenu* menu, const QString& text) {
  for (QAction* a : menu->actions())
    if (a->text() == text) return a;
  return nullptr;
}

void dropOn(QWidget* target, QMimeData* mime) {
  QPoint at = target->rect().center();
  QDragEnterEvent enter(at, Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &enter);
  QDropEvent drop(at, Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &drop);
}
}  // namespace

class MainWindowTest : public QObject {
  Q_OBJECT
 private slots:
  void comesUpWithMenusAndPanes();
  void picturesAndMenusFireTheirEvents();
  void listSelectionReachesTheModelBeforeTheClick();
  void dragFromChannelsOntoTrashIsADrop();
  void filesFromTheDesktopAreADropOnTheForm();
  void handlersOfTheProgramRunBehindTheWidgets();
  void notebookWindowFollowsItsForm();
  void busyFormShowsProgress();
  void startRunsTheFormLoad();
  void closingAsksTheFormUnload();
  void sampleFigureFillsThePanes();
};

void MainWindowTest::comesUpWithMenusAndPanes() {
  WindowFixture f;
  QMenuBar* bar = f.window->menuBar();
  QStringList titles;
  for (QAction* a : bar->actions()) titles << a->text();
  QCOMPARE(titles, QStringList({"&File", "&CR2 Tools", "&Help"}));

  struct Item {
    const char* menu;
    const char* text;
    QKeySequence keys;
  };
  const Item items[] = {
      {"MenuFile", "&Open...", QKeySequence("Ctrl+O")},
      {"MenuFile", "&Save", QKeySequence("Ctrl+S")},
      {"MenuFile", "Save &As...", QKeySequence("Ctrl+Shift+S")},
      {"MenuFile", "&Recent Files", {}},
      {"MenuFile", "E&xit", QKeySequence("Ctrl+Q")},
      {"MenuCR2Tools", "&Bracket Checker", QKeySequence("Ctrl+B")},
      {"MenuCR2Tools", "&Manual Editor", QKeySequence("Ctrl+E")},
      {"MenuCR2Tools", "Clear &ReadOnly Attributes...", {}},
      {"MenuCR2Tools", "Prop Obj File Relocator", {}},
      {"MenuCR2Tools", "Prop Texture File Relocator", {}},
      {"MenuCR2Tools", "&Notepad", {}},
      {"MenuCR2Tools", "Open Note&book", {}},
      {"MenuHelp", "&About Tolvane", {}},
  };
  for (const Item& item : items) {
    QAction* action = actionNamed(f.window->menuFor(item.menu), item.text);
    QVERIFY2(action != nullptr, item.text);
    if (!item.keys.isEmpty()) QCOMPARE(action->shortcut(), item.keys);
  }
  // Nothing is open: the tools menu is held, the splash shows, the panes wait.
  QVERIFY(!f.window->menuFor("MenuCR2Tools")->menuAction()->isEnabled());
  QVERIFY(f.window->widgetFor("ImageSplash")->isVisible());
  QVERIFY(f.window->widgetFor("TextOpeningNotes")->isVisible());
  for (const char* pane : {"ListActors", "ListChannels"}) {
    auto* list = f.widget<LineList>(pane);
    QVERIFY(list != nullptr);
    QVERIFY(!list->isVisible());
    QCOMPARE(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(list->dragSource(), QString("Opening.") + pane);
  }
  // Every control of the form has a widget or a menu entry.
  for (ui::Control* c : f.opening().controls())
    if (c->kind() != ui::ControlKind::Menu && c->kind() != ui::ControlKind::Timer)
      QVERIFY2(f.window->widgetFor(c->name()) != nullptr, c->name().c_str());

  f.showFigurePage();
  QVERIFY(f.window->widgetFor("ListActors")->isVisible());
  QVERIFY(f.window->widgetFor("PictureTrash")->isVisible());
  QVERIFY(!f.window->widgetFor("ImageSplash")->isVisible());
}

void MainWindowTest::picturesAndMenusFireTheirEvents() {
  WindowFixture f;
  f.showFigurePage();
  auto* view = f.widget<PictureButton>("PictureViewChannels");
  QTest::mouseClick(view, Qt::LeftButton);
  QTest::mouseClick(view, Qt::RightButton);
  QCOMPARE(f.recorder.of("PictureViewChannels", EventKind::Click).size(), size_t(1));
  QCOMPARE(f.recorder.of("PictureViewChannels", EventKind::RightClick).size(), size_t(1));
  QCOMPARE(f.recorder.of("PictureViewChannels", EventKind::Press).size(), size_t(2));

  QTest::mouseClick(f.widget<QLabel>("LabelMainTex"), Qt::LeftButton);
  QCOMPARE(f.recorder.of("LabelMainTex", EventKind::Click).size(), size_t(1));

  auto* obj = f.widget<QLineEdit>("TextMainOBJ");
  QTest::mouseDClick(obj, Qt::LeftButton);
  QCOMPARE(f.recorder.of("TextMainOBJ", EventKind::DblClick).size(), size_t(1));

  auto* rename = f.widget<QLineEdit>("TextMorphRename");
  rename->setFocus();
  QTest::keyClicks(rename, "hip");
  QTest::keyClick(rename, Qt::Key_Return);
  QCOMPARE(f.opening().TextMorphRename.text(), std::string("hip"));
  auto keys = f.recorder.of("TextMorphRename", EventKind::Key);
  QCOMPARE(keys.size(), size_t(4));
  QCOMPARE(keys[0].args.keyCode, int('H'));
  QCOMPARE(keys[3].args.keyCode, 13);
  QCOMPARE(f.recorder.of("TextMorphRename", EventKind::Enter).size(), size_t(1));
  QCOMPARE(f.recorder.of("TextMorphRename", EventKind::Change).size(), size_t(3));

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
  actionNamed(f.window->menuFor("MenuFile"), "&Open...")->trigger();
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

void MainWindowTest::listSelectionReachesTheModelBeforeTheClick() {
  WindowFixture f;
  f.showFigurePage();
  f.opening().ListChannels.setItems({"ALL CHANNELS", "************************", "hip:1\tPBMBelly"});
  FormBinding::flushAll();
  auto* list = f.widget<QListWidget>("ListChannels");
  QRect line = list->visualItemRect(list->item(2));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, line.center());
  auto clicks = f.recorder.of("ListChannels", EventKind::Click);
  QCOMPARE(clicks.size(), size_t(1));
  QCOMPARE(clicks[0].channelsSelected, std::vector<int>({2}));
  QCOMPARE(f.opening().ListChannels.listIndex(), 2);

  // Ctrl adds a line to the selection of the multi-select pane.
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    list->visualItemRect(list->item(0)).center());
  QCOMPARE(f.opening().ListChannels.selectedIndexes(), std::vector<int>({0, 2}));
  QCOMPARE(f.recorder.of("ListChannels", EventKind::Click).back().channelsSelected, std::vector<int>({0, 2}));

  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line.center());
  QCOMPARE(f.recorder.of("ListChannels", EventKind::DblClick).size(), size_t(1));
}

void MainWindowTest::dragFromChannelsOntoTrashIsADrop() {
  WindowFixture f;
  f.showFigurePage();
  f.opening().ListChannels.setItems(
      {"ALL CHANNELS", "************************", "hip:1\tPBMBelly", "chest:1\tTwist"});
  FormBinding::flushAll();
  auto* list = f.widget<LineList>("ListChannels");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(3)).center());
  f.recorder.clear();

  std::unique_ptr<QMimeData> mime(list->mimeData(list->selectedItems()));
  QCOMPARE(mime->text(), QString("chest:1\tTwist"));
  dropOn(f.window->widgetFor("PictureTrash"), mime.get());
  auto drops = f.recorder.of("PictureTrash", EventKind::Drop);
  QCOMPARE(drops.size(), size_t(1));
  QCOMPARE(drops[0].form, std::string("Opening"));
  QCOMPARE(drops[0].args.source, std::string("Opening.ListChannels"));
  QCOMPARE(drops[0].channelsSelected, std::vector<int>({3}));

  // Other pictures take no lines.
  dropOn(f.window->widgetFor("PictureJoints"), mime.get());
  QVERIFY(f.recorder.of("PictureJoints", EventKind::Drop).empty());

  // The Delete key on the pane does what the drop does.
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Delete);
  drops = f.recorder.of("PictureTrash", EventKind::Drop);
  QCOMPARE(drops.size(), size_t(2));
  QCOMPARE(drops[1].args.source, std::string("Opening.ListChannels"));
}

void MainWindowTest::filesFromTheDesktopAreADropOnTheForm() {
  WindowFixture f;
  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile("/tmp/figures/Vicky.cr2")});
  f.showFigurePage();
  // Wherever the file lands, the boxes included, the window takes it.
  QWidget* targets[] = {f.window->widgetFor("ListActors"), f.window->widgetFor("TextMainOBJ"),
                        f.widget<QPlainTextEdit>("TextOpeningNotes")->viewport()};
  for (QWidget* target : targets) dropOn(target, &mime);
  auto drops = f.recorder.of("Opening", EventKind::Drop);
  QCOMPARE(drops.size(), std::size(targets));
  for (const RecordedEvent& drop : drops)
    QCOMPARE(drop.args.files, std::vector<std::string>({"/tmp/figures/Vicky.cr2"}));
  QCOMPARE(f.opening().TextMainOBJ.text(), std::string());
}

void MainWindowTest::handlersOfTheProgramRunBehindTheWidgets() {
  WindowFixture f(true);
  f.program.services.answer(ui::Answer::OK);
  actionNamed(f.window->menuFor("MenuHelp"), "&About Tolvane")->trigger();
  QCOMPARE(f.program.services.messages().size(), size_t(1));
  QCOMPARE(f.program.services.messages()[0].title, std::string("About Tolvane"));

  // Recent shows the pop-up list; opening the File menu puts it away again.
  f.opening().ListMRU.setItems({"/tmp/a.cr2", "/tmp/b.cr2"});
  actionNamed(f.window->menuFor("MenuFile"), "&Recent Files")->trigger();
  QWidget* mru = f.window->widgetFor("ListMRU");
  QVERIFY(mru->isVisible());
  QCOMPARE(static_cast<QListWidget*>(mru)->count(), 2);
  emit f.window->menuFor("MenuFile")->aboutToShow();
  QVERIFY(!mru->isVisible());

  // A right click on the notes box explains it.
  f.program.services.answer(ui::Answer::OK);
  auto* notes = f.widget<QPlainTextEdit>("TextOpeningNotes");
  QTest::mouseClick(notes->viewport(), Qt::RightButton);
  QCOMPARE(f.program.services.messages().back().text, std::string("Doubleclick to hide this notepad."));
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

void MainWindowTest::busyFormShowsProgress() {
  WindowFixture f;
  auto* progress = f.window->findChild<QProgressBar*>();
  QVERIFY(!progress->isVisible());
  f.opening().setBusy(true);
  QVERIFY(progress->isVisible());
  f.opening().setBusy(false);
  QVERIFY(!progress->isVisible());
}

void MainWindowTest::startRunsTheFormLoad() {
  WindowFixture f(true);
  f.program.settings.save("Tolvane", "Startup", "PLoc", f.program.files().string() + "/");
  f.program.settings.save("Tolvane", "MRUFiles", "0", "/figures/a.cr2");
  f.program.settings.save("Tolvane", "MRUFiles", "1", "/figures/b.cr2");
  f.window->start();
  QCOMPARE(f.recorder.of("Opening", EventKind::Load).size(), size_t(1));
  auto* mru = f.widget<QListWidget>("ListMRU");
  QCOMPARE(mru->count(), 2);
  QCOMPARE(mru->item(1)->text(), QString("/figures/b.cr2"));
  QVERIFY(!mru->isVisible());
  QVERIFY(!f.window->menuFor("MenuCR2Tools")->menuAction()->isEnabled());
}

void MainWindowTest::closingAsksTheFormUnload() {
  {
    // A form whose unload does not ask to quit keeps its window.
    WindowFixture f;
    QVERIFY(!f.window->close());
    QCOMPARE(f.recorder.of("Opening", EventKind::Unload).size(), size_t(1));
    QVERIFY(f.window->isVisible());
  }
  WindowFixture f(true);
  f.opening().ListMRU.addItem("/figures/a.cr2");
  f.opening().MRUCount = 1;
  QVERIFY(f.window->close());
  QVERIFY(f.program->quitRequested);
  QCOMPARE(f.program.settings.get("Tolvane", "MRUFiles", "0", ""), std::string("/figures/a.cr2"));
  QCOMPARE(f.program.services.tileCloses(), 1);
  QVERIFY(!f.window->isVisible());
}

void MainWindowTest::sampleFigureFillsThePanes() {
  // The figure comes in as the launcher takes it, or else through File, Open.
  bool byDrop = eventTable().has("Opening", "Opening", EventKind::Drop);
  if (!byDrop && !eventTable().has("Opening", "MenuFileOpen", EventKind::Click))
    QSKIP("no handler opens a figure yet");
  WindowFixture f(true);
  auto samples = tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime", f.program.files());
  f.program.settings.save("Tolvane", "Startup", "PLoc", f.program.files().string() + "/");
  auto figure = samples / "Libraries" / "Character" / "Tolvane" / "Ava.cr2";
  for (int i = 0; i < 5; ++i) f.program.services.answer(ui::Answer::OK);  // notes on the file's maps
  if (byDrop) {
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(figure.string()))});
    dropOn(f.window->widgetFor("ImageSplash"), &mime);
  } else {
    f.program.services.preferDialog(ui::ScriptedAnswer::dialog(figure.string()));
    actionNamed(f.window->menuFor("MenuFile"), "&Open...")->trigger();
  }
  QApplication::processEvents();
  auto* actors = f.widget<QListWidget>("ListActors");
  auto* channels = f.widget<QListWidget>("ListChannels");
  QVERIFY(actors->isVisible());
  QVERIFY(actors->count() > 10);
  QCOMPARE(actors->item(0)->text().left(6), QString(" BODY:"));
  QVERIFY(!actors->findItems("    hip:", Qt::MatchStartsWith).isEmpty());
  QCOMPARE(channels->item(0)->text(), QString("ALL CHANNELS"));
  QVERIFY(channels->count() > 2);
  QVERIFY(!f.window->widgetFor("ImageSplash")->isVisible());
  QVERIFY(f.window->menuFor("MenuCR2Tools")->menuAction()->isEnabled());
}

QObject* newMainWindowTest() { return new MainWindowTest; }

#include "main_window_test.moc"
