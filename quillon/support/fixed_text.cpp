// 16.16 numbers as decimal text. Integers only, so that every platform gets the same text.
#include <array>
#include <cstring>

#include "quillon/support/operations.h"

namespace quillon::support {
namespace {

constexpr std::uint32_t kMostDecimals = 9;
constexpr std::uint32_t kHalf = 0x8000;

constexpr std::array<std::uint64_t, 18> kPowersOfTen = [] {
  std::array<std::uint64_t, 18> powers{};
  powers[0] = 1;
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

// A text under construction, at most the sign, 5 digits, a point and the decimals.
struct ShortText {
  std::array<char, 2 + 5 + kMostDecimals> text;
  std::uint32_t length = 0;
  std::uint32_t wholeLength = 0;  // up to the point
};

// Appends `value` with at least `digits` digits.
void PutDigits(ShortText& out, std::uint64_t value, std::uint32_t digits) {
  std::array<char, 20> reversed;
  std::uint32_t count = 0;
  for (; value != 0 || count < digits; value /= 10) {
    reversed[count++] = static_cast<char>('0' + value % 10);
  }
  while (count > 0) out.text[out.length++] = reversed[--count];
}

// Cuts to `size` characters, then takes away trailing zeros and a point that ends the text.
void CutDecimals(ShortText& out, std::uint32_t size) {
  if (out.length > size) out.length = size;
  if (out.length <= out.wholeLength) return;
  while (out.text[out.length - 1] == '0') --out.length;
  if (out.text[out.length - 1] == '.') --out.length;
}

bool IsMinusZero(const ShortText& out) {
  return out.length == 2 && out.text[0] == '-' && out.text[1] == '0';
}

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The whole part, held to just beyond the range.
std::uint64_t ReadWhole(const char*& text, bool& any) {
  std::uint64_t whole = 0;
  for (; IsDigit(*text); ++text) {
    any = true;
    if (whole <= 0x8000) whole = whole * 10 + static_cast<std::uint64_t>(*text - '0');
  }
  return whole;
}

// The decimals in units of 1/65536, rounded. A tie is an odd multiple of 2^-17, which has 17
// decimals, so the digits after the 17th cannot change the outcome. With 17 digits the value is
// digits / 10^17, and 10^17 / 65536 is 2 * 5^17.
std::uint64_t ReadFraction(const char*& text, bool& any) {
  constexpr std::uint64_t kFiveTo17 = 762939453125;
  constexpr std::size_t kDigits = 17;
  std::uint64_t digits = 0;
  std::size_t count = 0;
  for (; IsDigit(*text); ++text) {
    any = true;
    if (count == kDigits) continue;
    digits = digits * 10 + static_cast<std::uint64_t>(*text - '0');
    ++count;
  }
  return (digits * kPowersOfTen[kDigits - count] + kFiveTo17) / (2 * kFiveTo17);
}

}  // namespace

std::uint32_t FixedToText(Fixed value, char* buffer, std::uint32_t capacity,
                          std::uint16_t precision) {
  if (buffer == nullptr || capacity == 0) return 0;
  const std::uint32_t decimals = precision < kMostDecimals ? precision : kMostDecimals;
  const std::uint64_t magnitude =
      static_cast<std::uint64_t>(value < 0 ? -std::int64_t{value} : std::int64_t{value});
  // In units of the last decimal. No overflow: below 2^31 * 10^9.
  const std::uint64_t scaled = (magnitude * kPowersOfTen[decimals] + kHalf) >> 16;
  const std::uint64_t decimalPart = scaled % kPowersOfTen[decimals];

  ShortText out;
  if (value < 0 && scaled != 0) out.text[out.length++] = '-';
  PutDigits(out, scaled / kPowersOfTen[decimals], 1);
  out.wholeLength = out.length;
  if (decimalPart != 0) {
    out.text[out.length++] = '.';
    PutDigits(out, decimalPart, decimals);
  }
  // A whole part that does not fit would read as another number: better no text.
  if (out.wholeLength > capacity - 1) {
    buffer[0] = '\0';
    return 0;
  }
  CutDecimals(out, capacity - 1);
  if (IsMinusZero(out)) {
    out.text[0] = '0';
    out.length = 1;
  }
  std::memcpy(buffer, out.text.data(), out.length);
  buffer[out.length] = '\0';
  return out.length;
}

Fixed TextToFixed(const char* text) {
  if (text == nullptr) return 0;
  while (IsBlank(*text)) ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  bool any = false;
  std::uint64_t magnitude = ReadWhole(text, any) << 16;
  if (*text == '.') {
    ++text;
    magnitude += ReadFraction(text, any);
  }
  if (!any) return 0;
  const std::uint64_t largest = negative ? 0x80000000U : 0x7FFFFFFFU;
  const auto held = static_cast<std::int64_t>(magnitude < largest ? magnitude : largest);
  return static_cast<Fixed>(negative ? -held : held);
}

}  // namespace quillon::support
