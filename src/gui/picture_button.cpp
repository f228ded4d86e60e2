#include "gui/picture_button.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyleOption>

namespace tolvane::gui {

QMimeData* makeLinesMimeData(const QString& source, const QStringList& lines) {
  auto* mime = new QMimeData;
  mime->setData(kLinesMimeType, source.toUtf8());
  mime->setText(lines.join('\n'));
  return mime;
}

QString linesSource(const QMimeData* mime) {
  if (mime == nullptr || !mime->hasFormat(kLinesMimeType)) return {};
  return QString::fromUtf8(mime->data(kLinesMimeType));
}

PictureButton::PictureButton(QWidget* parent, int side)
    : QWidget(parent), m_colour(255, 224, 192), m_side(side) {
  setFixedSize(side, side);
  setCursor(Qt::PointingHandCursor);
  // Reached with Tab; the tools also give a picture the focus to take its keys.
  setFocusPolicy(Qt::StrongFocus);
}

void PictureButton::setColour(const QColor& colour) {
  if (colour == m_colour) return;
  m_colour = colour;
  update();
}

void PictureButton::setIcon(const QPixmap& icon) {
  m_icon = icon;
  update();
}

void PictureButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  QRect r = rect().adjusted(0, 0, -1, -1);
  QColor fill = isEnabled() ? m_colour : m_colour.lighter(115);
  if (m_dragOver) fill = fill.darker(125);
  p.fillRect(r, fill);
  // A raised edge at rest, a sunken one while pressed.
  QColor light = m_down ? QColor(90, 90, 90) : QColor(255, 255, 255);
  QColor dark = m_down ? QColor(255, 255, 255) : QColor(90, 90, 90);
  p.setPen(light);
  p.drawLine(r.topLeft(), r.topRight());
  p.drawLine(r.topLeft(), r.bottomLeft());
  p.setPen(dark);
  p.drawLine(r.bottomLeft(), r.bottomRight());
  p.drawLine(r.topRight(), r.bottomRight());
  if (!m_icon.isNull()) {
    const QSize shown = (QSizeF(m_icon.size()) / m_icon.devicePixelRatio()).toSize();
    QPoint at((width() - shown.width()) / 2, (height() - shown.height()) / 2);
    if (m_down) at += QPoint(1, 1);
    if (!isEnabled()) p.setOpacity(0.4);
    p.drawPixmap(at, m_icon);
  }
  if (hasFocus()) {
    p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
    p.drawRect(r.adjusted(2, 2, -2, -2));
  }
}

void PictureButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    m_down = true;
    update();
  }
  QWidget::mousePressEvent(event);
}

void PictureButton::mouseReleaseEvent(QMouseEvent* event) {
  if (m_down) {
    m_down = false;
    update();
  }
  QWidget::mouseReleaseEvent(event);
}

void clickLikeTheMouse(QWidget* widget) {
  if (!widget->isVisible() || !widget->isEnabled()) return;
  const QPointF centre(widget->width() / 2.0, widget->height() / 2.0);
  const QPointF global = widget->mapToGlobal(centre);
  QMouseEvent down(QEvent::MouseButtonPress, centre, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &down);
  QMouseEvent up(QEvent::MouseButtonRelease, centre, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &up);
}

void PictureButton::press() { clickLikeTheMouse(this); }

void PictureButton::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (m_keysPress && event->modifiers() == Qt::NoModifier &&
      (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)) {
    press();
    return;
  }
  QWidget::keyPressEvent(event);
}

void PictureButton::focusInEvent(QFocusEvent* event) {
  update();
  QWidget::focusInEvent(event);
}

void PictureButton::focusOutEvent(QFocusEvent* event) {
  update();
  QWidget::focusOutEvent(event);
}

void PictureButton::dragEnterEvent(QDragEnterEvent* event) {
  if (linesSource(event->mimeData()).isEmpty()) return;
  m_dragOver = true;
  update();
  event->acceptProposedAction();
}

void PictureButton::dragLeaveEvent(QDragLeaveEvent*) {
  m_dragOver = false;
  update();
}

void PictureButton::dropEvent(QDropEvent* event) {
  m_dragOver = false;
  update();
  QString source = linesSource(event->mimeData());
  if (source.isEmpty()) return;
  event->acceptProposedAction();
  emit linesDropped(source);
}

}  // namespace tolvane::gui
