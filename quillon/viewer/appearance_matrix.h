// How an appearance stream is fitted into its annotation (ISO 32000-1, 12.5.5, algorithm 8.1).
#pragma once

#include "sdk/types.h"

namespace quillon::viewer {

struct AppearanceFit {
  FixedMatrix matrix;     // from form space to the page's user space
  FixedMatrix placement;  // the same without the stream's own Matrix, for painting it with Do
};

// `stream` is a form XObject. With `upright` the appearance is turned back against the page's
// `rotation` about the rectangle's upper left corner (Table 165, NoRotate).
AppearanceFit FitAppearance(ObjectHandle stream, const FixedRect& rect, std::uint16_t rotation,
                            bool upright);

}  // namespace quillon::viewer
