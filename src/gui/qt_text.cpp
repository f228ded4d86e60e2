#include "gui/qt_text.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>
#include <array>

namespace tolvane::gui {

namespace {
// 0x80..0x9F of Windows-1252; the five unassigned bytes keep their C1 code points so
// that they come back unchanged.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (std::size_t i = 0; i < kHigh.size(); ++i)
    if (kHigh[i] == c) return static_cast<char>(0x80 + i);
  return '?';
}
}  // namespace

QString fromBytes(const std::string& bytes) {
  QString out(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
  QChar* p = out.data();
  for (unsigned char b : bytes) *p++ = QChar(b >= 0x80 && b < 0xA0 ? kHigh[b - 0x80] : char16_t(b));
  return out;
}

std::string toBytes(const QString& text) {
  std::string out;
  out.reserve(static_cast<std::size_t>(text.size()));
  for (QChar c : text) out.push_back(toByte(c.unicode()));
  return out;
}

QString fromDisplayBytes(const std::string& bytes) {
  if (std::none_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
    return fromBytes(bytes);
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = utf8(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  return utf8.hasError() ? fromBytes(bytes) : text;
}

namespace {
QString toWidgetLines(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QChar('\r'), QChar('\n'));
  return text;
}
}  // namespace

QString fromBytesMultiLine(const std::string& bytes) { return toWidgetLines(fromBytes(bytes)); }

QString fromDisplayBytesMultiLine(const std::string& bytes) { return toWidgetLines(fromDisplayBytes(bytes)); }

std::string toBytesMultiLine(const QString& text) {
  QString copy = text;
  copy.replace(QChar('\n'), QStringLiteral("\r\n"));
  return toBytes(copy);
}

QString fromPathText(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

std::string toPathText(const QString& path) { return QFile::encodeName(path).toStdString(); }

QString fromPath(const std::filesystem::path& path) { return fromPathText(path.string()); }

QColor toQColor(ui::Colour bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

ui::Colour fromQColor(const QColor& colour) {
  return static_cast<ui::Colour>(colour.red()) | static_cast<ui::Colour>(colour.green()) << 8 |
         static_cast<ui::Colour>(colour.blue()) << 16;
}

int keyCode(int qtKey) {
  if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)) return qtKey;
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12) return 112 + (qtKey - Qt::Key_F1);
  switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Escape:
      return 27;
    case Qt::Key_Backspace:
      return 8;
    case Qt::Key_Tab:
      return 9;
    case Qt::Key_Space:
      return 32;
    case Qt::Key_PageUp:
      return 33;
    case Qt::Key_PageDown:
      return 34;
    case Qt::Key_End:
      return 35;
    case Qt::Key_Home:
      return 36;
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    case Qt::Key_Insert:
      return 45;
    case Qt::Key_Delete:
      return 46;
    case Qt::Key_Shift:
      return 16;
    case Qt::Key_Control:
      return 17;
    case Qt::Key_Alt:
      return 18;
    case Qt::Key_Plus:
      return 107;
    case Qt::Key_Minus:
      return 109;
    default:
      return 0;
  }
}

int shiftState(Qt::KeyboardModifiers modifiers) {
  int state = 0;
  if (modifiers & Qt::ShiftModifier) state |= 1;
  if (modifiers & Qt::ControlModifier) state |= 2;
  if (modifiers & Qt::AltModifier) state |= 4;
  return state;
}

}  // namespace tolvane::gui
