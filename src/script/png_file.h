// Picture files of the runner's picture checks: a raster read from or written to a PNG
// file, through libpng's simple interface. Pixels are compared as 0xFFRRGGBB words.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "ui/raster.h"

namespace tolvane::script {

// The picture in a PNG file, or nothing with `error` telling why.
std::optional<ui::Raster> readPng(const std::filesystem::path& file, std::string& error);
// Writes a raster as a PNG file; false with `error` when it cannot.
bool writePng(const std::filesystem::path& file, const ui::Raster& raster, std::string& error);

// Empty when the two pictures are equal pixel for pixel, else where they first differ.
std::string pictureDifference(const ui::Raster& actual, const ui::Raster& expected);

}  // namespace tolvane::script
