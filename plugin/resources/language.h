// Which block of the string table speaks the user interface's language.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillform {

// Below it the strings are the same in every language. It holds the code of the first language; the
// codes of the others follow at distances of kLanguageBlockSize.
inline constexpr std::uint32_t kFirstLanguageString = 8;
inline constexpr std::uint32_t kLanguageBlockSize = 146;

using LoadStringRoutine = std::size_t (*)(std::uint32_t id, char* buffer, std::size_t size);

// What is added to string ids for the language of that three-letter code; 0, the first block, when
// no block bears the code.
std::uint32_t FindLanguageOffset(const char* code, LoadStringRoutine load);

}  // namespace quillform
