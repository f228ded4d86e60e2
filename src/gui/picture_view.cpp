#include "gui/picture_view.h"

#include <QImage>
#include <QPainter>

namespace tolvane::gui {

PictureView::PictureView(const ui::DrawnPicture& picture, QWidget* parent, int side)
    : QWidget(parent), m_picture(picture), m_side(side) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  QSize size = sizeHint();
  setFixedSize(size);
}

QSize PictureView::sizeHint() const {
  if (m_side > 0) return {m_side, m_side};
  return {m_picture.width(), m_picture.height()};
}

QImage PictureView::image() const {
  const ui::Raster& r = m_picture.raster();
  return QImage(reinterpret_cast<const uchar*>(r.data()), r.width(), r.height(), r.width() * 4,
                QImage::Format_RGB32)
      .copy();
}

void PictureView::paintEvent(QPaintEvent*) {
  const ui::Raster& r = m_picture.raster();
  QImage shown(reinterpret_cast<const uchar*>(r.data()), r.width(), r.height(), r.width() * 4,
               QImage::Format_RGB32);
  QPainter painter(this);
  painter.drawImage(rect(), shown);
}

PictureViewBinder::PictureViewBinder(FormBinding& binding, ui::DrawnPicture& picture, QWidget* view)
    : ControlBinder(binding, picture, view) {
  watchInput(view, true);
}

void PictureViewBinder::refreshContent(bool) {
  if (widget() != nullptr) widget()->update();
}

}  // namespace tolvane::gui
