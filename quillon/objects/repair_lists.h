// Arrays of dictionaries that a document keeps: annotations of pages, fields of a form and of
// fields.
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

struct ListFaults {
  const char* none;   // what to tell of an entry that is no dictionary, nor an array of some
  const char* twice;  // ... and of one that the list has already
};

// Takes both out of the array, with a warning for the object of that number.
void RepairList(Document& doc, std::uint32_t array, std::uint32_t holder, const ListFaults& faults);

// Does so for all lists of the form's field tree, before the document is written: other programs
// need not see through what this one does.
void RepairFields(Document& doc);

}  // namespace quillon::objects
