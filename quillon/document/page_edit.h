// Inserting, deleting and copying the pages of open documents. Pages are counted from 0. Everything
// here throws HostFailure; kErrorBadParameter for pages that do not exist.
//
// Pages that were acquired keep naming the same page and get its new number; one that is deleted
// can only be released.
#pragma once

#include <cstdint>

#include "sdk/types.h"

namespace quillon {

// Inserts copies of the pages `first` to `last` of another document after page `after` (-1: in
// front). They bring what they show, their annotations, and of form fields the dictionaries above
// their own widgets, with the DA, Q and DR that they had from their form; references to pages that
// stay behind become null. Then sends kNotePagesInserted, with the code of the failure when there
// was one, and adds the resources of that DR to the form's own where it lacks them.
void InsertPages(DocHandle doc, std::int32_t after, DocHandle source, std::uint32_t first,
                 std::uint32_t last);

// Sends kNotePagesWillDelete, then deletes the pages `first` to `last` with everything that only
// they used. One page at least must stay.
void DeletePages(DocHandle doc, std::uint32_t first, std::uint32_t last);

// A new document, without a view, of copies of the pages `first` to `last`; they come as inserted
// ones do. The caller closes it.
DocHandle ExtractPages(DocHandle doc, std::uint32_t first, std::uint32_t last);

}  // namespace quillon
