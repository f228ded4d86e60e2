// The program's pictures, drawn with QPainter so that no image files are needed: the
// icons of the tool pictures, the splash picture and the closing tile.
#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QString>
#include <string>

namespace tolvane::gui {

// The icon of a picture control by its name; an empty pixmap for a plain swatch.
QPixmap toolIcon(const std::string& controlName, int size);
// A short tip for a tool picture, shown when the form gives none.
QString defaultToolTip(const std::string& controlName);
QImage splashImage(int width, int height);
QImage tileImage();
// The program's window icon.
QIcon appIcon();

}  // namespace tolvane::gui
