// Putting the page tree and the pages' lists of annotations in order before a document is written
// (ISO 32000-1, 7.7.3 and 12.5.2), so that other programs show the pages that this one does.
#pragma once

#include "quillon/objects/document.h"

namespace quillon::objects {

// Entries of Kids that are no pages, or that lead back into the tree, are taken out; a page that is
// listed a second time becomes one of its own; Type, Parent and Count are made right; annotations
// that are null or listed twice are taken out of their page's list. A tree that is missing is made
// of all pages there are. Each repair is a warning; a document in order stays as it is.
void RepairPages(Document& doc);

}  // namespace quillon::objects
