// A picture box that the program draws in: its pixels, its fill colour, and the painter
// it draws with, which the Services give (a front end may paint with its own engine
// into the same pixels). The form owns the pixels, so the script runner can compare
// them with a picture file and a view only has to show them.
#pragma once

#include <memory>
#include <string>

#include "ui/controls.h"
#include "ui/raster.h"

namespace tolvane::ui {

class Services;

class DrawnPicture : public Image {
 public:
  DrawnPicture(Form* form, std::string name, int width, int height);

  int width() const { return m_raster.width(); }
  int height() const { return m_raster.height(); }
  const Raster& raster() const { return m_raster; }
  Raster& raster() { return m_raster; }

  Colour fillColor() const { return m_fill; }
  void setFillColor(Colour colour) { m_fill = colour; }

  // The picture's painter, made by the Services on first use.
  PicturePainter& painter(Services& services);
  void Cls();
  void polygon(Services& services, const PicturePoint* points, int count);
  void setPixel(Services& services, int x, int y, Colour colour);
  // Tells the view that the pixels changed.
  void refresh() { changed(); }

 private:
  Raster m_raster;
  Colour m_fill = kBlack;
  std::unique_ptr<PicturePainter> m_painter;
};

}  // namespace tolvane::ui
