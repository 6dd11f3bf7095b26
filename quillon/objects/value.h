// One PDF object as a container or the object table holds it: two words.
#pragma once

#include <cstdint>

#include "sdk/types.h"

namespace quillon::objects {

enum class ValueTag : std::uint8_t {
  kNull,
  kInteger,    // payload: the value
  kFixed,      // payload: the value
  kBoolean,    // payload: 0 or 1
  kName,       // payload: a NameCode
  kReference,  // payload: object number; `generation` counts
  kCell,       // payload: cell number (cells.h): strings, dictionaries, arrays, streams and
               // numbers whose text must be kept
};

struct Value {
  ValueTag tag;
  std::uint16_t generation;  // of a reference, else 0
  std::uint32_t payload;

  friend bool operator==(const Value&, const Value&) = default;
};

inline constexpr Value kNullValue{ValueTag::kNull, 0, 0};

// A name as documents store it: an atom, or, once all atoms are used up, 0x10000 + the index in
// the document's list of further names. Asking for the atom of such a name fails; it is compared
// and written like any other.
using NameCode = std::uint32_t;
inline constexpr NameCode kFirstFurtherName = 0x10000;

inline Value IntegerOf(std::int32_t value) {
  return {ValueTag::kInteger, 0, static_cast<std::uint32_t>(value)};
}
inline Value FixedOf(Fixed value) {
  return {ValueTag::kFixed, 0, static_cast<std::uint32_t>(value)};
}
inline Value BooleanOf(bool value) { return {ValueTag::kBoolean, 0, value ? 1u : 0u}; }
inline Value NameOf(NameCode name) { return {ValueTag::kName, 0, name}; }
inline Value ReferenceTo(std::uint32_t number, std::uint16_t generation) {
  return {ValueTag::kReference, generation, number};
}
inline Value CellValue(std::uint32_t cell) { return {ValueTag::kCell, 0, cell}; }

}  // namespace quillon::objects
