#include "winlet/code_page.h"

#include <algorithm>
#include <array>

namespace winlet {

namespace {

// Bytes 0x80 to 0x9F; all others are their own code points.
constexpr std::array<char16_t, 32> kMiddle = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ToByte(char16_t unit) {
  const auto middle = std::find(kMiddle.begin(), kMiddle.end(), unit);
  if (middle != kMiddle.end()) return static_cast<char>(0x80 + (middle - kMiddle.begin()));
  return unit <= 0xFF && (unit < 0x80 || unit > 0x9F) ? static_cast<char>(unit) : '?';
}

}  // namespace

std::string ToWindows1252(const std::u16string& text) {
  std::string bytes(text.size(), '?');
  std::transform(text.begin(), text.end(), bytes.begin(), ToByte);
  return bytes;
}

char16_t FromWindows1252(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x80 && value <= 0x9F ? kMiddle[value - 0x80u] : char16_t{value};
}

}  // namespace winlet
