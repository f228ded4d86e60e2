// Pixels of the pictures the program draws itself (the OBJ workbench's still pictures
// and live view) and the drawing operations on them: clear, a polygon filled with the
// fill colour and outlined with the fore colour, a line, a set pixel. The pixels are
// 0xFFRRGGBB words, so a view shows them as they stand; the software painter here draws
// them without a window, and a front end may put its own painter behind the same calls.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace tolvane::ui {

struct PicturePoint {
  std::int32_t x = 0, y = 0;
};

// A form colour (0xBBGGRR) as a pixel word, and back.
inline std::uint32_t pixelOf(Colour c) {
  return 0xFF000000u | ((c & 0xFFu) << 16) | (c & 0xFF00u) | ((c >> 16) & 0xFFu);
}
inline Colour colourOfPixel(std::uint32_t p) {
  return ((p >> 16) & 0xFFu) | (p & 0xFF00u) | ((p & 0xFFu) << 16);
}

class Raster {
 public:
  Raster(int width, int height, Colour background = kWhite);
  int width() const { return m_width; }
  int height() const { return m_height; }
  std::uint32_t* data() { return m_pixels.data(); }
  const std::uint32_t* data() const { return m_pixels.data(); }
  std::uint32_t pixel(int x, int y) const { return m_pixels[static_cast<std::size_t>(y) * m_width + x]; }
  void setPixel(int x, int y, std::uint32_t value) {
    if (x >= 0 && y >= 0 && x < m_width && y < m_height)
      m_pixels[static_cast<std::size_t>(y) * m_width + x] = value;
  }
  void fill(std::uint32_t value);
  bool operator==(const Raster& other) const {
    return m_width == other.m_width && m_height == other.m_height && m_pixels == other.m_pixels;
  }

 private:
  int m_width, m_height;
  std::vector<std::uint32_t> m_pixels;
};

class PicturePainter {
 public:
  virtual ~PicturePainter() = default;
  virtual void clear(Colour background) = 0;
  // A closed polygon through `count` points: filled with `fill` where it has an area,
  // outlined with `outline`. Two points draw a line, one or none nothing.
  virtual void polygon(const PicturePoint* points, int count, Colour fill, Colour outline) = 0;
  virtual void line(PicturePoint from, PicturePoint to, Colour colour) = 0;
  virtual void setPixel(int x, int y, Colour colour) = 0;
};

// Draws into a raster with integer arithmetic: even-odd scan-line fill at pixel centres
// and Bresenham outlines.
std::unique_ptr<PicturePainter> softwarePainter(Raster& raster);

// A 24-bit BMP file of `raster` stretched (nearest pixel) to width x height; a size of
// 0 or below gives an empty string.
std::string bitmapBytes(const Raster& raster, int width, int height);

}  // namespace tolvane::ui
