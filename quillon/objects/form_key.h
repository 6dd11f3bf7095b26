// The form dictionary's key in the catalog. It is shown as QuillForm; a file may have it under
// another key, which is found by what stands there and kept when the catalog is written.
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

inline constexpr std::string_view kFormKey = "QuillForm";

// Called once, when the catalog was read: renames the entry in memory (doc.formKey keeps its own
// name) and lends kLentNumber to a form dictionary that is direct in the file, because forms work
// on indirect ones only. Neither counts as a change, and the form is written as a part of the
// catalog again.
void PrepareCatalog(Document& doc);

// Called when an object changed: a lent form dictionary is a part of the catalog.
void SpreadFormChange(Document& doc, std::uint32_t number);

// For something that is to refer to a lent form dictionary: gives it a number of its own, for good.
// What has it under the lent one still does.
std::uint32_t KeepLentForm(Document& doc);

// The key to write for an entry of the catalog.
NameCode WrittenCatalogKey(Document& doc, NameCode key);

}  // namespace quillon::objects
