// Finding the objects of a file by reading it from end to end: for files without cross-references,
// as FDF files are, and for files whose cross-references are wrong.
#pragma once

#include "quillon/objects/document.h"

namespace quillon::objects {

// Enters every object found, the last one of each number; objects already read or made are left
// alone. Finds a trailer when there is none: the last that names a catalog, or one made for the
// last object that looks like a catalog. Sets doc.scanned.
void ScanDocument(Document& doc);

// Whether a trailer's Root is a catalog, or could be one.
bool NamesCatalog(Document& doc, std::uint32_t trailer);

}  // namespace quillon::objects
