// 16.16 arithmetic. Integers only, so that every platform gets the same bits.
#include <algorithm>
#include <limits>

#include "quillon/support/operations.h"

namespace quillon::support {
namespace {

constexpr Fixed kLargest = std::numeric_limits<Fixed>::max();
constexpr Fixed kSmallest = std::numeric_limits<Fixed>::min();

Fixed HoldToRange(std::int64_t value) {
  return static_cast<Fixed>(std::clamp<std::int64_t>(value, kSmallest, kLargest));
}

}  // namespace

Fixed FixedMul(Fixed a, Fixed b) {
  const std::int64_t product = std::int64_t{a} * b;
  // The shift rounds down; half a unit, less one for negative products, makes that halves away from
  // zero.
  return HoldToRange((product + 0x8000 + (product >> 63)) >> 16);
}

Fixed FixedDiv(Fixed a, Fixed b) {
  if (b == 0) return a == 0 ? 0 : (a < 0 ? kSmallest : kLargest);
  const std::int64_t numerator = std::int64_t{a} * kFixedOne;
  const std::int64_t half = (b < 0 ? -std::int64_t{b} : std::int64_t{b}) / 2;
  return HoldToRange((numerator < 0 ? numerator - half : numerator + half) / b);
}

}  // namespace quillon::support
