// The remote-control tools' windows: every control of the three forms has its widget,
// an option and Ready open the builder on the destination, and a double click on a
// list line and Enter in the ratio box reach the handlers.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;

class ErcWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void everyControlHasItsWidget() {
    gui::test::WindowFixture f{true};
    for (ui::Form* form :
         {static_cast<ui::Form*>(&f.program->formListEMCs), static_cast<ui::Form*>(&f.program->dialogERC),
          static_cast<ui::Form*>(&f.program->formECM)}) {
      form->setVisible(true);
      gui::FormBinding::flushAll();
      QWidget* window = f.window->formWindow(form->name());
      QVERIFY2(window != nullptr, form->name().c_str());
      QVERIFY(window->isVisible());
      QCOMPARE(window->windowTitle().toStdString(), form->caption());
      for (ui::Control* c : form->controls())
        QVERIFY2(window->findChild<QWidget*>(QString::fromStdString(c->name())) != nullptr,
                 c->name().c_str());
    }
  }

  void theBuilderIsDrivenByItsWidgets() {
    gui::test::WindowFixture f{true};
    std::string dest =
        tolvane::test::copyInto(TOLVANE_TEST_DATA "/erc/figure.cr2", f.program.files()).string();
    f.opening().LabelFileNameForEditor.setCaption(dest);
    f.program->dialogERC.setVisible(true);
    gui::FormBinding::flushAll();
    QWidget* dialog = f.window->formWindow("DialogERC");
    QTest::mouseClick(dialog->findChild<QRadioButton*>("OptionJCJ"), Qt::LeftButton);
    QCOMPARE(f.program->dialogERC.selectedKind(), ui::ErcKind::JCJ);
    QTest::mouseClick(dialog->findChild<QLabel*>("LabelDone"), Qt::LeftButton);
    QApplication::processEvents();
    QWidget* builder = f.window->formWindow("FormECM");
    QVERIFY(builder != nullptr && builder->isVisible());
    auto* list = builder->findChild<QListWidget*>("ListControlledMorph");
    QCOMPARE(list->count(), 4);
    QCOMPARE(list->item(0)->text(), QString("xrot BODY:1 xrot [X]"));
    QVERIFY(!builder->findChild<QListWidget*>("ListMinMax")->isVisible());
    QPoint line = list->visualItemRect(list->item(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, line);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line);
    QApplication::processEvents();
    QCOMPARE(builder->findChild<QLineEdit*>("TextPBM1")->text(),
             QString("yrot hip:1 GetStringRes(1028,10) [Y]"));
    QVERIFY(builder->findChild<QListWidget*>("ListConFigECM")->isVisible());
    QVERIFY(!list->isVisible());
    QCOMPARE(f.program->formECM.ListConFigECM.items(), std::vector<std::string>{"Ava"});
  }
};

QObject* newErcWindowTest() { return new ErcWindowTest; }

#include "erc_window_test.moc"
