// The one place where text crosses between the headless layers and Qt: figure text is
// Windows-1252 bytes, file paths are the system's local bytes, colours are 0xBBGGRR,
// and Qt key codes become the key codes the handlers know (13 Enter, 27 Escape, ...).
#pragma once

#include <QColor>
#include <QString>
#include <filesystem>
#include <string>

#include "ui/controls.h"

namespace tolvane::gui {

// Figure text and captions: every byte is one character of Windows-1252.
QString fromBytes(const std::string& bytes);
// Characters outside Windows-1252 become '?'.
std::string toBytes(const QString& text);

// Text that is only shown (captions, list entries, titles, messages) and may carry a
// file path: bytes that are valid UTF-8 with letters beyond ASCII are a path of the
// system and shown as such; everything else is Windows-1252 as above.
QString fromDisplayBytes(const std::string& bytes);
QString fromDisplayBytesMultiLine(const std::string& bytes);

// Multi-line boxes: CR LF in the model, LF in the widget.
QString fromBytesMultiLine(const std::string& bytes);
std::string toBytesMultiLine(const QString& text);

// File paths as the core spells them (local 8-bit bytes).
QString fromPathText(const std::string& path);
std::string toPathText(const QString& path);
QString fromPath(const std::filesystem::path& path);

QColor toQColor(ui::Colour bgr);
ui::Colour fromQColor(const QColor& colour);

// The key code of a key press as the handlers expect it; 0 for keys they never see.
int keyCode(int qtKey);
// 1 Shift, 2 Ctrl, 4 Alt.
int shiftState(Qt::KeyboardModifiers modifiers);

}  // namespace tolvane::gui
