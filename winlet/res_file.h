// Compiled resources (the .res form): records one after another, each beginning at a multiple of
// four bytes.
//
//   offset  size  content, little-endian
//   0       4     size of the data
//   4       4     size of this header, names and padding included
//   8       ...   type, then name: each the word 0xFFFF and a number, or UTF-16 text and a NUL
//   ...           padding to a multiple of four, then 16 bytes of version, flags and language
//
// The data follows the header. Strings stand in blocks of sixteen: block n holds the ids
// 16 * (n - 1) to 16 * n - 1, each as a length in UTF-16 units and the units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace winlet {

using ResBytes = std::span<const unsigned char>;

inline constexpr std::uint16_t kResTypeString = 6;
inline constexpr std::uint16_t kResTypeData = 10;

// A type or a name: a number, or a text (whose letters compare without regard to case).
struct ResName {
  std::uint16_t number;
  std::u16string text;  // empty for a number
};

// The data of the first record of that type and name. A record that does not fit into the file ends
// the search.
std::optional<ResBytes> FindResData(ResBytes file, const ResName& type, const ResName& name);

// One string of a string block, empty when the block is cut off before it.
std::u16string StringInBlock(ResBytes block, unsigned index);

}  // namespace winlet
