// What the operations of the table share: their operands, checked.
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

// A container's own cell in its document. Throw HostFailure (kErrorBadObject) for other kinds.
struct Container {
  Document& doc;
  std::uint32_t cell;
};
Container DictOperand(ObjectHandle object);  // of a stream: its dictionary
Container ArrayOperand(ObjectHandle object);
Container StreamOperand(ObjectHandle object);

// What to store in `container` for an object given to a put or insert: a reference for an indirect
// one, the object itself for a direct one; a direct one that already stands somewhere is copied.
// Throws HostFailure for an object of another document.
Value StoredValue(const Container& container, ObjectHandle object);

[[noreturn]] void FailKind(const Target& target, const char* wanted);

}  // namespace quillon::objects
