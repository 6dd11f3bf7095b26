#include <algorithm>
#include <cstring>

#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"

namespace quillon::document {
namespace {

// Puts as much of `text` as fits before the NUL; answers the bytes put.
std::uint32_t PutText(std::string_view text, char* buffer, std::uint32_t size) {
  if (buffer == nullptr || size == 0) return 0;
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return static_cast<std::uint32_t>(length);
}

std::string_view ViewOf(const char* text, std::uint32_t length) {
  if (text == nullptr && length > 0) Fail(kErrorBadParameter, "a text is missing");
  return length == 0 ? std::string_view() : std::string_view(text, length);
}

constexpr char kUnknown = '?';

void AppendUnitEscape(char16_t unit, std::string* text) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  *text += "%u";
  for (int shift = 12; shift >= 0; shift -= 4) *text += kDigits[unit >> shift & 0xF];
}

bool LooksEscaped(std::string_view text, std::size_t position) {
  if (text.size() - position < 6 || text[position] != '%' || text[position + 1] != 'u')
    return false;
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(position) + 2,
                     text.begin() + static_cast<std::ptrdiff_t>(position) + 6,
                     [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); });
}

// A plain "%u0041" is itself escaped, or it would narrow to the same text as the escaped unit.
std::string NarrowBytes(std::string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\0' || LooksEscaped(text, i)) {
      AppendUnitEscape(static_cast<unsigned char>(text[i]), &narrow);
    } else {
      narrow += text[i];
    }
  }
  return narrow;
}

std::string NarrowUnits(const std::vector<char16_t>& units) {
  // The bytes first, with NUL for every unit that has none: what looks escaped must be judged on
  // the text before any escape is put in.
  std::string bytes;
  bytes.reserve(units.size());
  for (const char16_t unit : units) bytes += static_cast<char>(PdfDocByte(unit).value_or(0));
  std::string narrow;
  narrow.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (bytes[i] == '\0' || LooksEscaped(bytes, i)) {
      AppendUnitEscape(units[i], &narrow);
    } else {
      narrow += bytes[i];
    }
  }
  return narrow;
}

}  // namespace

std::uint32_t HostToPDFText(const char* text, std::uint32_t length, char* buffer,
                            std::uint32_t size) {
  std::string converted(ViewOf(text, length));
  for (char& byte : converted) {
    const char32_t character = HostCharacter(static_cast<unsigned char>(byte));
    const auto target = character == kNoCharacter ? std::nullopt : PdfDocByte(character);
    byte = target ? static_cast<char>(*target) : kUnknown;
  }
  return PutText(converted, buffer, size);
}

std::uint32_t PDFToHostText(const char* text, std::uint32_t length, char* buffer,
                            std::uint32_t size) {
  const std::string_view source = ViewOf(text, length);
  std::string converted;
  converted.reserve(source.size());
  for (const char32_t character : PdfTextCharacters(source)) {
    const auto target = HostByte(character);
    converted += target ? static_cast<char>(*target) : kUnknown;
  }
  return PutText(converted, buffer, size);
}

std::uint32_t NarrowPDFText(const char* text, std::uint32_t length, char* buffer,
                            std::uint32_t size) {
  const std::string_view source = ViewOf(text, length);
  const std::string narrow =
      IsUtf16Text(source) ? NarrowUnits(Utf16Units(source)) : NarrowBytes(source);
  PutText(narrow, buffer, size);
  return static_cast<std::uint32_t>(narrow.size());
}

}  // namespace quillon::document
