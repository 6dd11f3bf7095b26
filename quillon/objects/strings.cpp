// String objects as they are written (ISO 32000-1, 7.3.4).
#include "quillon/objects/characters.h"
#include "quillon/objects/parser.h"

namespace quillon::objects {
namespace {

std::string DecodeHex(std::string_view digits) {
  std::string bytes;
  bytes.reserve(digits.size() / 2 + 1);
  int high = -1;
  for (const char c : digits) {
    const int value = HexValue(c);
    if (value < 0) continue;
    if (high < 0) {
      high = value;
    } else {
      bytes.push_back(static_cast<char>(high * 16 + value));
      high = -1;
    }
  }
  if (high >= 0) bytes.push_back(static_cast<char>(high * 16));
  return bytes;
}

bool IsOctal(char c) { return c >= '0' && c <= '7'; }

// Reads up to three octal digits from `at` on; leaves `at` at the last one.
char OctalByte(std::string_view text, std::size_t* at) {
  int value = 0;
  std::size_t i = *at;
  for (; i < text.size() && i < *at + 3 && IsOctal(text[i]); ++i) value = value * 8 + text[i] - '0';
  *at = i - 1;
  return static_cast<char>(value);
}

char EscapedByte(char c) {
  switch (c) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    default:
      return c;
  }
}

std::string DecodeLiteral(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    const auto skipLineFeed = [&] {
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    };
    if (c == '\r') {
      skipLineFeed();
      c = '\n';
    } else if (c == '\\' && i + 1 < text.size()) {
      c = text[++i];
      if (c == '\n') continue;
      if (c == '\r') {
        skipLineFeed();
        continue;
      }
      c = IsOctal(c) ? OctalByte(text, &i) : EscapedByte(c);
    }
    bytes.push_back(c);
  }
  return bytes;
}

}  // namespace

std::string DecodeStringText(std::string_view written) {
  if (written.size() < 2) return {};
  const std::string_view inner = written.substr(1, written.size() - 2);
  return written.front() == '<' ? DecodeHex(inner) : DecodeLiteral(inner);
}

}  // namespace quillon::objects
