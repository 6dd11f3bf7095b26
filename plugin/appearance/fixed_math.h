// Sums of Fixed values that cannot leave the range of Fixed: rectangles and widths come from files.
// Products and quotients are the host's (Support.FixedMul, Support.FixedDiv).
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "plugin/host/host.h"

namespace quillform {

inline constexpr Fixed kFixedTwo = 2 * kFixedOne;

inline Fixed HoldFixed(std::int64_t value) {
  return static_cast<Fixed>(std::clamp<std::int64_t>(value, std::numeric_limits<Fixed>::min(),
                                                     std::numeric_limits<Fixed>::max()));
}

inline Fixed FixedAdd(Fixed a, Fixed b) { return HoldFixed(std::int64_t{a} + b); }
inline Fixed FixedSub(Fixed a, Fixed b) { return HoldFixed(std::int64_t{a} - b); }
inline Fixed FixedOfWhole(std::int32_t whole) { return HoldFixed(std::int64_t{whole} * kFixedOne); }
inline Fixed FixedHalf(Fixed value) { return Support->FixedDiv(value, kFixedTwo); }

inline bool IsWhole(Fixed value) { return value % kFixedOne == 0; }
inline std::int32_t WholePart(Fixed value) { return value / kFixedOne; }

// value x part / whole in one step: a quotient rounded on the way would leave whole results by a
// little. `whole` is above 0.
inline Fixed FixedScale(Fixed value, Fixed part, Fixed whole) {
  const std::int64_t product = std::int64_t{value} * part;
  return HoldFixed((product < 0 ? product - whole / 2 : product + whole / 2) / whole);
}

// The distance between two edges, whichever is the greater.
inline Fixed FixedDistance(Fixed a, Fixed b) { return a > b ? FixedSub(a, b) : FixedSub(b, a); }

}  // namespace quillform
