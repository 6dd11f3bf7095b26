#include "quillon/render/png_file.h"

#include <png.h>

#include <stdexcept>

namespace quillon {

std::string EncodePng(const PixelView& picture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.width);
  image.height = static_cast<png_uint_32>(picture.height);
  image.format = PNG_FORMAT_RGB;
  std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
  png_alloc_size_t length = bytes.size();
  const int written = png_image_write_to_memory(&image, bytes.data(), &length, 0, picture.pixels,
                                                picture.rowBytes, nullptr);
  if (written == 0) {
    throw std::runtime_error(std::string("the picture cannot be encoded: ") + image.message);
  }
  bytes.resize(length);
  return bytes;
}

}  // namespace quillon
