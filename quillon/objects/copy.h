// Deep copies.
#pragma once

#include "quillon/objects/document.h"

namespace quillon::objects {

// A copy that stands in no container. Within one document references stay what they are; into
// another one, what they name is copied with it, each object once. A stream becomes indirect: the
// answer is then a reference; so is it when something below refers back to `number`, the object
// number that the value has in its own document (0 when direct).
Value CopyValue(Document& from, const Value& value, Document& to, std::uint32_t number = 0);

}  // namespace quillon::objects
