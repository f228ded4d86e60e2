// Model to widget and back: what a change in a form model shows, that a refresh touches
// only what changed, and what the user's input writes to the model.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QTest>

#include "gui/binders.h"
#include "gui/picture_button.h"
#include "gui/qt_text.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;
using namespace tolvane::gui;
using namespace tolvane::gui::test;

class BindingTest : public QObject {
  Q_OBJECT
 private slots:
  void modelChangesShowInTheWidgets();
  void userInputReachesTheModel();
  void textConversionKeepsEveryByte();
};

void BindingTest::modelChangesShowInTheWidgets() {
  WindowFixture f;
  f.showFigurePage();
  ui::Opening& o = f.opening();
  // All at once: one refresh brings every pending change.
  o.LabelFileName.setCaption("...\\Runtime\\Libraries\\Vicky.cr2");
  o.LabelMainTex.setForeColor(ui::kRed);
  o.PictureViewChannels.setBackColor(ui::kToolOn);
  o.ListPropObj.setForeColor(0x400000);
  o.TextMainOBJ.setText(":Runtime:Geometries:Vicky:Vicky.obj");
  o.TextMainOBJ.setToolTip("/Poser/Runtime/Geometries/Vicky.obj");
  o.ListActors.setItems({" BODY:1 * 13", "    hip:1 * 112"});
  o.ListActors.setSelected(1, true);
  o.PictureTrash.setVisible(false);
  o.PictureJoints.setEnabled(false);
  o.MenuCR2Tools.setEnabled(true);
  o.setCaption("Tolvane - Vicky.cr2");
  QApplication::processEvents();
  QCOMPARE(f.widget<QLabel>("LabelFileName")->text(), QString("...\\Runtime\\Libraries\\Vicky.cr2"));
  // Colours come as BGR: red 0000FF, tool on 008000, list text 400000.
  QCOMPARE(f.widget<QLabel>("LabelMainTex")->palette().color(QPalette::WindowText), QColor(255, 0, 0));
  QCOMPARE(f.widget<PictureButton>("PictureViewChannels")->colour(), QColor(0, 128, 0));
  QCOMPARE(f.widget<QListWidget>("ListPropObj")->palette().color(QPalette::Text), QColor(0, 0, 64));
  auto* obj = f.widget<QLineEdit>("TextMainOBJ");
  QCOMPARE(obj->text(), QString(":Runtime:Geometries:Vicky:Vicky.obj"));
  QCOMPARE(obj->toolTip(), QString("/Poser/Runtime/Geometries/Vicky.obj"));
  auto* actors = f.widget<QListWidget>("ListActors");
  QCOMPARE(actors->count(), 2);
  QCOMPARE(actors->item(1)->text(), QString("    hip:1 * 112"));
  QVERIFY(actors->item(1)->isSelected() && !actors->item(0)->isSelected());
  QVERIFY(!f.window->widgetFor("PictureTrash")->isVisible());
  QVERIFY(!f.window->widgetFor("PictureJoints")->isEnabled());
  QVERIFY(f.window->menuFor("MenuCR2Tools")->menuAction()->isEnabled());
  QCOMPARE(f.window->windowTitle(), QString("Tolvane - Vicky.cr2"));

  // Lines added to a list keep the lines already shown.
  ui::ListBox& channels = o.ListChannels;
  channels.setItems({"ALL CHANNELS", "************************"});
  FormBinding::flushAll();
  auto* list = f.widget<QListWidget>("ListChannels");
  QListWidgetItem* first = list->item(0);
  for (int i = 0; i < 500; ++i) channels.addItem("hip:1\tMorph" + std::to_string(i));
  FormBinding::flushAll();
  QCOMPARE(list->count(), 502);
  QCOMPARE(list->item(0), first);  // the lines already shown were not made again
  QCOMPARE(list->item(501)->text(), QString("hip:1\tMorph499"));

  channels.removeItem(1);
  FormBinding::flushAll();
  QCOMPARE(list->count(), 501);
  QCOMPARE(list->item(1)->text(), QString("hip:1\tMorph0"));
  channels.clear();
  FormBinding::flushAll();
  QCOMPARE(list->count(), 0);
}

void BindingTest::userInputReachesTheModel() {
  WindowFixture f;
  f.showFigurePage();
  auto* box = f.widget<QLineEdit>("TextMainTex");
  box->setFocus();
  QTest::keyClicks(box, "C:tex.tif");
  box->setCursorPosition(3);
  QApplication::processEvents();
  QCOMPARE(f.opening().TextMainTex.text(), std::string("C:tex.tif"));
  QCOMPARE(box->cursorPosition(), 3);  // the echo of the model did not reset the box
  f.opening().TextMainTex.setText("NO_MAP");
  QApplication::processEvents();
  QCOMPARE(box->text(), QString("NO_MAP"));

  // The option group keeps the model in step.
  ui::Opening& o = f.opening();
  o.OptionChannelRename.setVisible(true);
  o.OptionBodyPartRename.setVisible(true);
  QApplication::processEvents();
  QVERIFY(f.widget<QRadioButton>("OptionChannelRename")->isChecked());
  QTest::mouseClick(f.widget<QRadioButton>("OptionBodyPartRename"), Qt::LeftButton);
  QVERIFY(o.OptionBodyPartRename.value());
  QVERIFY(!o.OptionChannelRename.value());
  QCOMPARE(f.recorder.of("OptionBodyPartRename", EventKind::Click).size(), size_t(1));
}

void BindingTest::textConversionKeepsEveryByte() {
  std::string all;
  for (int b = 0; b < 256; ++b) all.push_back(static_cast<char>(b));
  QCOMPARE(toBytes(fromBytes(all)), all);
  QCOMPARE(fromBytes("\x80 caf\xe9 \x93q\x94"), QString::fromUtf8("€ café “q”"));
  QCOMPARE(toBytes(QString::fromUtf8("Ω")), std::string("?"));
  QCOMPARE(toBytesMultiLine(fromBytesMultiLine("a\r\nb\r\n")), std::string("a\r\nb\r\n"));
  // Shown text: a path of the system in UTF-8 reads as such, figure text stays 1252.
  QCOMPARE(fromDisplayBytes("/home/zo\xc3\xab/Caf\xc3\xa9.cr2"), QString::fromUtf8("/home/zoë/Café.cr2"));
  QCOMPARE(fromDisplayBytes("caf\xe9 \x93q\x94"), QString::fromUtf8("café “q”"));
  QCOMPARE(fromDisplayBytes("\xc3"), QString::fromUtf8("Ã"));  // cut short: not UTF-8
  QCOMPARE(fromDisplayBytesMultiLine("Caf\xc3\xa9\r\nx"), QString::fromUtf8("Café\nx"));
  QCOMPARE(toQColor(0xC00000), QColor(0, 0, 192));
  QCOMPARE(fromQColor(QColor(255, 224, 192)), ui::Colour(0xC0E0FF));
  QCOMPARE(keyCode(Qt::Key_F3), 114);
  QCOMPARE(keyCode(Qt::Key_Escape), 27);
}

QObject* newBindingTest() { return new BindingTest; }

#include "binding_test.moc"
