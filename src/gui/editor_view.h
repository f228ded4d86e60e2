// The Manual Editor's pane on screen: a plain-text editor widget drawn straight from
// the pane's text control and editing through it, so a 50 MB figure opens as fast as it
// is read. Only the visible lines are drawn; a line end counts as the characters it has
// in the file (CR LF as two), as the handlers count positions.
#pragma once

#include <QAbstractScrollArea>
#include <cstdint>
#include <string>

#include "ui/text_pane.h"

namespace tolvane::gui {

class EditorView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit EditorView(ui::TextPane& pane, QWidget* parent = nullptr);

  // Takes in what the handlers changed: text, selection, selection colour.
  void refresh();
  ui::TextPane& pane() { return m_pane; }

  // The key code of a key as the editor's handlers count keys (65 'A', 114 F3, 13
  // Enter, 96 to 111 on the keypad, ...); 0 for keys without one.
  static int editorKeyCode(int qtKey, bool keypad);

 signals:
  // After the view has handled the key, so the line display sees the new cursor.
  void keyDown(int keyCode, int shift);
  void clicked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;  // Tab is typed into the text
  // Undo, redo, cut, copy, paste and select all, each told to the handlers as the key
  // that does the same (Ctrl+Z, Ctrl+Y, Ctrl+X, Ctrl+C, Ctrl+V, Ctrl+A).
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  ui::TextControl& text() { return m_pane.text(); }
  const ui::TextControl& text() const { return m_pane.text(); }
  std::int64_t lineStart(std::int64_t line) const;
  std::int64_t lineEnd(std::int64_t line) const;  // before the line break
  std::string lineBytes(std::int64_t line) const;
  std::int64_t positionAtColumn(std::int64_t line, std::int64_t column) const;
  std::int64_t columnOf(std::int64_t position) const;
  std::int64_t positionAt(const QPoint& point) const;
  std::int64_t stepLeft(std::int64_t position) const;
  std::int64_t stepRight(std::int64_t position) const;
  int visibleLines() const;

  bool moveKey(QKeyEvent* event);
  bool editKey(QKeyEvent* event);
  void moveCaret(std::int64_t position, bool extend);
  void replaceRange(std::int64_t from, std::int64_t to, const std::string& bytes);
  void copySelection();
  void undo();
  void redo();
  void afterHistoryStep();
  void updateScrollBars();
  int gutterWidth() const;
  void placeGutter();
  void ensureCaretVisible();

  class Gutter;
  ui::TextPane& m_pane;
  Gutter* m_gutter = nullptr;
  std::int64_t m_anchor = 0;
  std::int64_t m_caret = 0;
  std::int64_t m_lines = 1;
  std::int64_t m_wantedColumn = -1;  // kept over up and down moves
  std::int64_t m_widest = 0;         // widest line drawn so far, in columns
  int m_charWidth = 8;
  int m_lineHeight = 16;
  int m_ascent = 12;
  bool m_dragging = false;
};

}  // namespace tolvane::gui
