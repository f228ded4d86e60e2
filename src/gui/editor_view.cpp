#include "gui/editor_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "gui/qt_text.h"

namespace tolvane::gui {

namespace {
constexpr int kTabColumns = 8;
constexpr int kMargin = 4;

std::int64_t nextColumn(std::int64_t column, char c) {
  return c == '\t' ? (column / kTabColumns + 1) * kTabColumns : column + 1;
}
}  // namespace

// The line numbers at the left of the pane, for the lines in view.
class EditorView::Gutter : public QWidget {
 public:
  explicit Gutter(EditorView* view) : QWidget(view), m_view(view) { setObjectName("LineNumbers"); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(width() - 1, 0, width() - 1, height());
    painter.setFont(m_view->font());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const std::int64_t first = m_view->verticalScrollBar()->value();
    const std::int64_t last = std::min(m_view->m_lines, first + m_view->visibleLines() + 1);
    const int top = m_view->viewport()->y() - y();
    for (std::int64_t line = first; line < last; ++line) {
      const int lineTop = top + static_cast<int>(line - first) * m_view->m_lineHeight;
      painter.drawText(QRect(0, lineTop, width() - 6, m_view->m_lineHeight), Qt::AlignRight | Qt::AlignVCenter,
                       QString::number(line + 1));
    }
  }

 private:
  EditorView* m_view;
};

EditorView::EditorView(ui::TextPane& pane, QWidget* parent) : QAbstractScrollArea(parent), m_pane(pane) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setFamilies({"Courier", font.family()});
  font.setStyleHint(QFont::Monospace);
  setFont(font);
  QFontMetrics metrics(font);
  m_charWidth = std::max(1, metrics.horizontalAdvance(QChar('M')));
  m_lineHeight = std::max(1, metrics.height());
  m_ascent = metrics.ascent();
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setAutoFillBackground(true);
  verticalScrollBar()->setSingleStep(1);
  horizontalScrollBar()->setSingleStep(m_charWidth);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
  m_gutter = new Gutter(this);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, m_gutter, qOverload<>(&QWidget::update));
  refresh();
}

int EditorView::gutterWidth() const {
  int digits = 1;
  for (std::int64_t n = std::max<std::int64_t>(m_lines, 1); n >= 10; n /= 10) ++digits;
  return std::max(3, digits) * m_charWidth + 10;
}

void EditorView::placeGutter() {
  const int width = gutterWidth();
  if (viewportMargins().left() != width) setViewportMargins(width, 0, 0, 0);
  const QRect area = contentsRect();
  m_gutter->setGeometry(area.left(), area.top(), width, viewport()->height());
  m_gutter->update();
}

void EditorView::refresh() {
  const ui::TextControl& t = text();
  std::int64_t start = std::min(m_anchor, m_caret);
  std::int64_t length = std::abs(m_caret - m_anchor);
  if (t.selStart() != start || t.selLength() != length) {
    // The handlers moved the selection (a find, a replace, go to line): follow it.
    m_anchor = t.selStart();
    m_caret = t.selStart() + t.selLength();
    m_wantedColumn = -1;
    ensureCaretVisible();
  }
  m_lines = t.lineCount();
  placeGutter();
  QPalette p = viewport()->palette();
  p.setColor(QPalette::Base, toQColor(m_pane.backColor()));
  viewport()->setPalette(p);
  updateScrollBars();
  viewport()->update();
}

std::int64_t EditorView::lineStart(std::int64_t line) const {
  std::int64_t start = text().lineIndex(line);
  return start < 0 ? text().length() : start;
}

std::int64_t EditorView::lineEnd(std::int64_t line) const {
  std::int64_t next = text().lineIndex(line + 1);
  if (next < 0) return text().length();
  std::int64_t end = next - 1;  // the LF
  if (end > lineStart(line) && text().mid(end - 1, 1) == "\r") --end;
  return end;
}

std::string EditorView::lineBytes(std::int64_t line) const {
  std::int64_t start = lineStart(line);
  return text().mid(start, lineEnd(line) - start);
}

std::int64_t EditorView::columnOf(std::int64_t position) const {
  std::int64_t line = text().lineFromChar(position);
  std::string bytes = text().mid(lineStart(line), position - lineStart(line));
  std::int64_t column = 0;
  for (char c : bytes) column = nextColumn(column, c);
  return column;
}

std::int64_t EditorView::positionAtColumn(std::int64_t line, std::int64_t column) const {
  std::string bytes = lineBytes(line);
  std::int64_t at = 0;
  std::size_t i = 0;
  for (; i < bytes.size(); ++i) {
    std::int64_t next = nextColumn(at, bytes[i]);
    if (next > column && column - at < next - column) break;  // nearer the left edge of this character
    if (next > column) {
      ++i;
      break;
    }
    at = next;
  }
  return lineStart(line) + static_cast<std::int64_t>(std::min(i, bytes.size()));
}

std::int64_t EditorView::positionAt(const QPoint& point) const {
  std::int64_t line = verticalScrollBar()->value() + std::max(0, point.y()) / m_lineHeight;
  line = std::clamp<std::int64_t>(line, 0, m_lines - 1);
  int x = point.x() + horizontalScrollBar()->value() - kMargin;
  std::int64_t column = std::max(0, (x + m_charWidth / 2) / m_charWidth);
  return positionAtColumn(line, column);
}

std::int64_t EditorView::stepLeft(std::int64_t position) const {
  if (position <= 0) return 0;
  return position >= 2 && text().mid(position - 2, 2) == "\r\n" ? position - 2 : position - 1;
}

std::int64_t EditorView::stepRight(std::int64_t position) const {
  if (position >= text().length()) return text().length();
  return text().mid(position, 2) == "\r\n" ? position + 2 : position + 1;
}

int EditorView::visibleLines() const { return std::max(1, viewport()->height() / m_lineHeight); }

void EditorView::updateScrollBars() {
  verticalScrollBar()->setPageStep(visibleLines());
  verticalScrollBar()->setRange(0, static_cast<int>(std::max<std::int64_t>(0, m_lines - visibleLines())));
  int width = static_cast<int>(m_widest) * m_charWidth + 2 * kMargin;
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
}

void EditorView::ensureCaretVisible() {
  std::int64_t line = text().lineFromChar(m_caret);
  int top = verticalScrollBar()->value();
  if (line < top)
    verticalScrollBar()->setValue(static_cast<int>(line));
  else if (line >= top + visibleLines())
    verticalScrollBar()->setValue(static_cast<int>(line - visibleLines() + 1));
  std::int64_t column = columnOf(m_caret);
  m_widest = std::max(m_widest, column + 1);
  updateScrollBars();
  int x = static_cast<int>(column) * m_charWidth;
  int left = horizontalScrollBar()->value();
  if (x < left)
    horizontalScrollBar()->setValue(x);
  else if (x + m_charWidth + 2 * kMargin > left + viewport()->width())
    horizontalScrollBar()->setValue(x + m_charWidth + 2 * kMargin - viewport()->width());
}

void EditorView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const std::int64_t first = verticalScrollBar()->value();
  const std::int64_t last = std::min(m_lines, first + visibleLines() + 1);
  const int xOffset = kMargin - horizontalScrollBar()->value();
  const std::int64_t selFrom = std::min(m_anchor, m_caret), selTo = std::max(m_anchor, m_caret);
  const QColor selectionBack =
      text().selColor() == ui::kBlack ? palette().color(QPalette::Highlight) : toQColor(text().selColor());
  std::int64_t widest = m_widest;
  for (std::int64_t line = first; line < last; ++line) {
    const int y = static_cast<int>(line - first) * m_lineHeight;
    const std::int64_t start = lineStart(line);
    const std::string bytes = lineBytes(line);
    std::string expanded;  // tabs as blanks to the next stop
    std::int64_t column = 0, selColFrom = -1, selColTo = -1, caretColumn = -1;
    for (std::size_t i = 0; i <= bytes.size(); ++i) {
      std::int64_t position = start + static_cast<std::int64_t>(i);
      if (position == selFrom) selColFrom = column;
      if (position == selTo) selColTo = column;
      if (position == m_caret) caretColumn = column;
      if (i == bytes.size()) break;
      std::int64_t next = nextColumn(column, bytes[i]);
      if (bytes[i] == '\t')
        expanded.append(static_cast<std::size_t>(next - column), ' ');
      else
        expanded += bytes[i];
      column = next;
    }
    widest = std::max(widest, column);
    if (selFrom < selTo && selFrom <= start + static_cast<std::int64_t>(bytes.size()) + 2 && selTo > start) {
      std::int64_t from = selFrom <= start ? 0 : (selColFrom < 0 ? column : selColFrom);
      std::int64_t to = selTo > start + static_cast<std::int64_t>(bytes.size()) ? column + 1 : selColTo;
      painter.fillRect(xOffset + static_cast<int>(from) * m_charWidth, y,
                       static_cast<int>(to - from) * m_charWidth, m_lineHeight, selectionBack);
    }
    // Each character stands in its own cell of the grid that the selection and caret use,
    // so a highlight sits exactly on its text whatever the font's fractional advance.
    painter.setPen(palette().color(QPalette::Text));
    const std::int64_t firstColumn = horizontalScrollBar()->value() / m_charWidth;
    const std::int64_t lastColumn =
        std::min<std::int64_t>(static_cast<std::int64_t>(expanded.size()),
                               firstColumn + viewport()->width() / m_charWidth + 2);
    if (firstColumn < lastColumn) {
      const QString shown = fromBytes(expanded.substr(static_cast<std::size_t>(firstColumn),
                                                      static_cast<std::size_t>(lastColumn - firstColumn)));
      for (qsizetype i = 0; i < shown.size(); ++i) {
        if (shown[i] == QChar(' ')) continue;
        painter.drawText(xOffset + static_cast<int>(firstColumn + i) * m_charWidth, y + m_ascent, QString(shown[i]));
      }
    }
    if (caretColumn >= 0 && hasFocus()) {
      int x = xOffset + static_cast<int>(caretColumn) * m_charWidth;
      painter.fillRect(x, y, 2, m_lineHeight, palette().color(QPalette::Text));
    }
  }
  if (widest != m_widest) {
    m_widest = widest;
    updateScrollBars();
  }
}

void EditorView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  placeGutter();
  updateScrollBars();
}

void EditorView::moveCaret(std::int64_t position, bool extend) {
  m_caret = std::clamp<std::int64_t>(position, 0, text().length());
  if (!extend) m_anchor = m_caret;
  text().setSelection(std::min(m_anchor, m_caret), std::abs(m_caret - m_anchor));
  ensureCaretVisible();
  viewport()->update();
}

void EditorView::replaceRange(std::int64_t from, std::int64_t to, const std::string& bytes) {
  text().setSelection(from, to - from);
  text().replaceSelection(bytes);
  m_anchor = m_caret = text().selStart();
  m_wantedColumn = -1;
  m_pane.textChanged();  // the window refreshes every view of the pane
  ensureCaretVisible();
}

void EditorView::undo() {
  if (text().undo()) afterHistoryStep();
}

void EditorView::redo() {
  if (text().redo()) afterHistoryStep();
}

void EditorView::afterHistoryStep() {
  m_anchor = text().selStart();
  m_caret = m_anchor + text().selLength();
  m_wantedColumn = -1;
  m_pane.textChanged();
  ensureCaretVisible();
}

void EditorView::contextMenuEvent(QContextMenuEvent* event) {
  const bool selected = m_anchor != m_caret;
  QMenu menu(this);
  struct Item {
    const char* caption;
    QKeySequence::StandardKey key;
    int keyCode;
    bool enabled;
  };
  const Item items[] = {
      {"&Undo", QKeySequence::Undo, 'Z', text().canUndo()},
      {"&Redo", QKeySequence::Redo, 'Y', text().canRedo()},
      {"Cu&t", QKeySequence::Cut, 'X', selected},
      {"&Copy", QKeySequence::Copy, 'C', selected},
      {"&Paste", QKeySequence::Paste, 'V', !QApplication::clipboard()->text().isEmpty()},
      {"Select &All", QKeySequence::SelectAll, 'A', text().length() > 0},
  };
  for (const Item& item : items) {
    if (item.key == QKeySequence::Cut || item.key == QKeySequence::SelectAll) menu.addSeparator();
    QAction* action = menu.addAction(tr(item.caption));
    action->setShortcut(item.key);
    action->setEnabled(item.enabled);
    connect(action, &QAction::triggered, this, [this, item] {
      const std::int64_t from = std::min(m_anchor, m_caret), to = std::max(m_anchor, m_caret);
      switch (item.key) {
        case QKeySequence::Undo:
          undo();
          break;
        case QKeySequence::Redo:
          redo();
          break;
        case QKeySequence::Cut:
          copySelection();
          replaceRange(from, to, {});
          break;
        case QKeySequence::Copy:
          copySelection();
          break;
        case QKeySequence::Paste:
          replaceRange(from, to, toBytesMultiLine(QApplication::clipboard()->text()));
          break;
        default:
          m_anchor = 0;
          moveCaret(text().length(), true);
          break;
      }
      emit keyDown(item.keyCode, 2);
    });
  }
  menu.exec(event->globalPos());
}

void EditorView::copySelection() {
  if (m_anchor == m_caret) return;
  QApplication::clipboard()->setText(fromBytesMultiLine(text().selectedText()));
}

bool EditorView::moveKey(QKeyEvent* event) {
  const bool extend = (event->modifiers() & Qt::ShiftModifier) != 0;
  const bool ctrl = (event->modifiers() & Qt::ControlModifier) != 0;
  const std::int64_t line = text().lineFromChar(m_caret);
  auto vertical = [&](std::int64_t target) {
    if (m_wantedColumn < 0) m_wantedColumn = columnOf(m_caret);
    std::int64_t column = m_wantedColumn;
    moveCaret(positionAtColumn(std::clamp<std::int64_t>(target, 0, m_lines - 1), column), extend);
    m_wantedColumn = column;
  };
  switch (event->key()) {
    case Qt::Key_Left:
      moveCaret(m_anchor != m_caret && !extend ? std::min(m_anchor, m_caret) : stepLeft(m_caret), extend);
      break;
    case Qt::Key_Right:
      moveCaret(m_anchor != m_caret && !extend ? std::max(m_anchor, m_caret) : stepRight(m_caret), extend);
      break;
    case Qt::Key_Up:
      vertical(line - 1);
      return true;
    case Qt::Key_Down:
      vertical(line + 1);
      return true;
    case Qt::Key_PageUp:
      vertical(line - visibleLines());
      return true;
    case Qt::Key_PageDown:
      vertical(line + visibleLines());
      return true;
    case Qt::Key_Home:
      moveCaret(ctrl ? 0 : lineStart(line), extend);
      break;
    case Qt::Key_End:
      moveCaret(ctrl ? text().length() : lineEnd(line), extend);
      break;
    default:
      return false;
  }
  m_wantedColumn = -1;
  return true;
}

bool EditorView::editKey(QKeyEvent* event) {
  const std::int64_t from = std::min(m_anchor, m_caret), to = std::max(m_anchor, m_caret);
  if (event->matches(QKeySequence::SelectAll)) {
    m_anchor = 0;
    moveCaret(text().length(), true);
  } else if (event->matches(QKeySequence::Copy)) {
    copySelection();
  } else if (event->matches(QKeySequence::Cut)) {
    copySelection();
    if (from < to) replaceRange(from, to, {});
  } else if (event->matches(QKeySequence::Undo)) {
    undo();
  } else if (event->matches(QKeySequence::Redo) ||
             (event->key() == Qt::Key_Y && event->modifiers() == Qt::ControlModifier)) {
    redo();
  } else if (event->matches(QKeySequence::Paste)) {
    replaceRange(from, to, toBytesMultiLine(QApplication::clipboard()->text()));
  } else if (event->key() == Qt::Key_Backspace) {
    replaceRange(from < to ? from : stepLeft(m_caret), to, {});
  } else if (event->key() == Qt::Key_Delete) {
    replaceRange(from, from < to ? to : stepRight(m_caret), {});
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    replaceRange(from, to, "\r\n");
  } else if (event->key() == Qt::Key_Tab) {
    replaceRange(from, to, "\t");
  } else if (!event->text().isEmpty() && event->text().at(0).isPrint() &&
             (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0) {
    replaceRange(from, to, toBytes(event->text()));
  } else {
    return false;
  }
  return true;
}

void EditorView::keyPressEvent(QKeyEvent* event) {
  const int code = editorKeyCode(event->key(), (event->modifiers() & Qt::KeypadModifier) != 0);
  if (code < 112 || code > 127) {  // function keys belong to the editor's handlers
    if (!moveKey(event)) editKey(event);
  }
  int shift = ((event->modifiers() & Qt::ShiftModifier) ? 1 : 0) |
              ((event->modifiers() & Qt::ControlModifier) ? 2 : 0) |
              ((event->modifiers() & Qt::AltModifier) ? 4 : 0);
  event->accept();
  emit keyDown(code, shift);
  // Escape goes on to the window, which closes (through the editor's questions).
  if (event->key() == Qt::Key_Escape) event->ignore();
}

void EditorView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setFocus(Qt::MouseFocusReason);
  m_dragging = true;
  moveCaret(positionAt(event->position().toPoint()), (event->modifiers() & Qt::ShiftModifier) != 0);
  m_wantedColumn = -1;
}

void EditorView::mouseMoveEvent(QMouseEvent* event) {
  if (m_dragging) moveCaret(positionAt(event->position().toPoint()), true);
}

void EditorView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  m_dragging = false;
  emit clicked();
}

void EditorView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void EditorView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

bool EditorView::focusNextPrevChild(bool) { return false; }

int EditorView::editorKeyCode(int qtKey, bool keypad) {
  if (keypad && qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return 96 + (qtKey - Qt::Key_0);
  if (keypad) {
    switch (qtKey) {
      case Qt::Key_Asterisk:
        return 106;
      case Qt::Key_Plus:
        return 107;
      case Qt::Key_Minus:
        return 109;
      case Qt::Key_Period:
        return 110;
      case Qt::Key_Slash:
        return 111;
      default:
        break;
    }
  }
  if (qtKey == Qt::Key_Plus) return 187;  // the main keyboard's plus and minus keys
  if (qtKey == Qt::Key_Minus) return 189;
  return keyCode(qtKey);
}

}  // namespace tolvane::gui
