// The module's resources: numbers of strings, and how they are loaded.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillform {

// Loads a string in the user interface's language into `buffer` (size bytes, NUL-terminated);
// answers its length, 0 and an empty text when it is missing.
std::size_t LoadLocalString(std::uint32_t id, char* buffer, std::size_t size);

// One raw data resource (RCDATA) of the module; data is null when it is missing. The bytes belong
// to the module.
struct ResourceBytes {
  const unsigned char* data;
  std::size_t size;
};
ResourceBytes FindDataResource(const char* name);

}  // namespace quillform
