// ASCIIHexDecode, ASCII85Decode and RunLengthDecode (ISO 32000-1, 7.4.2, 7.4.3, 7.4.5).
#include <cstdint>

#include "quillon/core/failure.h"
#include "quillon/objects/characters.h"
#include "quillon/objects/filters.h"

namespace quillon::objects {
namespace {

constexpr std::size_t kLineLength = 76;

// Writes the first `bytes` bytes of a group of five base-85 digits.
void AppendGroup(std::string* out, std::uint64_t group, int bytes) {
  if (group > 0xFFFFFFFFu) FailDecoding("Base-85 data are damaged");
  for (int i = 0; i < bytes; ++i) out->push_back(static_cast<char>(group >> (24 - 8 * i) & 0xFF));
}

void BreakLine(std::string* out, std::size_t* lineStart) {
  if (out->size() - *lineStart < kLineLength) return;
  out->push_back('\n');
  *lineStart = out->size();
}

}  // namespace

void FailDecoding(const std::string& what) { Fail(kErrorBadStream, what + "."); }

void CheckDecodedSize(std::size_t size, std::size_t limit) {
  if (size > limit) FailDecoding("A stream is larger than this program can take");
}

std::string DecodeAsciiHex(std::string_view data) {
  std::string out;
  out.reserve(data.size() / 2);
  int high = -1;
  for (const char c : data) {
    if (c == '>') break;
    if (IsSpace(c)) continue;
    const int value = HexValue(c);
    if (value < 0) FailDecoding("Hexadecimal data are damaged");
    if (high < 0) {
      high = value;
    } else {
      out.push_back(static_cast<char>(high * 16 + value));
      high = -1;
    }
  }
  if (high >= 0) out.push_back(static_cast<char>(high * 16));
  return out;
}

std::string DecodeAscii85(std::string_view data) {
  std::string out;
  std::uint64_t group = 0;
  int digits = 0;
  for (const char c : data) {
    if (c == '~') break;
    if (IsSpace(c)) continue;
    CheckDecodedSize(out.size());
    if (c == 'z' && digits == 0) {
      out.append(4, '\0');
      continue;
    }
    if (c < '!' || c > 'u') FailDecoding("Base-85 data are damaged");
    group = group * 85 + static_cast<std::uint64_t>(c - '!');
    if (++digits < 5) continue;
    AppendGroup(&out, group, 4);
    group = 0;
    digits = 0;
  }
  if (digits == 1) FailDecoding("Base-85 data are damaged");
  if (digits > 1) {
    for (int i = digits; i < 5; ++i) group = group * 85 + 84;
    AppendGroup(&out, group, digits - 1);
  }
  return out;
}

std::string DecodeRunLength(std::string_view data) {
  constexpr unsigned kEndOfData = 128;
  std::string out;
  for (std::size_t i = 0; i < data.size();) {
    const unsigned length = static_cast<unsigned char>(data[i++]);
    if (length == kEndOfData || i == data.size()) break;
    CheckDecodedSize(out.size());
    if (length < kEndOfData) {
      out.append(data.substr(i, length + 1));
      i += length + 1;
    } else {
      out.append(257 - length, data[i++]);
    }
  }
  return out;
}

std::string EncodeAsciiHex(std::string_view data) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string out;
  std::size_t lineStart = 0;
  for (const char c : data) {
    const unsigned byte = static_cast<unsigned char>(c);
    out.push_back(kDigits[byte >> 4]);
    out.push_back(kDigits[byte & 15]);
    BreakLine(&out, &lineStart);
  }
  out.push_back('>');
  return out;
}

std::string EncodeAscii85(std::string_view data) {
  std::string out;
  std::size_t lineStart = 0;
  for (std::size_t i = 0; i < data.size(); i += 4) {
    const std::size_t bytes = data.size() - i < 4 ? data.size() - i : 4;
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 4; ++j) {
      group = group << 8 | (j < bytes ? static_cast<unsigned char>(data[i + j]) : 0u);
    }
    if (group == 0 && bytes == 4) {
      out.push_back('z');
    } else {
      char digits[5];
      for (int j = 4; j >= 0; --j, group /= 85) digits[j] = static_cast<char>('!' + group % 85);
      out.append(digits, bytes + 1);
    }
    BreakLine(&out, &lineStart);
  }
  out += "~>";
  return out;
}

}  // namespace quillon::objects
