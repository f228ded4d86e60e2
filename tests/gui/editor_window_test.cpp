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

    Session() {
      auto copy = tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime/Libraries/Character/Tolvane/Ava.cr2",
                                          f.program.files());
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
