// Copies of pages in another document, complete but in no page tree yet.
#pragma once

#include <cstdint>
#include <vector>

#include "quillon/document/document_record.h"

namespace quillon::document {

struct PageCopies {
  std::vector<ObjectHandle> pages;
  ObjectHandle fieldResources;  // DR of the other document's form; null without one, or fields
};

// The copies of the pages `first` to `last`, in order. What they inherited is written into them:
// each has MediaBox and Resources, and Rotate and CropBox when it had them.
PageCopies CopyPages(DocumentRecord* source, std::uint32_t first, std::uint32_t last,
                     ObjectDoc target);

// Gives the document's form the resources that it has none of the same name for.
void AddFieldResources(ObjectDoc doc, ObjectHandle resources);

}  // namespace quillon::document
