// The Manual Editor's window on the offscreen platform: opened on a sample figure,
// typed into, searched, and closed with its save question, against scripted answers.
#include "gui/editor_window.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <sstream>

#include "gui/editor_view.h"
#include "program/program.h"
#include "ui/scripted_services.h"

using namespace tolvane;

namespace {
std::string readAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

const char* kFigure =
    "{\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\nactor hip:1\r\n\t{\r\n\tname hip\r\n\t}\r\n"
    "actor chest:1\r\n\t{\r\n\tname chest\r\n\t}\r\n}\r\n";
}  // namespace

class EditorWindowTest : public QObject {
  Q_OBJECT

  struct Session {
    QTemporaryDir dir;
    ui::ScriptedServices services;
    ui::MemorySettings settings;
    std::unique_ptr<Program> program;
    std::unique_ptr<gui::EditorWindow> window;
    std::string figure;

    Session() {
      std::filesystem::path root = dir.path().toStdString();
      figure = (root / "Ava.cr2").string();
      std::ofstream(figure, std::ios::binary) << kFigure;
      program = std::make_unique<Program>(services, settings, ProgramOptions{root, root, root.string(), ""});
      window = std::make_unique<gui::EditorWindow>(*program);
      program->opening.LabelFileName.setCaption("Ava.cr2");
      program->opening.LabelFileNameForEditor.setCaption(figure);
      fireEvent(*program, "Opening", "LabelFileName", EventKind::Click);
    }
  };

 private slots:
  void opensTheFigureInTheLeftPane() {
    Session s;
    QVERIFY(s.window->isVisible());
    QCOMPARE(s.window->windowTitle().toStdString(), s.figure);
    QVERIFY(s.window->leftView()->isVisible());
    QVERIFY(!s.window->rightView()->isVisible());
    QCOMPARE(s.program->formEditor.RichTextBox1->text(), std::string(kFigure));
    auto* size = s.window->findChild<QLabel*>("LabelFileSizeEd1");
    QVERIFY(size != nullptr);
    QCOMPARE(size->text(), QString(" %1 bytes").arg(std::strlen(kFigure)));
  }

  void typingMarksThePaneAndShowsTheLine() {
    Session s;
    gui::EditorView* left = s.window->leftView();
    left->setFocus();
    QTest::keyClick(left, Qt::Key_Down);
    QTest::keyClick(left, Qt::Key_Down);
    QCOMPARE(s.program->formEditor.TextLineNum.text(), std::string("3"));
    QCOMPARE(s.program->formEditor.LeftPaneChanged, 0);
    QTest::keyClicks(left, "x");
    QCOMPARE(s.program->formEditor.LeftPaneChanged, 1);
    QVERIFY(s.program->formEditor.RichTextBox1->text().find("\r\nx\t{\r\n") != std::string::npos);
    auto* lineBox = s.window->findChild<QLineEdit*>("TextLineNum");
    QCOMPARE(lineBox->text(), QString("3"));
  }

  void findSelectsInThePaneAndF3GoesOn() {
    Session s;
    QTest::mouseClick(s.window->findChild<QPushButton*>("PictureFind"), Qt::LeftButton);
    auto* combo = s.window->findChild<QComboBox*>("ComboFind");
    QVERIFY(combo->isVisible());
    QTest::keyClicks(combo->lineEdit(), "name");
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    const std::string text(kFigure);
    QCOMPARE(s.program->formEditor.FoundPosition, static_cast<std::int32_t>(text.find("name")));
    QCOMPARE(combo->count(), 1);
    QTest::keyClick(s.window->leftView(), Qt::Key_F3);
    QCOMPARE(s.program->formEditor.FoundPosition, static_cast<std::int32_t>(text.rfind("name")));
    QCOMPARE(s.program->formEditor.RichTextBox1->text(), text);  // F3 types nothing
  }

  void closeAsksAndSavesByteForByte() {
    Session s;
    gui::EditorView* left = s.window->leftView();
    left->setFocus();
    QTest::keyClick(left, Qt::Key_End);
    QTest::keyClicks(left, "Z");
    QTest::keyClick(left, Qt::Key_Return);
    s.services.expect("Note!", "Save changes?", ui::Answer::Yes);
    s.services.dialog(s.figure);
    s.window->close();
    QVERIFY(!s.window->isVisible());
    QCOMPARE(s.services.pending(), std::size_t(0));
    QCOMPARE(readAll(s.figure), "{Z\r\n\r\n" + std::string(kFigure).substr(3));
  }
};

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  EditorWindowTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "editor_window_test.moc"
