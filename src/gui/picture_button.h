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

class PictureButton : public QWidget {
  Q_OBJECT
 public:
  explicit PictureButton(QWidget* parent = nullptr, int side = 40);

  void setColour(const QColor& colour);
  QColor colour() const { return m_colour; }
  void setIcon(const QPixmap& icon);
  void setDropTarget(bool on) { setAcceptDrops(on); }
  QSize sizeHint() const override { return {m_side, m_side}; }

 signals:
  // Lines from a list were dropped here.
  void linesDropped(const QString& source);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QColor m_colour;
  QPixmap m_icon;
  int m_side;
  bool m_down = false;
  bool m_dragOver = false;
};

}  // namespace tolvane::gui
