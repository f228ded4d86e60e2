// The Manual Editor's window on the offscreen platform: handed the sample figure by the
// main window, typed into, searched, and closed with its save question, against
// scripted answers.
#include "gui/editor_window.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "gui/editor_view.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;

class EditorWindowTest : public QObject {
  Q_OBJECT

  struct Session {
    gui::test::WindowFixture f{true};
    std::string figure;
    std::string original;
    gui::EditorWindow* window = nullptr;

    // The sample figure, or a file of the test's own with `content`.
    explicit Session(const std::string& content = {}) {
      std::filesystem::path copy;
      if (content.empty()) {
        copy = tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime/Libraries/Character/Tolvane/Ava.cr2",
                                       f.program.files());
      } else {
        copy = f.program.files() / "plain.cr2";
        tolvane::test::writeFile(copy, content);
      }
      figure = copy.string();
      original = tolvane::test::readFile(copy);
      f.showFigurePage();
      ui::Opening& o = f.opening();
      o.LabelFileName.setCaption("Ava.cr2");
      o.LabelFileNameForEditor.setCaption(figure);
      gui::FormBinding::flushAll();
      QTest::mouseClick(f.widget<QLabel>("LabelFileName"), Qt::LeftButton);
      QApplication::processEvents();
      window = qobject_cast<gui::EditorWindow*>(f.window->formWindow("FormEditor"));
      if (window != nullptr) {
        window->activateWindow();
        QVERIFY2(QTest::qWaitForWindowActive(window), "the editor window takes the keys");
      }
    }
    ui::FormEditor& form() { return f.program->formEditor; }
    template <class W>
    W* child(const char* name) {
      return window->findChild<W*>(name);
    }
  };

 private slots:
  void opensTheSampleFigureFromTheMainWindow() {
    Session s;
    QVERIFY(s.window != nullptr);
    QVERIFY(s.window->isVisible());
    QCOMPARE(s.window->windowTitle().toStdString(), s.figure);
    QVERIFY(s.window->leftView()->isVisible());
    QVERIFY(!s.window->rightView()->isVisible());
    QCOMPARE(s.form().RichTextBox1->text(), s.original);
    QCOMPARE(s.child<QLabel>("LabelFileSizeEd1")->text(), QString(" %1 bytes").arg(s.original.size()));

    // No event of the window: the change reaches the view through the form alone, as
    // while a question about the pane is open.
    s.form().RichTextBox1.setBackColor(ui::kPaneAlert);
    s.form().RichTextBox1->find("actor", 1, ui::kFindNoOptions);
    s.form().RichTextBox1->setSelColor(ui::kRed);
    s.form().RichTextBox1.textChanged();
    QApplication::processEvents();
    QCOMPARE(s.window->leftView()->viewport()->palette().color(QPalette::Base), QColor(0xFF, 0x80, 0x80));
    QImage shot = s.window->leftView()->viewport()->grab().toImage();
    bool red = false;
    for (int y = 0; y < shot.height() && !red; ++y)
      for (int x = 0; x < shot.width() && !red; ++x) red = shot.pixelColor(x, y) == QColor(Qt::red);
    QVERIFY(red);  // the found text stands in red
  }

  void typingMarksThePaneAndShowsTheLine() {
    Session s;
    gui::EditorView* left = s.window->leftView();
    left->setFocus();
    QTest::keyClick(left, Qt::Key_Down);
    QTest::keyClick(left, Qt::Key_Down);
    QApplication::processEvents();
    QCOMPARE(s.child<QLineEdit>("TextLineNum")->text(), QString("3"));
    QCOMPARE(s.form().LeftPaneChanged, 0);
    QTest::keyClick(left, Qt::Key_5);  // a digit of the main keyboard does not count
    QCOMPARE(s.form().LeftPaneChanged, 0);
    QTest::keyClick(left, Qt::Key_5, Qt::KeypadModifier);
    QCOMPARE(s.form().LeftPaneChanged, 1);
    std::size_t third = s.original.find('\n', s.original.find('\n') + 1) + 1;
    QCOMPARE(s.form().RichTextBox1->mid(static_cast<std::int64_t>(third), 2), std::string("55"));

    // Ctrl+Z takes the run of typing back at once; Ctrl+Y makes it again.
    QTest::keyClick(left, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(s.form().RichTextBox1->text(), s.original);
    QTest::keyClick(left, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(s.form().RichTextBox1->mid(static_cast<std::int64_t>(third), 2), std::string("55"));
  }

  void findSelectsInThePaneAndF3GoesOn() {
    Session s;
    QTest::mouseClick(s.child<QPushButton>("PictureFind"), Qt::LeftButton);
    QApplication::processEvents();
    auto* combo = s.child<QComboBox>("ComboFind");
    QVERIFY(combo->isVisible());
    QTest::keyClicks(combo->lineEdit(), "actor");
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    QApplication::processEvents();
    const std::size_t first = s.original.find("actor", 1);
    QCOMPARE(s.form().FoundPosition, static_cast<std::int32_t>(first));
    QCOMPARE(combo->count(), 1);
    QVERIFY(s.window->leftView()->hasFocus());
    QTest::keyClick(s.window->leftView(), Qt::Key_F3);
    QCOMPARE(s.form().FoundPosition, static_cast<std::int32_t>(s.original.find("actor", first + 1)));
    QCOMPARE(s.form().RichTextBox1->text(), s.original);  // F3 types nothing
  }

  // The highlight of a found word covers its characters exactly, however far into the
  // line it stands: no text of the word outside it, no text of its neighbours in it.
  void foundTextIsHighlightedExactly() {
    const std::string prefix(70, '.');
    Session s("{\r\n" + prefix + " findme " + prefix + "\r\n}\r\n");
    s.window->resize(1200, 500);
    QApplication::processEvents();
    gui::EditorView* view = s.window->leftView();
    s.form().RichTextBox1->find("findme", 1, ui::kFindNoOptions);
    s.form().RichTextBox1.textChanged();
    view->setFocus();
    view->refresh();
    QApplication::processEvents();
    QImage shot = view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QColor highlight = view->palette().color(QPalette::Highlight);
    int x0 = -1, x1 = -1, y0 = -1, y1 = -1;
    for (int y = 0; y < shot.height(); ++y)
      for (int x = 0; x < shot.width(); ++x)
        if (shot.pixelColor(x, y) == highlight) {
          if (x0 < 0 || x < x0) x0 = x;
          x1 = std::max(x1, x);
          if (y0 < 0) y0 = y;
          y1 = y;
        }
    QVERIFY2(x0 >= 0, "a highlight is drawn");
    const QColor base = shot.pixelColor(2, y0 + 1);
    auto inkBetween = [&](int from, int to) {
      int ink = 0;
      for (int y = y0; y <= y1; ++y)
        for (int x = std::max(0, from); x < std::min(shot.width(), to); ++x) {
          QColor c = shot.pixelColor(x, y);
          if (c != highlight && c != base) ++ink;
        }
      return ink;
    };
    const int cell = (x1 - x0 + 1) / 6;
    QVERIFY(cell > 2);
    QCOMPARE(inkBetween(x1 + 3, x1 + 1 + cell), 0);  // the blank behind the word (past the caret)
    QCOMPARE(inkBetween(x0 - cell, x0), 0);          // the blank before it
    QVERIFY(inkBetween(x0, x0 + cell) > 0);          // the f
    QVERIFY(inkBetween(x1 + 1 - cell, x1 + 1) > 0);  // the e
    // The line numbers stand in the gutter at the left.
    QWidget* gutter = view->findChild<QWidget*>("LineNumbers");
    QVERIFY(gutter != nullptr && gutter->isVisible() && gutter->width() > 0);
    QVERIFY(view->viewport()->x() >= gutter->x() + gutter->width());
  }

  // The editor's keys: Ctrl+F and Ctrl+H open find and replace, F3 finds again from
  // anywhere, Ctrl+G goes to the line box, Replace All stays at hand after a replace,
  // Escape closes the window through the save question.
  void keysOfTheEditor() {
    Session s("{\r\nalpha beta\r\nalpha gamma\r\nalpha delta\r\n}\r\n");
    gui::EditorView* left = s.window->leftView();
    left->setFocus();
    QTest::keyClick(left, Qt::Key_F, Qt::ControlModifier);
    QApplication::processEvents();
    auto* combo = s.child<QComboBox>("ComboFind");
    QVERIFY(combo->isVisible());
    QVERIFY(combo->hasFocus() || combo->lineEdit()->hasFocus());
    QTest::keyClicks(combo->lineEdit(), "alpha");
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    QCOMPARE(s.form().FoundPosition, 3);
    auto* lineBox = s.child<QLineEdit>("TextLineNum");
    QTest::keyClick(left, Qt::Key_G, Qt::ControlModifier);
    QVERIFY(lineBox->hasFocus());
    QTest::keyClick(lineBox, Qt::Key_F3);  // F3 away from the pane finds in the pane
    QCOMPARE(s.form().FoundPosition, 15);

    QTest::keyClick(left, Qt::Key_H, Qt::ControlModifier);
    auto* replace = s.child<QLineEdit>("TextReplace");
    QVERIFY(replace->isVisible());
    QTest::keyClicks(replace, "omega");
    auto* all = s.child<QPushButton>("ButtonReplaceAll");
    QVERIFY(all->isVisible());
    s.f.program.services.expect("Note!", "Replace ALL instances on this page?", ui::Answer::Yes);
    QTest::mouseClick(all, Qt::LeftButton);
    QApplication::processEvents();
    QVERIFY(!replace->isVisible());
    // Each find starts behind the selection (the second alpha, found by F3).
    QCOMPARE(s.form().RichTextBox1->text(), std::string("{\r\nalpha beta\r\nalpha gamma\r\nomega delta\r\n}\r\n"));
    // After the replace, Replace All is still there and does the same again.
    QVERIFY(all->isVisible());
    left->setFocus();
    QTest::keyClick(left, Qt::Key_Home, Qt::ControlModifier);
    s.f.program.services.expect("Note!", "Replace ALL instances on this page?", ui::Answer::Yes);
    QTest::mouseClick(all, Qt::LeftButton);
    QApplication::processEvents();
    QCOMPARE(s.f.program.services.pending(), std::size_t(0));
    QCOMPARE(s.form().RichTextBox1->text(), std::string("{\r\nomega beta\r\nomega gamma\r\nomega delta\r\n}\r\n"));

    // Escape closes through the question; No leaves the file as it was.
    s.f.program.services.expect("Note!", "Save changes?", ui::Answer::No);
    QTest::keyClick(left, Qt::Key_Escape);
    QApplication::processEvents();
    QVERIFY(!s.window->isVisible());
    QCOMPARE(s.f.program.services.pending(), std::size_t(0));
    QCOMPARE(tolvane::test::readFile(s.figure), std::string("{\r\nalpha beta\r\nalpha gamma\r\nalpha delta\r\n}\r\n"));
  }

  // "Second file" puts the second pane beside the first, and the title names both files.
  void secondFileStandsBesideTheFirst() {
    Session s;
    const std::string second = (s.f.program.files() / "second.cr2").string();
    tolvane::test::writeFile(second, "{\r\nsecond\r\n}\r\n");
    s.window->resize(1000, 600);
    s.f.program.services.expect("Note!", "Recent files list?", ui::Answer::No);
    s.f.program.services.dialog(second);
    QTest::mouseClick(s.child<QPushButton>("PictureSecFile"), Qt::LeftButton);
    QApplication::processEvents();
    QCOMPARE(s.f.program.services.pending(), std::size_t(0));
    gui::EditorView* left = s.window->leftView();
    gui::EditorView* right = s.window->rightView();
    QVERIFY(left->isVisible() && right->isVisible());
    QVERIFY(left->geometry().right() < right->geometry().left());
    QVERIFY(left->width() > 300 && right->width() > 300);
    QVERIFY(s.window->windowTitle().contains(QString::fromStdString(s.figure)));
    QVERIFY(s.window->windowTitle().contains(QString::fromStdString(second)));
    QCOMPARE(s.form().RichTextBox2->text(), std::string("{\r\nsecond\r\n}\r\n"));
    QCOMPARE(s.form().RichTextBox1->text(), s.original);
  }

  void closeAsksAndSavesByteForByte() {
    Session s;
    gui::EditorView* left = s.window->leftView();
    left->setFocus();
    QTest::keyClick(left, Qt::Key_End);
    QTest::keyClicks(left, "Z");
    QTest::keyClick(left, Qt::Key_Return);
    s.f.program.services.expect("Note!", "Save changes?", ui::Answer::Yes);
    s.f.program.services.dialog(s.figure);
    s.window->close();
    QApplication::processEvents();
    QVERIFY(!s.window->isVisible());
    QCOMPARE(s.f.program.services.pending(), std::size_t(0));
    std::size_t eol = s.original.find("\r\n");
    std::string expected = s.original.substr(0, eol) + "Z\r\n" + s.original.substr(eol);
    QCOMPARE(tolvane::test::readFile(s.figure), expected);
  }
};

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  EditorWindowTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "editor_window_test.moc"
