// Deep copies.
#pragma once

#include <unordered_map>

#include "quillon/objects/document.h"

namespace quillon::objects {

// A copy that stands in no container. Within one document references stay what they are; into
// another one, what they name is copied with it, each object once. A stream becomes indirect: the
// answer is then a reference; so is it when something below refers back to `number`, the object
// number that the value has in its own document (0 when direct).
Value CopyValue(Document& from, const Value& value, Document& to, std::uint32_t number = 0);

// What became of the objects of one document in another: old numbers to new ones, 0 for those that
// are left out.
using CopiedNumbers = std::unordered_map<std::uint32_t, std::uint32_t>;

// As CopyValue into another document, over several calls: what was copied before is referred to,
// references to what is left out become null, and the copy is an indirect object, whose number is
// the answer.
std::uint32_t CopyAsObject(Document& from, const Value& value, std::uint32_t number, Document& to,
                           CopiedNumbers* numbers);

}  // namespace quillon::objects
