// A picture the program draws in, shown in the window: the form's pixels painted as
// they stand (scaled when the widget is smaller), refreshed when the model says so.
#pragma once

#include <QWidget>

#include "gui/form_binding.h"
#include "ui/drawn_picture.h"

namespace tolvane::gui {

class PictureView : public QWidget {
  Q_OBJECT
 public:
  PictureView(const ui::DrawnPicture& picture, QWidget* parent = nullptr, int side = 0);
  QSize sizeHint() const override;
  // What the view shows now, as an image of its own.
  QImage image() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ui::DrawnPicture& m_picture;
  int m_side;
};

// Refreshes the view when the picture's pixels change, and reports the mouse on it.
class PictureViewBinder : public ControlBinder {
 public:
  PictureViewBinder(FormBinding& binding, ui::DrawnPicture& picture, QWidget* view);

 protected:
  void refreshContent(bool first) override;
  void applyColours(ui::Colour, ui::Colour) override {}
};

}  // namespace tolvane::gui
