#include "ui/drawn_picture.h"

#include "ui/services.h"

namespace tolvane::ui {

DrawnPicture::DrawnPicture(Form* form, std::string name, int width, int height)
    : Image(form, std::move(name)), m_raster(width, height) {}

PicturePainter& DrawnPicture::painter(Services& services) {
  if (!m_painter) m_painter = services.painter(m_raster);
  return *m_painter;
}

void DrawnPicture::Cls() { m_raster.fill(pixelOf(backColor())); }

void DrawnPicture::polygon(Services& services, const PicturePoint* points, int count) {
  painter(services).polygon(points, count, m_fill, foreColor());
}

void DrawnPicture::setPixel(Services& services, int x, int y, Colour colour) {
  painter(services).setPixel(x, y, colour);
}

}  // namespace tolvane::ui
