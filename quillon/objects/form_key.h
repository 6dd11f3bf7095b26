// The form dictionary's key in the catalog. It is shown as QuillForm; a file may have it under
// another key, which is found by what stands there and kept when the catalog is written.
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

inline constexpr std::string_view kFormKey = "QuillForm";

// Called once, when the catalog was read: renames the entry in memory (doc.formKey keeps its own
// name) and lends an object number to a form dictionary that is direct in the file, because forms
// work on indirect ones only. Neither counts as a change.
void PrepareCatalog(Document& doc);

// A lent form dictionary and the catalog that the file has it in are written together or not at
// all: called when either changed.
void SpreadFormChange(Document& doc, std::uint32_t number);

// The key to write for an entry of the catalog.
NameCode WrittenCatalogKey(Document& doc, NameCode key);

}  // namespace quillon::objects
