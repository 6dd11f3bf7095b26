#include "tests/end_to_end/picture.h"

#include <png.h>

#include <algorithm>

namespace quillon::test {
namespace {

bool Contains(const Area& area, int x, int y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

template <typename Wanted>
int CountDifferences(const Picture& a, const Picture& b, Wanted wanted) {
  int count = 0;
  for (int y = 0; y < a.height; ++y) {
    for (int x = 0; x < a.width; ++x) {
      const auto at = static_cast<std::ptrdiff_t>(y * a.width + x) * 3;
      if (wanted(x, y) &&
          !std::equal(a.pixels.begin() + at, a.pixels.begin() + at + 3, b.pixels.begin() + at)) {
        ++count;
      }
    }
  }
  return count;
}

}  // namespace

Picture DecodePng(const std::string& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  Picture picture;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) return picture;
  image.format = PNG_FORMAT_RGB;
  picture.pixels.resize(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) return {};
  picture.width = static_cast<int>(image.width);
  picture.height = static_cast<int>(image.height);
  return picture;
}

int DifferencesInside(const Picture& a, const Picture& b, const Area& area) {
  return CountDifferences(a, b, [&](int x, int y) { return Contains(area, x, y); });
}

int DifferencesOutside(const Picture& a, const Picture& b, const std::vector<Area>& areas) {
  return CountDifferences(a, b, [&](int x, int y) {
    return std::none_of(areas.begin(), areas.end(),
                        [&](const Area& area) { return Contains(area, x, y); });
  });
}

}  // namespace quillon::test
