// Copies of pages in another document, complete but in no page tree yet.
#pragma once

#include <cstdint>
#include <vector>

#include "quillon/document/document_record.h"

namespace quillon::document {

// The copies of the pages `first` to `last`, in order. What they inherited is written into them:
// each has MediaBox and Resources, and Rotate and CropBox when it had them.
std::vector<ObjectHandle> CopyPages(DocumentRecord* source, std::uint32_t first, std::uint32_t last,
                                    ObjectDoc target);

}  // namespace quillon::document
