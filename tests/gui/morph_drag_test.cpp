// The trash as a real drop target: a morph line dragged from ListChannels onto
// PictureTrash reaches the removal behind it, which asks, saves and shortens the list.
#include <QListWidget>
#include <QTest>

#include "gui/binders.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;
using namespace tolvane::gui;
using namespace tolvane::gui::test;

class MorphDragTest : public QObject {
  Q_OBJECT
 private slots:
  void morphDraggedOntoTheTrashIsRemoved();
};

void MorphDragTest::morphDraggedOntoTheTrashIsRemoved() {
  WindowFixture f(true);
  f.showFigurePage();
  ui::Opening& o = f.opening();
  auto data = std::filesystem::path(TOLVANE_TEST_DATA) / "morph";
  std::string dest = tolvane::test::copyInto(data / "figures" / "dest.cr2", f.program.files()).string();
  for (ui::Label* l : {&o.LabelFileName, &o.LabelChannelFileName}) l->setCaption("dest.cr2");
  for (ui::Label* l : {&o.LabelFileNameForEditor, &o.LabelChannelFileNameForEditor}) l->setCaption(dest);
  o.ListActors.setItems({" BODY:1 * 7", "    hip:1 * 11", "    abdomen:1 * 16", "    chest:1 * 21"});
  o.ListActors.setListIndex(3);
  o.PictureCopyToDest.setVisible(true);
  FormBinding::flushAll();

  QTest::mouseClick(f.window->widgetFor("PictureViewChannels"), Qt::LeftButton);
  QCOMPARE(o.ListChannels.list(0), std::string("Channels for  chest:1"));
  QTest::mouseClick(f.window->widgetFor("PictureTrash"), Qt::LeftButton);
  QCOMPARE(o.PictureTrash.backColor(), ui::kToolOn);
  FormBinding::flushAll();

  auto* list = f.widget<LineList>("ListChannels");
  QVERIFY(list != nullptr);
  QListWidgetItem* round = list->findItems("\tRound", Qt::MatchExactly).value(0);
  QVERIFY(round != nullptr);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(round).center());
  QVERIFY(o.ListChannelsDragOn);

  f.program.services.expect("Success!", "Morph \"Round\" removed from " + dest + ".  Save changes?",
                            ui::Answer::Yes);
  f.program.services.dialog(dest);
  std::unique_ptr<QMimeData> mime(list->mimeData(list->selectedItems()));
  dropOn(f.window->widgetFor("PictureTrash"), mime.get());

  QCOMPARE(f.program.services.pending(), size_t(0));
  QCOMPARE(tolvane::test::firstDifference(dest, data / "remove_morph" / "expected.cr2"), std::string());
  QCOMPARE(o.ListChannels.indexOf("\tRound"), -1);
  QCOMPARE(o.PictureTrash.backColor(), ui::kToolRest);
}

QObject* newMorphDragTest() { return new MorphDragTest; }

#include "morph_drag_test.moc"
