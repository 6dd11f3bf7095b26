// What a dictionary is in a page tree (ISO 32000-1, 7.7.3), by the same rule for those who walk the
// tree and for those who repair it.
#pragma once

#include "quillon/objects/document.h"

namespace quillon::objects {

// Of a dictionary that a page tree lists. Type decides where it is right; else a node has Kids, and
// neither it nor a page has what annotations and fields have.
PagePart PagePartOf(Document& doc, std::uint32_t dict);

// The object number of the tree's root, a node; 0 when the document has no pages. A tree that is
// missing is made of all pages there are, one that is direct gets a number, with a warning.
std::uint32_t PageTreeRoot(Document& doc);

// A tree of one level over all pages that can be read, put in the place of the catalog's; its
// number, or 0 when there are none.
std::uint32_t MakePageTree(Document& doc, const std::string& reason);

}  // namespace quillon::objects
