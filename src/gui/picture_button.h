// The tool picture of the main form: a square button painted in its model colour with
// a drawn icon. It takes the lines that are dragged from the panes when it is a drop
// target.
#pragma once

#include <QPixmap>
#include <QWidget>

class QMimeData;

namespace tolvane::gui {

// The drag format of list lines: the "Form.Control" they come from.
inline constexpr const char* kLinesMimeType = "application/x-tolvane-lines";
QMimeData* makeLinesMimeData(const QString& source, const QStringList& lines);
// The source of a drag of list lines, empty for anything else.
QString linesSource(const QMimeData* mime);

// A left click in the middle of `widget` as the mouse makes it (press, then release):
// whatever watches the widget's mouse events sees the same as for a real click.
void clickLikeTheMouse(QWidget* widget);

class PictureButton : public QWidget {
  Q_OBJECT
 public:
  explicit PictureButton(QWidget* parent = nullptr, int side = 40);

  void setColour(const QColor& colour);
  QColor colour() const { return m_colour; }
  void setIcon(const QPixmap& icon);
  void setDropTarget(bool on) { setAcceptDrops(on); }
  // Whether Enter and Space press the focused button; off for a picture whose form
  // takes those keys itself.
  void setKeysPress(bool on) { m_keysPress = on; }
  QSize sizeHint() const override { return {m_side, m_side}; }

 public slots:
  // A click as the mouse makes it (press and release in the middle), for the keyboard
  // and the button's shortcut: whatever watches the mouse sees the same events.
  void press();

 signals:
  // Lines from a list were dropped here.
  void linesDropped(const QString& source);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QColor m_colour;
  QPixmap m_icon;
  int m_side;
  bool m_down = false;
  bool m_dragOver = false;
  bool m_keysPress = true;
};

}  // namespace tolvane::gui
