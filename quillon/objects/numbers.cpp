#include "quillon/objects/numbers.h"

#include <array>
#include <charconv>
#include <limits>

namespace quillon::objects {
namespace {

constexpr std::int64_t kMaxWord = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kMinWord = std::numeric_limits<std::int32_t>::min();
constexpr int kMaxDecimals = 9;
constexpr std::array<std::int64_t, kMaxDecimals + 1> kPowersOfTen = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

// Two texts of up to four decimals never mean the same Fixed, so a text without superfluous digits
// is the shortest one of its value.
constexpr int kUniqueDecimals = 4;

// Far above every value that matters and far from overflow when multiplied by 65536.
constexpr std::int64_t kIntegerCeiling = std::int64_t{1} << 40;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::int32_t Held(std::int64_t value) {
  if (value > kMaxWord) return static_cast<std::int32_t>(kMaxWord);
  if (value < kMinWord) return static_cast<std::int32_t>(kMinWord);
  return static_cast<std::int32_t>(value);
}

struct Digits {
  std::int64_t whole = 0;
  std::int64_t fraction = 0;
  int wholeDigits = 0;
  int decimals = 0;  // of `fraction`, at most kMaxDecimals
  int decimalsSeen = 0;
  bool negative = false;
  bool point = false;
  int signs = 0;
  bool readWhole = false;
};

Digits ReadDigits(std::string_view text) {
  Digits digits;
  std::size_t i = 0;
  for (; i < text.size() && (text[i] == '+' || text[i] == '-'); ++i) {
    digits.negative = text[i] == '-';
    ++digits.signs;
  }
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    if (digits.whole < kIntegerCeiling) digits.whole = digits.whole * 10 + (text[i] - '0');
    ++digits.wholeDigits;
  }
  if (i < text.size() && text[i] == '.') {
    digits.point = true;
    for (++i; i < text.size() && IsDigit(text[i]); ++i) {
      ++digits.decimalsSeen;
      if (digits.decimals == kMaxDecimals) continue;
      digits.fraction = digits.fraction * 10 + (text[i] - '0');
      ++digits.decimals;
    }
  }
  digits.readWhole = i == text.size();
  return digits;
}

// Longer numbers overflow what other programs read them into.
constexpr int kMostDigits = 18;

bool IsWellFormed(const Digits& digits) {
  return digits.readWhole && digits.signs <= 1 && digits.wholeDigits <= kMostDigits &&
         digits.wholeDigits + digits.decimalsSeen > 0;
}

bool IsCanonical(std::string_view text, const Digits& digits, std::int64_t exact,
                 std::int32_t value) {
  if (!IsWellFormed(digits) || text[0] == '+' || digits.wholeDigits == 0 || exact != value) {
    return false;
  }
  const std::size_t first = digits.negative ? 1 : 0;
  if (digits.wholeDigits > 1 && text[first] == '0') return false;
  if (digits.negative && digits.whole == 0 && digits.fraction == 0) return false;
  if (!digits.point) return true;
  return digits.decimalsSeen >= 1 && digits.decimalsSeen <= kUniqueDecimals && text.back() != '0';
}

}  // namespace

ParsedNumber ParseNumber(std::string_view text) {
  const Digits digits = ReadDigits(text);
  std::int64_t exact = digits.whole;
  if (digits.point) {
    const std::int64_t scale = kPowersOfTen[static_cast<std::size_t>(digits.decimals)];
    exact = digits.whole * kFixedOne + (digits.fraction * kFixedOne + scale / 2) / scale;
  }
  if (digits.negative) exact = -exact;
  const std::int32_t value = Held(exact);
  return {digits.point, IsCanonical(text, digits, exact, value), IsWellFormed(digits), value};
}

void AppendInteger(std::string* out, std::int64_t value) {
  std::array<char, 24> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  out->append(buffer.data(), end);
}

void AppendFixed(std::string* out, Fixed value) {
  std::int64_t magnitude = value;
  if (magnitude < 0) {
    out->push_back('-');
    magnitude = -magnitude;
  }
  int decimals = 0;
  std::int64_t scaled = 0;
  for (;; ++decimals) {
    const std::int64_t scale = kPowersOfTen[static_cast<std::size_t>(decimals)];
    scaled = (magnitude * scale + kFixedOne / 2) / kFixedOne;
    if ((scaled * kFixedOne + scale / 2) / scale == magnitude) break;
  }
  const std::int64_t scale = kPowersOfTen[static_cast<std::size_t>(decimals)];
  AppendInteger(out, scaled / scale);
  if (decimals == 0) return;
  out->push_back('.');
  std::array<char, kMaxDecimals> fraction;
  std::int64_t rest = scaled % scale;
  for (int i = decimals - 1; i >= 0; --i) {
    fraction[static_cast<std::size_t>(i)] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  }
  out->append(fraction.data(), static_cast<std::size_t>(decimals));
}

}  // namespace quillon::objects
