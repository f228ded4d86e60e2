#include "gui/qt_painter.h"

#include <QImage>
#include <QPainter>
#include <QPolygon>

namespace tolvane::gui {

namespace {

QColor colourOf(ui::Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

class QtPicturePainter : public ui::PicturePainter {
 public:
  explicit QtPicturePainter(ui::Raster& raster)
      : m_raster(raster),
        m_image(reinterpret_cast<uchar*>(raster.data()), raster.width(), raster.height(), raster.width() * 4,
                QImage::Format_RGB32),
        m_painter(&m_image) {
    m_painter.setRenderHint(QPainter::Antialiasing, false);
  }

  void clear(ui::Colour background) override { m_raster.fill(ui::pixelOf(background)); }

  void polygon(const ui::PicturePoint* points, int count, ui::Colour fill, ui::Colour outline) override {
    if (count < 2) return;
    m_painter.setPen(colourOf(outline));
    if (count == 2) {
      m_painter.drawLine(points[0].x, points[0].y, points[1].x, points[1].y);
      return;
    }
    m_polygon.resize(count);
    for (int i = 0; i < count; ++i) m_polygon.setPoint(i, points[i].x, points[i].y);
    m_painter.setBrush(colourOf(fill));
    m_painter.drawPolygon(m_polygon, Qt::OddEvenFill);
  }

  void line(ui::PicturePoint from, ui::PicturePoint to, ui::Colour colour) override {
    m_painter.setPen(colourOf(colour));
    m_painter.drawLine(from.x, from.y, to.x, to.y);
  }

  void setPixel(int x, int y, ui::Colour colour) override { m_raster.setPixel(x, y, ui::pixelOf(colour)); }

 private:
  ui::Raster& m_raster;
  QImage m_image;
  QPainter m_painter;
  QPolygon m_polygon;
};

}  // namespace

std::unique_ptr<ui::PicturePainter> qtPainter(ui::Raster& raster) {
  return std::make_unique<QtPicturePainter>(raster);
}

}  // namespace tolvane::gui
