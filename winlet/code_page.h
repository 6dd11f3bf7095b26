// Windows-1252, the single-byte encoding of all texts in the "A" calls.
#pragma once

#include <string>

namespace winlet {

// Characters that the encoding lacks become '?'.
std::string ToWindows1252(const std::u16string& text);

// The five bytes without a character stand for the control characters of the same number.
char16_t FromWindows1252(char byte);

}  // namespace winlet
