#include "script/png_file.h"

#include <png.h>

#include <cstdio>
#include <vector>

namespace tolvane::script {

std::optional<ui::Raster> readPng(const std::filesystem::path& file, std::string& error) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, file.c_str())) {
    error = image.message;
    return std::nullopt;
  }
  image.format = PNG_FORMAT_BGRA;
  ui::Raster raster(static_cast<int>(image.width), static_cast<int>(image.height));
  if (!png_image_finish_read(&image, nullptr, raster.data(), 0, nullptr)) {
    error = image.message;
    png_image_free(&image);
    return std::nullopt;
  }
  return raster;
}

bool writePng(const std::filesystem::path& file, const ui::Raster& raster, std::string& error) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(raster.width());
  image.height = static_cast<png_uint_32>(raster.height());
  image.format = PNG_FORMAT_BGRA;
  if (!png_image_write_to_file(&image, file.c_str(), 0, raster.data(), 0, nullptr)) {
    error = image.message;
    return false;
  }
  return true;
}

std::string pictureDifference(const ui::Raster& actual, const ui::Raster& expected) {
  if (actual.width() != expected.width() || actual.height() != expected.height())
    return "the picture is " + std::to_string(actual.width()) + "x" + std::to_string(actual.height()) +
           ", the file " + std::to_string(expected.width()) + "x" + std::to_string(expected.height());
  for (int y = 0; y < actual.height(); ++y)
    for (int x = 0; x < actual.width(); ++x) {
      std::uint32_t a = actual.pixel(x, y) & 0xFFFFFFu, e = expected.pixel(x, y) & 0xFFFFFFu;
      if (a == e) continue;
      char buf[96];
      std::snprintf(buf, sizeof buf, "pixel %d,%d is %06X, expected %06X (red, green, blue)", x, y, a, e);
      return buf;
    }
  return {};
}

}  // namespace tolvane::script
