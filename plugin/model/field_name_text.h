// Fully qualified names while they are made. The model's own.
#pragma once

#include <string_view>

#include "plugin/model/field_tree.h"

namespace quillform {

// A name in a buffer of its own, NUL-terminated. FullNameTextOf fills it.
struct NameText {
  char text[256];
  std::uint32_t length;
};

inline std::string_view ViewOf(const NameText& name) { return {name.text, name.length}; }

// The fully qualified name of a dictionary; false when there is none. Raises as FullNameOf does.
bool FullNameTextOf(ObjectHandle dict, NameText* name);

// The partial name: a text, or a number in decimal; false when T is neither.
bool PartialNameOf(ObjectHandle dict, std::string* name);

}  // namespace quillform
