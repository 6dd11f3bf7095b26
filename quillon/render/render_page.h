// A page of a document as a picture: the page's own content, and over it the appearances that the
// plug-ins and the viewer draw for its annotations.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/types.h"

namespace quillon {

struct RenderRequest {
  std::uint32_t page = 0;  // counted from 0
  double dpi = 96;         // pixels an inch
};

// The page as the bytes of a PNG file. Annotations that could not be drawn and faults that the
// rendering library met are added to `warnings`. Throws HostFailure when there is no such page,
// when the picture would be unreasonably large, and (kErrorNotOffered) where the rendering library
// was not installed when the program was built.
std::string RenderPageAsPng(DocView view, const RenderRequest& request,
                            std::vector<std::string>* warnings);

}  // namespace quillon
