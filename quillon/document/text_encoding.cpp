#include "quillon/document/text_encoding.h"

#include <algorithm>
#include <array>
#include <span>

#include "quillon/document/text_tables.h"

namespace quillon {
namespace {

// An encoding both ways: by byte, and by character in rising order.
struct Encoding {
  std::array<char32_t, 256> characters;
  std::vector<std::pair<char32_t, unsigned char>> bytes;
};

Encoding MakeEncoding(std::span<const EncodedByte> exceptions) {
  Encoding encoding;
  for (std::size_t byte = 0; byte < 256; ++byte) encoding.characters[byte] = char32_t(byte);
  for (const EncodedByte& entry : exceptions) {
    encoding.characters[entry.byte] = entry.character == kFree ? kNoCharacter : entry.character;
  }
  for (std::size_t byte = 0; byte < 256; ++byte) {
    const char32_t character = encoding.characters[byte];
    if (character != kNoCharacter) {
      encoding.bytes.emplace_back(character, static_cast<unsigned char>(byte));
    }
  }
  std::sort(encoding.bytes.begin(), encoding.bytes.end());
  return encoding;
}

const Encoding& PdfDoc() {
  static const Encoding encoding = MakeEncoding(kPdfDocBytes);
  return encoding;
}

const Encoding& Host() {
  static const Encoding encoding = MakeEncoding(kHostBytes);
  return encoding;
}

std::optional<unsigned char> ByteIn(const Encoding& encoding, char32_t character) {
  if (character < 256 && encoding.characters[character] == character) {
    return static_cast<unsigned char>(character);
  }
  const auto place =
      std::lower_bound(encoding.bytes.begin(), encoding.bytes.end(), character,
                       [](const auto& entry, char32_t wanted) { return entry.first < wanted; });
  if (place == encoding.bytes.end() || place->first != character) return std::nullopt;
  return place->second;
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::u32string CharactersOfUnits(const std::vector<char16_t>& units) {
  std::u32string characters;
  characters.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (IsHighSurrogate(unit) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
      characters += char32_t(0x10000 + ((unit - 0xD800) << 10) + (units[i + 1] - 0xDC00));
      ++i;
    } else {
      characters += IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kNoCharacter : char32_t(unit);
    }
  }
  return characters;
}

// What the first byte of a UTF-8 sequence announces.
struct Utf8Lead {
  std::size_t length;  // 0 for a byte that cannot lead
  char32_t bits;
  char32_t smallest;  // anything below is an overlong form
};

Utf8Lead LeadOf(unsigned char byte) {
  if (byte < 0x80) return {1, byte, 0};
  if (byte >= 0xC2 && byte < 0xE0) return {2, char32_t(byte & 0x1F), 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return {3, char32_t(byte & 0x0F), 0x800};
  if (byte >= 0xF0 && byte < 0xF5) return {4, char32_t(byte & 0x07), 0x10000};
  return {0, 0, 0};
}

}  // namespace

char32_t PdfDocCharacter(unsigned char byte) { return PdfDoc().characters[byte]; }
char32_t HostCharacter(unsigned char byte) { return Host().characters[byte]; }

std::optional<unsigned char> PdfDocByte(char32_t character) { return ByteIn(PdfDoc(), character); }
std::optional<unsigned char> HostByte(char32_t character) { return ByteIn(Host(), character); }

bool IsUtf16Text(std::string_view text) { return text.starts_with("\xFE\xFF"); }
bool IsUtf8Text(std::string_view text) { return text.starts_with("\xEF\xBB\xBF"); }

std::vector<char16_t> Utf16Units(std::string_view text) {
  std::vector<char16_t> units;
  units.reserve(text.size() / 2);
  for (std::size_t i = 2; i + 1 < text.size(); i += 2) {
    const unsigned high = static_cast<unsigned char>(text[i]);
    const unsigned low = static_cast<unsigned char>(text[i + 1]);
    units.push_back(static_cast<char16_t>(high << 8 | low));
  }
  return units;
}

std::u32string PdfTextCharacters(std::string_view text) {
  if (IsUtf16Text(text)) return CharactersOfUnits(Utf16Units(text));
  std::u32string characters;
  characters.reserve(text.size());
  if (IsUtf8Text(text)) {
    for (std::size_t position = 3; position < text.size();) {
      characters += NextUtf8(text, &position).value_or(kNoCharacter);
    }
    return characters;
  }
  for (const char byte : text) characters += PdfDocCharacter(static_cast<unsigned char>(byte));
  return characters;
}

std::optional<std::string> Utf8ToPdfDoc(std::string_view utf8, std::size_t* badOffset) {
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const std::size_t start = position;
    const std::optional<char32_t> character = NextUtf8(utf8, &position);
    const std::optional<unsigned char> byte = character ? PdfDocByte(*character) : std::nullopt;
    if (!byte) {
      if (badOffset != nullptr) *badOffset = start;
      return std::nullopt;
    }
    text += static_cast<char>(*byte);
  }
  return text;
}

std::string PdfTextToUtf8(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char32_t character : PdfTextCharacters(text)) AppendUtf8(character, &utf8);
  return utf8;
}

std::string PdfDocToUtf8(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char byte : text) {
    AppendUtf8(PdfDocCharacter(static_cast<unsigned char>(byte)), &utf8);
  }
  return utf8;
}

std::string HostTextToUtf8(std::string_view text) {
  std::string utf8;
  for (const char byte : text) {
    AppendUtf8(HostCharacter(static_cast<unsigned char>(byte)), &utf8);
  }
  return utf8;
}

void AppendUtf8(char32_t character, std::string* utf8) {
  const auto put = [utf8](char32_t byte) { *utf8 += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

std::optional<char32_t> NextUtf8(std::string_view utf8, std::size_t* position) {
  const std::size_t start = (*position)++;
  const Utf8Lead lead = LeadOf(static_cast<unsigned char>(utf8[start]));
  if (lead.length == 0 || utf8.size() - start < lead.length) return std::nullopt;
  char32_t character = lead.bits;
  for (std::size_t i = 1; i < lead.length; ++i) {
    const unsigned char next = static_cast<unsigned char>(utf8[start + i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (next & 0x3F);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < lead.smallest || character > 0x10FFFF || surrogate) return std::nullopt;
  *position = start + lead.length;
  return character;
}

}  // namespace quillon
