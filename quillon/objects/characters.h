// The character classes of ISO 32000-1, 7.2.2.
#pragma once

#include <array>

namespace quillon::objects {

enum class CharClass : unsigned char { kRegular, kSpace, kDelimiter };

inline constexpr std::array<CharClass, 256> kCharClasses = [] {
  std::array<CharClass, 256> classes{};
  for (const unsigned char c : {'\0', '\t', '\n', '\f', '\r', ' '}) classes[c] = CharClass::kSpace;
  for (const unsigned char c : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) {
    classes[c] = CharClass::kDelimiter;
  }
  return classes;
}();

inline CharClass ClassOf(char c) { return kCharClasses[static_cast<unsigned char>(c)]; }
inline bool IsSpace(char c) { return ClassOf(c) == CharClass::kSpace; }
inline bool IsRegular(char c) { return ClassOf(c) == CharClass::kRegular; }
inline bool IsDecimalDigit(char c) { return c >= '0' && c <= '9'; }

// The value of a hexadecimal digit, -1 for other characters.
inline int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace quillon::objects
