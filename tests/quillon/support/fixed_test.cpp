#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "quillon/support/operations.h"

namespace quillon::support {
namespace {

constexpr Fixed kLargest = std::numeric_limits<Fixed>::max();
constexpr Fixed kSmallest = std::numeric_limits<Fixed>::min();

// The quotient to nearest, halves away from zero, held to the range: another way than the code's.
Fixed Rounded(std::int64_t numerator, std::int64_t denominator) {
  const long double quotient =
      static_cast<long double>(numerator) / static_cast<long double>(denominator);
  return static_cast<Fixed>(std::clamp<long double>(std::round(quotient), kSmallest, kLargest));
}

// The corners, the neighbourhood of every power of two, and random values of every size.
std::vector<Fixed> Values() {
  std::vector<Fixed> values{0, kLargest, kSmallest, kLargest - 1, kSmallest + 1};
  std::mt19937 random(20240607);
  for (int bit = 0; bit < 31; ++bit) {
    const std::int64_t power = std::int64_t{1} << bit;
    for (const std::int64_t value : {power - 1, power, power + 1, power + power / 2}) {
      if (value <= kLargest) {
        values.push_back(static_cast<Fixed>(value));
        values.push_back(static_cast<Fixed>(-value));
      }
    }
    for (int i = 0; i < 6; ++i) {
      values.push_back(static_cast<Fixed>(static_cast<std::int32_t>(random()) >> (31 - bit)));
    }
  }
  return values;
}

std::string Text(Fixed value, std::uint16_t precision, std::uint32_t capacity = 40) {
  std::vector<char> buffer(capacity, '#');
  const std::uint32_t length = FixedToText(value, buffer.data(), capacity, precision);
  EXPECT_EQ(buffer[length], '\0');
  return {buffer.data(), length};
}

TEST(FixedNumbers, ProductsAndQuotientsAreRoundedExactlyAndHeldToTheRange) {
  const std::vector<Fixed> values = Values();
  for (const Fixed a : values) {
    for (const Fixed b : values) {
      ASSERT_EQ(FixedMul(a, b), Rounded(std::int64_t{a} * b, 65536)) << a << " * " << b;
      if (b == 0) continue;
      ASSERT_EQ(FixedDiv(a, b), Rounded(std::int64_t{a} * 65536, b)) << a << " / " << b;
    }
  }
  EXPECT_EQ(FixedDiv(1, 0), kLargest);
  EXPECT_EQ(FixedDiv(-1, 0), kSmallest);
}

TEST(FixedText, TextsAreShortestAndRoundedAtThePrecision) {
  EXPECT_EQ(Text(-kFixedOne / 2, 4), "-0.5");
  EXPECT_EQ(Text(-kFixedOne / 4, 1), "-0.3");
  EXPECT_EQ(Text(kFixedOne / 2, 0), "1");
  EXPECT_EQ(Text(-1, 4), "0");
  EXPECT_EQ(Text(1, 9), "0.000015259");
  EXPECT_EQ(Text(0x1FFFF, 3), "2");
  EXPECT_EQ(Text(6554, 4), "0.1");
  EXPECT_EQ(Text(kSmallest, 9), "-32768");
  EXPECT_EQ(Text(kLargest, 200), "32767.999984741");
}

TEST(FixedText, DecimalsThatDoNotFitAreDroppedButNeverDigitsBeforeThePoint) {
  const Fixed value = 12 * kFixedOne + kFixedOne / 32;  // 12.03125
  EXPECT_EQ(Text(value, 5, 9), "12.03125");
  EXPECT_EQ(Text(value, 5, 8), "12.0312");
  EXPECT_EQ(Text(value, 5, 4), "12");
  EXPECT_EQ(Text(value, 5, 3), "12");
  EXPECT_EQ(Text(value, 5, 2), "");
  EXPECT_EQ(Text(-kFixedOne / 32, 5, 5), "0");
  EXPECT_EQ(FixedToText(value, nullptr, 0, 5), 0U);
}

TEST(FixedText, FiveDecimalsAreEnoughToComeBackToTheSameValue) {
  for (std::int64_t value = kSmallest; value <= kLargest; value += 4099) {
    const Fixed fixed = static_cast<Fixed>(value);
    ASSERT_EQ(TextToFixed(Text(fixed, 5).c_str()), fixed) << Text(fixed, 5);
  }
}

TEST(FixedText, NumbersAreReadUpToTheirEnd) {
  EXPECT_EQ(TextToFixed(" \t\r\n+12.5pt"), 12 * kFixedOne + kFixedOne / 2);
  EXPECT_EQ(TextToFixed("-.25"), -kFixedOne / 4);
  EXPECT_EQ(TextToFixed("7."), 7 * kFixedOne);
  EXPECT_EQ(TextToFixed("0001.50.5"), kFixedOne + kFixedOne / 2);
  EXPECT_EQ(TextToFixed("99999999999999999999999"), kLargest);
  EXPECT_EQ(TextToFixed("-99999999999999999999999"), kSmallest);
  EXPECT_EQ(TextToFixed("32767.9999999"), kLargest);
  for (const char* none : {"", ".", "-", "+.", "--1", "x1", " - 1"}) {
    EXPECT_EQ(TextToFixed(none), 0) << none;
  }
  EXPECT_EQ(TextToFixed(nullptr), 0);
}

TEST(FixedText, DecimalsAreRoundedExactlyHoweverManyThereAre) {
  // 0.5/65536 has 17 decimals: one digit less in the last place, or anything beyond it, decides.
  EXPECT_EQ(TextToFixed("0.00000762939453125"), 1);
  EXPECT_EQ(TextToFixed("-0.00000762939453125"), -1);
  EXPECT_EQ(TextToFixed("0.00000762939453124"), 0);
  EXPECT_EQ(TextToFixed("0.0000076293945312499999999999999"), 0);
  EXPECT_EQ(TextToFixed("0.9999999999999999999999999999999"), kFixedOne);
}

}  // namespace
}  // namespace quillon::support
