// PNG pictures, for tests that look at what was drawn.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::test {

struct Picture {
  int width = 0;  // 0 when the bytes are no PNG file
  int height = 0;
  std::vector<std::uint8_t> pixels;  // red, green, blue; rows from the top
};

struct Area {
  int left;
  int top;
  int right;
  int bottom;
};

Picture DecodePng(const std::string& bytes);

// How many pixels differ inside the area, and outside of all areas given.
int DifferencesInside(const Picture& a, const Picture& b, const Area& area);
int DifferencesOutside(const Picture& a, const Picture& b, const std::vector<Area>& areas);

}  // namespace quillon::test
