// A page made flat: its annotations' appearances become part of the page content and the
// annotations go, so that whoever draws the page draws what the viewer decided and nothing of its
// own.
#pragma once

#include <string>
#include <vector>

#include "quillon/viewer/draw_page.h"

namespace quillon {

// The bytes of a document whose only page is page `page` (counted from 0) of the open one, flat:
// its content, then each appearance with its matrix. It has no more than is drawn: a form made to
// hurt keeps a library busy that has no bounds of ours. It is not encrypted, so it must not reach a
// disk.
std::string FlatPageDocument(DocHandle doc, std::uint32_t page,
                             const std::vector<DrawnAppearance>& appearances);

}  // namespace quillon
