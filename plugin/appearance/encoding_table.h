// What turns the standard encoding into PDFDocEncoding (ISO 32000-1, annex D.2), the encoding in
// which field values are kept.
#pragma once

#include <cstdint>

namespace quillform {

// How many elements the list has, its end not counted.
inline constexpr std::uint32_t kEncodingDifferenceCount = 138;

// The elements of the Differences array (9.6.6.1) in order, ended by an empty text: a text that
// begins with a digit is a character code, any other a glyph name.
extern const char* const kEncodingDifferences[kEncodingDifferenceCount + 1];

}  // namespace quillform
