#include "plugin/host/settings_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "plugin/host/host.h"

namespace quillform {

namespace {

constexpr std::string_view kItemLetters = "bdlfxs";
constexpr std::string_view kSeparators = " ,";
constexpr int kDecimalPlaces = 4;

// The next of the caller's targets or values, which must be of the letter's type.
template <typename Type, typename Iterator>
const Type& Take(Iterator& next, Iterator end) {
  if (next == end || !std::holds_alternative<Type>(*next)) Raise(quillon::kErrorBadParameter);
  return std::get<Type>(*next++);
}

std::string_view SkipSeparators(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(kSeparators), text.size()));
}

std::string_view TakeItem(std::string_view& rest) {
  const std::string_view item = rest.substr(0, rest.find_first_of(kSeparators));
  rest.remove_prefix(item.size());
  return item;
}

std::string_view WithoutPlus(std::string_view item) {
  if (item.starts_with('+')) item.remove_prefix(1);
  return item;
}

// The digits that the item begins with; what does not fit becomes the nearest that does.
std::int32_t IntegerOf(std::string_view item) {
  const std::string_view digits = WithoutPlus(item);
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc::result_out_of_range) return number;
  return digits.starts_with('-') ? std::numeric_limits<std::int32_t>::min()
                                 : std::numeric_limits<std::int32_t>::max();
}

// Not by the runtime's conversion, which expects the decimal sign of the user's country.
double DecimalOf(std::string_view item) {
  const std::string_view digits = WithoutPlus(item);
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return std::isfinite(number) ? number : 0;
}

// To the nearest, as all 16.16 numbers in settings; beyond the range, the end of it.
Fixed FixedOf(double number) {
  constexpr double kLeast = std::numeric_limits<Fixed>::min();
  constexpr double kMost = std::numeric_limits<Fixed>::max();
  return static_cast<Fixed>(std::clamp(number * kFixedOne + 0.5, kLeast, kMost));
}

float FloatOf(double number) {
  constexpr double kMost = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(number, -kMost, kMost));
}

void CopyText(std::string_view text, const SettingText& target) {
  if (target.size == 0) return;
  const std::size_t length = text.copy(target.buffer, target.size - 1u);
  target.buffer[length] = '\0';
}

std::string DecimalText(double number) {
  char text[128];
  const auto [end, error] =
      std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, kDecimalPlaces);
  return {text, end};
}

std::string ItemText(char letter, SettingValues::iterator& next, SettingValues::iterator end) {
  switch (letter) {
    case 'b':
      return Take<std::uint16_t>(next, end) != 0 ? "Y" : "N";
    case 'd':
      return std::to_string(Take<std::int16_t>(next, end));
    case 'l':
      return std::to_string(Take<std::int32_t>(next, end));
    case 'f':
      return DecimalText(Take<float>(next, end));
    case 'x':
      return DecimalText(static_cast<double>(Take<std::int32_t>(next, end)) / kFixedOne);
    case 's':
      return Take<const char*>(next, end);
    default:
      return {};
  }
}

}  // namespace

void ReadSettingText(std::string_view text, const char* format, SettingTargets targets) {
  auto next = targets.begin();
  const auto end = targets.end();
  std::string_view rest = text;
  for (const char* letter = format; *letter != '\0'; ++letter) {
    if (kItemLetters.find(*letter) == std::string_view::npos) continue;
    // A text that comes first begins where the setting does, separators or not.
    const bool first = rest.size() == text.size();
    if (*letter != 's' || !first) rest = SkipSeparators(rest);
    switch (*letter) {
      case 'b':
        *Take<std::uint16_t*>(next, end) = TakeItem(rest).starts_with('Y') ? 1 : 0;
        break;
      case 'd':
        *Take<std::int16_t*>(next, end) = static_cast<std::int16_t>(IntegerOf(TakeItem(rest)));
        break;
      case 'l':
        *Take<std::int32_t*>(next, end) = IntegerOf(TakeItem(rest));
        break;
      case 'f':
        *Take<float*>(next, end) = FloatOf(DecimalOf(TakeItem(rest)));
        break;
      case 'x':
        *Take<std::int32_t*>(next, end) = FixedOf(DecimalOf(TakeItem(rest)));
        break;
      default:
        CopyText(rest, Take<SettingText>(next, end));
        return;
    }
  }
}

std::string MakeSettingText(const char* format, SettingValues values) {
  auto next = values.begin();
  std::string text;
  for (const char* letter = format; *letter != '\0'; ++letter) {
    if (letter != format) text.push_back(' ');
    text += ItemText(*letter, next, values.end());
  }
  return text;
}

}  // namespace quillform
