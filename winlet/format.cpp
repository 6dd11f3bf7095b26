#include "winlet/format.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kMostCharacters = 1023;

struct Conversion {
  bool left = false;
  bool prefixed = false;
  bool zeros = false;
  std::size_t width = 0;
  std::size_t precision = std::string_view::npos;
  char letter = '\0';
};

bool TakeOne(LPCSTR& at, char wanted) {
  if (*at != wanted) return false;
  ++at;
  return true;
}

// A number is as large as makes sense, whatever its digits say.
std::size_t TakeNumber(LPCSTR& at) {
  std::size_t number = 0;
  for (; *at >= '0' && *at <= '9'; ++at) {
    number = std::min(number * 10 + static_cast<std::size_t>(*at - '0'), kMostCharacters);
  }
  return number;
}

// `at` stands behind the percent sign, and behind the letter afterwards.
Conversion TakeConversion(LPCSTR& at) {
  Conversion conversion;
  conversion.left = TakeOne(at, '-');
  conversion.prefixed = TakeOne(at, '#');
  conversion.zeros = TakeOne(at, '0');
  conversion.width = TakeNumber(at);
  if (TakeOne(at, '.')) conversion.precision = TakeNumber(at);
  if (*at == 'l' || *at == 'h' || *at == 'w') ++at;
  conversion.letter = *at;
  if (*at != '\0') ++at;
  return conversion;
}

template <typename Number>
std::string Digits(Number number, int base) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, number, base).ptr};
}

std::string Padded(const Conversion& conversion, std::string digits, std::string_view sign) {
  const std::size_t precision = conversion.precision;
  if (precision != std::string_view::npos && digits.size() < precision) {
    digits.insert(0, precision - digits.size(), '0');
  }
  const std::size_t length = digits.size() + sign.size();
  const bool fill = conversion.zeros && !conversion.left && length < conversion.width;
  if (fill) digits.insert(0, conversion.width - length, '0');
  return std::string(sign) + digits;
}

std::string SignedText(const Conversion& conversion, int number) {
  std::string digits = Digits(number, 10);
  const bool negative = number < 0;
  if (negative) digits.erase(0, 1);
  return Padded(conversion, digits, negative ? "-" : "");
}

std::string HexText(const Conversion& conversion, unsigned number) {
  std::string digits = Digits(number, 16);
  if (conversion.letter == 'X') {
    for (char& digit : digits) {
      if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
    }
  }
  const std::string_view sign = conversion.letter == 'X' ? "0X" : "0x";
  return Padded(conversion, digits, conversion.prefixed ? sign : std::string_view());
}

// A text that is cut to the precision need not end with a NUL.
std::string PlainText(const Conversion& conversion, const char* text) {
  if (text == nullptr) return "(null)";
  return {text, strnlen(text, std::min(conversion.precision, kMostCharacters))};
}

// A list that can be handed on and read further.
struct Arguments {
  explicit Arguments(va_list given) { va_copy(list, given); }
  ~Arguments() { va_end(list); }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  va_list list;
};

std::string Converted(const Conversion& conversion, Arguments& arguments) {
  switch (conversion.letter) {
    case 'd':
    case 'i':
      return SignedText(conversion, va_arg(arguments.list, int));
    case 'u':
      return Padded(conversion, Digits(va_arg(arguments.list, unsigned), 10), "");
    case 'x':
    case 'X':
      return HexText(conversion, va_arg(arguments.list, unsigned));
    case 'c':
      return {static_cast<char>(va_arg(arguments.list, int))};
    case 's':
      return PlainText(conversion, va_arg(arguments.list, const char*));
    case '\0':
      return {};
    default:
      return {conversion.letter};
  }
}

}  // namespace

int wvsprintfA(LPSTR buffer, LPCSTR format, va_list given) {
  Arguments arguments(given);
  std::string result;
  for (LPCSTR at = format; *at != '\0' && result.size() < kMostCharacters;) {
    if (*at != '%') {
      result.push_back(*at++);
      continue;
    }
    const Conversion conversion = TakeConversion(++at);
    const std::string text = Converted(conversion, arguments);
    const std::string blanks(conversion.width - std::min(text.size(), conversion.width), ' ');
    result += conversion.left ? text + blanks : blanks + text;
  }
  const std::size_t length = std::min(result.size(), kMostCharacters);
  std::memcpy(buffer, result.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}
