// The module's resources: numbers of strings, and how they are loaded.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillform {

// Loads a string in the user interface's language into `buffer` (size bytes, NUL-terminated);
// answers its length, 0 and an empty text when it is missing.
std::size_t LoadLocalString(std::uint32_t id, char* buffer, std::size_t size);

// What is added to string ids for the user interface's language. Found out at the first use and
// then kept.
std::uint32_t LanguageOffset();

// The number of a dialog in the user interface's language: the dialogs of each language stand 1,000
// above those of the one before. `id` itself when there is no such dialog, or below 1,000.
std::uint32_t LocalDialogId(std::uint32_t id);

// One raw data resource (RCDATA) of the module; data is null when it is missing. The bytes belong
// to the module.
struct ResourceBytes {
  const unsigned char* data;
  std::size_t size;
};
ResourceBytes FindDataResource(const char* name);

}  // namespace quillform
