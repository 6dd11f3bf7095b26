// Widths and heights of the fourteen base fonts, from the module's metric resources.
#pragma once

#include <array>

#include "plugin/host/host.h"

namespace quillform {

struct FontMetrics {
  Atom baseFont;
  Fixed size;        // points
  Fixed lineHeight;  // (box top - box bottom) / 1000 x size
  Fixed ascent;
  Fixed descent;                  // negative
  std::array<Fixed, 256> widths;  // advance of each byte code at this size
};

// Fills the record. A font that is not one of the fourteen is measured as Helvetica. Raises
// kErrorBadStructure when the module lacks the resource.
void LoadFontMetrics(Atom baseFont, Fixed size, FontMetrics* metrics);

// The same record from a cache of recent (font, size) pairs; valid until the next call.
const FontMetrics& FontMetricsOf(Atom baseFont, Fixed size);

// The sum of the widths of the bytes; 0 for null or empty text.
Fixed TextWidth(const FontMetrics& metrics, const char* text);
Fixed TextWidth(const FontMetrics& metrics, const char* text, std::size_t length);

}  // namespace quillform
