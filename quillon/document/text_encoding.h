// Text encodings: PDFDocEncoding (ISO 32000-1, Annex D.3), Windows-1252, UTF-16BE and UTF-8. The
// one place where text crosses between the document, the host's text and the program's UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// What a byte that stands for no character decodes to.
inline constexpr char32_t kNoCharacter = 0xFFFD;

// One byte. kNoCharacter for the bytes that the encoding leaves free (PDFDocEncoding: 7F, 9F, AD;
// Windows-1252: 81, 8D, 8F, 90, 9D).
char32_t PdfDocCharacter(unsigned char byte);
char32_t HostCharacter(unsigned char byte);

// The byte of a character, none when the encoding has no place for it.
std::optional<unsigned char> PdfDocByte(char32_t character);
std::optional<unsigned char> HostByte(char32_t character);

// A text string (ISO 32000-1, 7.9.2.2) that starts with FE FF, or with EF BB BF.
bool IsUtf16Text(std::string_view text);
bool IsUtf8Text(std::string_view text);

// The code units after FE FF. A last odd byte is left out.
std::vector<char16_t> Utf16Units(std::string_view text);

// The characters of a text string in any of its forms; what cannot be decoded is kNoCharacter.
std::u32string PdfTextCharacters(std::string_view text);

// For the program. Utf8ToPdfDoc answers none when a character has no place in PDFDocEncoding or the
// bytes are no UTF-8; *badOffset (may be null) is then where in `utf8` it stands.
std::optional<std::string> Utf8ToPdfDoc(std::string_view utf8, std::size_t* badOffset);
std::string PdfTextToUtf8(std::string_view text);
std::string PdfDocToUtf8(std::string_view text);
std::string HostTextToUtf8(std::string_view text);

// Appends the UTF-8 form of a character.
void AppendUtf8(char32_t character, std::string* utf8);

// Reads the character at *position and steps over it; none (and one byte further) when the bytes
// there are no well-formed UTF-8.
std::optional<char32_t> NextUtf8(std::string_view utf8, std::size_t* position);

}  // namespace quillon
