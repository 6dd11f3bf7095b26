// A page made flat: its annotations' appearances become part of the page content and the
// annotations go, so that whoever draws the page draws what the viewer decided and nothing of its
// own.
#pragma once

#include <string>
#include <vector>

#include "quillon/viewer/draw_page.h"

namespace quillon {

// The bytes of a copy of the document in which page `page` (counted from 0) is flat: its content,
// then each appearance with its matrix. The open document is not changed.
std::string FlatPageDocument(DocHandle doc, std::uint32_t page,
                             const std::vector<DrawnAppearance>& appearances);

}  // namespace quillon
