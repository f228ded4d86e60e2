// The OBJ workbench's window: opened from the main window on the sample figure's mesh,
// its three still pictures drawn with QPainter into the form's pixels, and the live view
// turned by Space on OpenGL (under a real X server) or by the software renderer.
#include "gui/obj_window.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTest>

#include "gui/gl_mesh_view.h"
#include "gui/picture_view.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;

namespace {

int pixelsNotWhite(const QImage& image) {
  int n = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) n += (image.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF;
  return n;
}

int pixelsOf(const QImage& image, QRgb colour) {
  int n = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) n += (image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF);
  return n;
}

}  // namespace

class ObjWindowTest : public QObject {
  Q_OBJECT

  struct Session {
    gui::test::WindowFixture f{true};
    std::string obj;
    gui::ObjWindow* window = nullptr;

    Session() {
      obj = tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime/Geometries/Tolvane/ava.obj", f.program.files())
                .string();
      f.opening().OpenFilePath = obj;
      f.opening().PictureOBJView.setVisible(true);
      gui::FormBinding::flushAll();
      QTest::mouseClick(f.window->widgetFor("PictureOBJView"), Qt::LeftButton);
      QApplication::processEvents();
      window = qobject_cast<gui::ObjWindow*>(f.window->formWindow("FormOBJ"));
    }
    ui::FormOBJ& form() { return f.program->formOBJ; }
    template <class W>
    W* child(const char* name) {
      return window->findChild<W*>(name);
    }
    void load() {
      QTest::mouseClick(child<QLabel>("LabelView"), Qt::LeftButton);
      QApplication::processEvents();
    }
    void turn() {
      QTest::keyClick(window, Qt::Key_Space);
      QTest::keyClick(window, Qt::Key_Space);
      QTRY_VERIFY_WITH_TIMEOUT(form().angle > 10, 5000);
    }
  };

 private slots:
  void showsTheThreeStillPicturesOfTheSampleMesh() {
    Session s;
    QVERIFY(s.window != nullptr);
    QVERIFY(s.window->isVisible());
    s.load();
    QCOMPARE(s.window->windowTitle().toStdString(), "OBJ Viewer " + s.obj);
    QVERIFY(s.form().loaded);
    QCOMPARE(s.form().ListGroups.listCount(), 51);
    const char* pictures[] = {"PictureStore", "PictureStore2", "PictureStore3"};
    const char* options[] = {"OptionFrontView", "OptionSideView", "OptionTopView"};
    for (int i = 0; i < 3; ++i) {
      QRadioButton* option = s.child<QRadioButton>(options[i]);
      QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(6, option->height() / 2));  // on its circle
      QApplication::processEvents();
      gui::PictureView* view = s.window->pictureView(pictures[i]);
      QVERIFY(view->isVisible());
      for (int j = 0; j < 3; ++j)
        if (j != i) QVERIFY(!s.window->pictureView(pictures[j])->isVisible());
      // What the window shows is the form's picture, drawn with QPainter.
      QImage shown = view->grab().toImage();
      QVERIFY(pixelsNotWhite(shown) > 100);
      QCOMPARE(shown.convertToFormat(QImage::Format_RGB32), view->image());
    }
    // The key table's captions.
    QTest::mouseClick(s.child<QLabel>("LabelHotKeys"), Qt::LeftButton);
    QApplication::processEvents();
    QCOMPARE(s.form().ListHotKeys.list(2), std::string("Space: start/stop rotate"));
  }

  void turnsTheLiveViewWithTheSoftwareRenderer() {
    if (gui::openGlUsable()) QSKIP("the live view is on OpenGL here");
    Session s;
    s.load();
    s.turn();
    gui::PictureView* live = s.window->pictureView("PictureObjViewer2");
    QVERIFY(live->isVisible());
    QVERIFY(pixelsOf(live->image(), qRgb(0, 0, 255)) > 100);
    QTest::keyClick(s.window, Qt::Key_Space);  // stops
    QTRY_VERIFY(!s.form().TimerRotate.enabled());
  }

  void turnsTheLiveViewOnOpenGl() {
    if (!gui::openGlUsable()) QSKIP("no OpenGL context on this platform");
    Session s;
    s.load();
    QVERIFY(s.window->glView() != nullptr);
    s.turn();
    QVERIFY(s.window->glView()->isVisible());
    QTRY_VERIFY(s.window->glView()->framesPainted() > 5);
    QImage frame = s.window->glView()->grabFramebuffer();
    QVERIFY(pixelsOf(frame, qRgb(0, 0, 255)) > 100);
    // The keys act while it turns: "9" speeds it up, "/" zooms out.
    QTest::keyClick(s.window, Qt::Key_9);
    QTest::keyClick(s.window, Qt::Key_Slash);
    QCOMPARE(s.form().speed, std::int16_t(2));
    QCOMPARE(s.form().zoom, 1.9f);
  }

  // Lop mode on, a click on a group's colour and a box dragged on the front picture.
  void lopperRemovesAClickedGroupAndABoxedFace() {
    Session s;
    s.load();
    ui::FormOBJ& f = s.form();
    auto faces = [](const std::string& text) {
      int n = 0;
      for (std::size_t at = text.find("\nf "); at != std::string::npos; at = text.find("\nf ", at + 1)) ++n;
      return n;
    };
    int before = faces(tolvane::test::readFile(s.obj));
    QWidget* lop = s.window->findChild<QWidget*>("PictureLop");
    QVERIFY(lop != nullptr && lop->isVisible());
    gui::PictureView* front = s.window->pictureView("PictureStore");
    QVERIFY(front->isVisible());

    // A box in the middle of the figure.
    QTest::mouseClick(lop, Qt::LeftButton);
    QCOMPARE(f.lopMode, std::int16_t(-1));
    std::string boxed = (s.f.program.files() / "boxed.obj").string();
    s.f.program.services.expect("Alert!", "Do you want to remove the mesh in this box?", ui::Answer::Yes);
    s.f.program.services.dialog(boxed);
    // Around the middle of the drawn mesh.
    const ui::Raster& drawn = f.PictureStore.raster();
    long long sx = 0, sy = 0, n = 0;
    for (int y = 0; y < drawn.height(); ++y)
      for (int x = 0; x < drawn.width(); ++x)
        if ((drawn.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF) {
          sx += x;
          sy += y;
          ++n;
        }
    QVERIFY(n > 0);
    QPoint centre(static_cast<int>(sx / n), static_cast<int>(sy / n));
    QTest::mousePress(front, Qt::LeftButton, {}, centre - QPoint(20, 20));
    QMouseEvent move(QEvent::MouseMove, QPointF(centre + QPoint(20, 20)), QPointF(front->mapToGlobal(centre)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(front, &move);
    QTest::mouseRelease(front, Qt::LeftButton, {}, centre + QPoint(20, 20));
    QApplication::processEvents();
    int afterBox = faces(tolvane::test::readFile(boxed));
    QVERIFY(afterBox > 0);
    QVERIFY(afterBox < before);

    // A click on a point in a group's colour, then lop mode off.
    const ui::Raster& r = f.PictureStore.raster();
    QPoint hit(-1, -1);
    for (int y = 0; y < r.height() && hit.x() < 0; ++y)
      for (int x = 0; x < r.width(); ++x) {
        std::uint32_t p = r.pixel(x, y) & 0xFFFFFF;
        if (p != 0xFFFFFF && p != 0 && x > 0 && r.pixel(x - 1, y) == r.pixel(x, y)) {
          hit = QPoint(x, y);
          break;
        }
      }
    QVERIFY(hit.x() >= 0);
    // The release asks about the box too; No keeps the colour for the end of lop mode.
    s.f.program.services.expect("Alert!", "Do you want to remove the mesh in this box?", ui::Answer::No);
    QTest::mouseClick(front, Qt::LeftButton, {}, hit);
    QApplication::processEvents();
    QCOMPARE(f.ListLop.listCount(), 1);
    std::string clicked = (s.f.program.files() / "clicked.obj").string();
    s.f.program.services.dialog(clicked);
    QTest::mouseClick(lop, Qt::LeftButton);
    QApplication::processEvents();
    QCOMPARE(f.lopMode, std::int16_t(0));
    int afterClick = faces(tolvane::test::readFile(clicked));
    QVERIFY(afterClick < before);
    QCOMPARE(s.f.program.services.pending(), std::size_t(0));
  }

  // A secondary mesh laid over the front picture follows a drag made with the mouse on
  // the spot where it lies; the still picture beneath takes the events.
  void secondaryMeshMovesWithTheDrag() {
    Session s;
    s.load();
    std::string second =
        tolvane::test::copyInto(TOLVANE_SAMPLES "/Runtime/Geometries/Tolvane/ava.obj", s.f.program.work()).string();
    s.f.program.services.dialog(second);
    QTest::mouseClick(s.window->findChild<QWidget*>("PictureAddOBJ"), Qt::LeftButton);
    QApplication::processEvents();
    gui::PictureView* added = s.window->pictureView("PictureAddObjFront");
    QVERIFY(added->isVisible());
    QWidget* area = added->parentWidget();
    const QRgb navy = qRgb(0, 0, 128);  // the secondary mesh's fill
    auto centre = [&] {
      QImage shown = area->grab().toImage();
      long long sx = 0, sy = 0, n = 0;
      for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
          if ((shown.pixel(x, y) & 0xFFFFFF) == (navy & 0xFFFFFF)) {
            sx += x;
            sy += y;
            ++n;
          }
      return n < 50 ? QPoint(-1, -1) : QPoint(static_cast<int>(sx / n), static_cast<int>(sy / n));
    };
    QPoint before = centre();
    QVERIFY(before.x() >= 0);
    QWidget* under = area->childAt(before);
    QCOMPARE(under, static_cast<QWidget*>(s.window->pictureView("PictureStore")));
    QTest::mousePress(under, Qt::LeftButton, {}, before);
    for (int step = 1; step <= 4; ++step) {
      QPoint at = before + QPoint(10 * step, -5 * step);  // up, away from the bottom edge
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(under->mapToGlobal(at)), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(under, &move);
    }
    QTest::mouseRelease(under, Qt::LeftButton, {}, before + QPoint(40, -20));
    QApplication::processEvents();
    QVERIFY(s.form().addShiftX > 0);
    QVERIFY(s.form().addShiftY > 0);
    QPoint after = centre();
    QVERIFY2(std::abs(after.x() - before.x() - 40) <= 2 && std::abs(after.y() - before.y() + 20) <= 2,
             qPrintable(QString("moved from %1,%2 to %3,%4").arg(before.x()).arg(before.y()).arg(after.x()).arg(after.y())));
  }

  void closingRewritesThePendingRename() {
    Session s;
    s.load();
    ui::FormOBJ& f = s.form();
    f.ListGroups.setListIndex(0);
    f.renamed = false;
    f.ListGrpRen.addItem("hip*pelvis");
    f.renamed = true;
    std::string saved = (s.f.program.files() / "renamed.obj").string();
    s.f.program.services.dialog(saved);
    s.window->close();
    QApplication::processEvents();
    QVERIFY(!s.window->isVisible());
    QVERIFY(tolvane::test::readFile(saved).find("g pelvis\r\n") != std::string::npos);
  }
};

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ObjWindowTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "obj_window_test.moc"
