// Objects that nothing in a document refers to any more.
#pragma once

#include <vector>

#include "sdk/types.h"

namespace quillon::document {

// Removes objects (indirect ones) and, of what they refer to, all that the rest of the document
// does not: what was deleted must not stay readable in the file.
void RemoveWithUnused(ObjectDoc doc, const std::vector<ObjectHandle>& removed);

}  // namespace quillon::document
