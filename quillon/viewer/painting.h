// Rectangles that plug-ins paint straight onto what is shown: the marks of a tool, a pressed
// widget.
#pragma once

#include <cstdint>

#include "sdk/types.h"

namespace quillon {

enum class PaintKind { kFilled, kOutline, kInverted };

struct PaintedRect {
  PaintKind kind;
  DeviceRect rect;
  ColourRec color;      // of no meaning to an inversion
  std::uint16_t width;  // of an outline, inward in device units
};

// What shows them, told of each at once; null when nothing does.
using PaintRoutine = void (*)(DocView view, const PaintedRect& painted);
void SetPaintRoutine(PaintRoutine routine);

}  // namespace quillon
