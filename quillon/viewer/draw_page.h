// Drawing a page's annotations: who draws what, as a list that a renderer paints in order.
#pragma once

#include <vector>

#include "quillon/document/plugin_failure.h"
#include "sdk/types.h"

namespace quillon {

// One appearance stream that is to be painted. Its objects are the document's.
struct DrawnAppearance {
  ObjectHandle stream;
  FixedMatrix matrix;     // from form space (inside the stream's Matrix) to the page's user space
  FixedMatrix placement;  // what stands before `Do`: the matrix without the stream's own Matrix
  std::uint32_t page;
  AnnotHandle annot;
};

// Draws every annotation of the page in their order: through the handler registered for its
// subtype, or else its normal appearance. Hidden annotations, those that are not for the screen,
// and invisible ones of unknown type are passed over (ISO 32000-1, 12.5.3). What a handler raises
// ends that annotation's drawing only: it is put into `failures`, or reported when that is null.
std::vector<DrawnAppearance> DrawPageAnnots(DocView view, std::uint32_t page,
                                            std::vector<PlugInFailure>* failures = nullptr);

}  // namespace quillon
