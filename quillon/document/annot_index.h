// Where annotations stand: which entry of which page's Annots array.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "sdk/types.h"

namespace quillon::document {

struct DocumentRecord;

struct AnnotPlace {
  std::uint32_t page;
  std::uint32_t entry;  // of the Annots array
};

// The entries of one Annots array that are dictionaries, as they were when `changes` changes had
// been made to the document.
struct PageAnnots {
  ObjectHandle array;
  std::uint32_t length;
  std::uint64_t changes;
  std::vector<std::uint32_t> entries;
};

// A cache: every answer is checked against the array itself before it is given.
struct AnnotMap {
  std::unordered_map<std::uint32_t, PageAnnots> pages;
  std::unordered_map<std::uint32_t, AnnotPlace> places;      // by object number
  std::unordered_map<std::uint32_t, std::uint64_t> nowhere;  // object number -> changes when sought
};

// The page's Annots array, the null object when it has none.
ObjectHandle AnnotsArray(ObjectHandle page);

// What is on the page now. The page must exist.
const PageAnnots& AnnotsOnPage(DocumentRecord* doc, std::uint32_t page);

// The annotation at an index among the page's annotations; the null object beyond them. O(1) also
// while the document is being changed.
ObjectHandle AnnotOnPage(DocumentRecord* doc, std::uint32_t page, std::uint32_t index);

// Where the annotation stands; none when no page shows it.
std::optional<AnnotPlace> PlaceOfAnnot(DocumentRecord* doc, ObjectHandle annot);

}  // namespace quillon::document
