// The OBJ workbench's window, bound to FormOBJ: the drawing area where the still
// pictures, the live view and the preview take turns, the group and material lists with
// their coloured listings and rename boxes, the options, the tool pictures and the key
// table. Keys typed on the window (not in a box) go to the form by character code, and
// the live view is an OpenGL widget where a context exists, else the software
// renderer's picture.
#pragma once

#include "gui/form_windows.h"

namespace tolvane::ui {
class FormOBJ;
}

namespace tolvane::gui {

class GlMeshView;
class PictureView;

class ObjWindow : public FormWindow {
  Q_OBJECT
 public:
  ObjWindow(FormBinding& binding, QWidget* mainWindow);
  ~ObjWindow() override;

  // The live view on OpenGL, or nullptr where the software renderer draws it.
  GlMeshView* glView() const { return m_gl; }
  PictureView* pictureView(const std::string& name) const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* buildDrawingArea();
  QWidget* buildSideColumn();
  QWidget* buildListArea();
  QWidget* buildOptions();
  QWidget* buildTools();
  void place(ui::Control& control, QWidget* widget);
  bool keyOfForm(QKeyEvent* event);

  ui::FormOBJ& m_form;
  GlMeshView* m_gl = nullptr;
  std::map<std::string, PictureView*> m_pictures;
};

// Registers the window's factory under "FormOBJ".
void registerObjWindow();

}  // namespace tolvane::gui
