// Pictures as PNG files (ISO/IEC 15948).
#pragma once

#include <string>

namespace quillon {

// Three bytes a pixel, red first; rows from the top, `rowBytes` apart.
struct PixelView {
  const char* pixels;
  int width;
  int height;
  int rowBytes;
};

// The bytes of a PNG file. Throws std::runtime_error.
std::string EncodePng(const PixelView& picture);

}  // namespace quillon
