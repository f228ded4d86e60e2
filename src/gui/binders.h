// One binder per kind of control: label, text box, list, picture, check box and
// option, menu item, timer, slider, combo box, and a plain one for frames and images.
// Each shows its part of the model and turns the user's actions into model changes
// followed by the event.
#pragma once

#include <QListWidget>
#include <QTimer>
#include <memory>
#include <vector>

#include "gui/form_binding.h"
#include "ui/controls.h"

class QAction;
class QMenu;

namespace tolvane::gui {

class PictureButton;

// Makes the binder for the control's kind; the target must be a widget that suits it.
std::unique_ptr<ControlBinder> makeBinder(FormBinding& binding, ui::Control& control, QObject* target);

// A list whose lines can be dragged onto a drop target; the drag names its source.
class LineList : public QListWidget {
  Q_OBJECT
 public:
  using QListWidget::QListWidget;
  void setDragSource(const QString& source);
  QString dragSource() const { return m_source; }
  QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;

 private:
  QString m_source;
};

class LabelBinder : public ControlBinder {
 public:
  LabelBinder(FormBinding& binding, ui::Label& label, QWidget* widget);

 protected:
  void refreshContent(bool first) override;
  void applyColours(ui::Colour fore, ui::Colour back) override;

 private:
  ui::Label& m_label;
  std::string m_caption;
};

class TextBoxBinder : public ControlBinder {
 public:
  TextBoxBinder(FormBinding& binding, ui::TextBox& box, QWidget* widget);

 protected:
  void refreshContent(bool first) override;

 private:
  void userEdited(const std::string& text);
  ui::TextBox& m_box;
  std::string m_text;
};

class ListBinder : public ControlBinder {
 public:
  ListBinder(FormBinding& binding, ui::ListBox& list, QListWidget* widget);

 protected:
  void refreshContent(bool first) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void refreshItems();
  void refreshSelection();
  void userSelected();
  QListWidget* list() const;
  ui::ListBox& m_list;
  std::vector<std::string> m_items;
  std::vector<int> m_selected;
  int m_current = -2;
  bool m_mouseDown = false;
};

class PictureBinder : public ControlBinder {
 public:
  PictureBinder(FormBinding& binding, ui::Picture& picture, PictureButton* widget);

 protected:
  void refreshContent(bool first) override;
  void applyColours(ui::Colour fore, ui::Colour back) override;
};

class CheckBinder : public ControlBinder {
 public:
  CheckBinder(FormBinding& binding, ui::CheckBox& box, QWidget* widget);

 protected:
  void refreshContent(bool first) override;

 private:
  ui::CheckBox& m_box;
  std::string m_caption;
  bool m_value = false;
};

class MenuBinder : public ControlBinder {
 public:
  // `menu` is the drop-down of a top-level menu; opening it is the menu's click.
  MenuBinder(FormBinding& binding, ui::MenuItem& item, QAction* action, QMenu* menu);

 protected:
  void refreshContent(bool first) override;
  void applyVisible(bool visible) override;
  void applyEnabled(bool enabled) override;
  void applyColours(ui::Colour, ui::Colour) override {}

 private:
  ui::MenuItem& m_item;
  QAction* m_action;
  std::string m_caption;
  bool m_checked = false;
};

class TimerBinder : public ControlBinder {
 public:
  TimerBinder(FormBinding& binding, ui::Timer& timer);
  const QTimer& timer() const { return m_timer; }

 protected:
  void refreshContent(bool first) override;
  void applyVisible(bool) override {}
  void applyEnabled(bool) override {}
  void applyColours(ui::Colour, ui::Colour) override {}

 private:
  ui::Timer& m_model;
  QTimer m_timer;
};

class SliderBinder : public ControlBinder {
 public:
  SliderBinder(FormBinding& binding, ui::Slider& slider, QWidget* widget);

 protected:
  void refreshContent(bool first) override;

 private:
  ui::Slider& m_slider;
};

class ComboBinder : public ControlBinder {
 public:
  ComboBinder(FormBinding& binding, ui::ComboBox& combo, QWidget* widget);

 protected:
  void refreshContent(bool first) override;

 private:
  ui::ComboBox& m_combo;
  std::vector<std::string> m_items;
  std::string m_text;
};

// Frames and still pictures: visibility, enabled, tool tip, clicks.
class PlainBinder : public ControlBinder {
 public:
  PlainBinder(FormBinding& binding, ui::Control& control, QWidget* widget);

 protected:
  void refreshContent(bool) override {}
  void applyColours(ui::Colour, ui::Colour) override {}
};

}  // namespace tolvane::gui
