#include "gui/tile_close.h"

#include <QCoreApplication>
#include <QPainter>
#include <QThread>
#include <QWidget>

#include "gui/pictures.h"

namespace tolvane::gui {

namespace {
class TileCover : public QWidget {
 public:
  explicit TileCover(QWidget* parent) : QWidget(parent), m_tile(tileImage()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(parent->rect());
  }
  int rowsNeeded() const { return (height() + m_tile.height() - 1) / m_tile.height(); }
  void setRows(int rows) {
    m_rows = rows;
    repaint();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    for (int row = 0; row < m_rows; ++row)
      for (int x = 0; x < width(); x += m_tile.width()) painter.drawImage(x, row * m_tile.height(), m_tile);
  }

 private:
  QImage m_tile;
  int m_rows = 0;
};
}  // namespace

void paintTileClose(QWidget& window, int rowWaitMs) {
  auto* cover = new TileCover(&window);
  cover->show();
  cover->raise();
  for (int row = 1; row <= cover->rowsNeeded(); ++row) {
    cover->setRows(row);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QThread::msleep(static_cast<unsigned long>(rowWaitMs));
  }
  cover->deleteLater();
}

}  // namespace tolvane::gui
