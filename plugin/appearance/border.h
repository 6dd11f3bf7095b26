// Borders and backgrounds of widgets (ISO 32000-1, 12.5.4 and table 189).
#pragma once

#include <array>

#include "plugin/appearance/content_writer.h"

namespace quillform {

enum BorderStyleCode : std::int32_t {
  kBorderSolid = 0,
  kBorderDashed = 1,
  kBorderBeveled = 2,
  kBorderInset = 3,
  kBorderUnderlined = 4,
};

struct BorderStyle {
  std::int32_t style;
  std::int32_t width;  // whole points
  std::int32_t dashCount;
  std::array<Fixed, 10> dashes;
};
inline constexpr BorderStyle kDefaultBorder{kBorderSolid, 1, 0, {}};

// True when the width is above 0. A failure of the host gives the default.
bool ReadBorderStyle(AnnotHandle annot, BorderStyle* border);
// Null and the default both mean no entry.
void WriteBorderStyle(AnnotHandle annot, const BorderStyle* border);
bool BordersEqual(const BorderStyle& a, const BorderStyle& b);

void ReadWidgetColours(AnnotHandle annot, ColourRec* border, ColourRec* background);
void WriteWidgetColours(AnnotHandle annot, const ColourRec& border, const ColourRec& background);
bool ColoursEqual(const ColourRec& a, const ColourRec& b);

// A null rectangle means the writer's box; `width` is Fixed points.
void DrawBorder(ContentWriter& writer, const FixedRect* rect, std::int32_t style, Fixed width,
                const ColourRec& border, const ColourRec& background, bool down);
void DrawRoundBorder(ContentWriter& writer, const FixedRect* rect, std::int32_t style, Fixed width,
                     const ColourRec& border, const ColourRec& background, bool down);

// The distance kept between the widget's edge and its content, in whole points.
std::int32_t ContentInset(const BorderStyle& border);
// The area inside that distance, in the widget's own coordinates before it is turned.
FixedRect AreaInside(const FixedRect& widget, Fixed margin);

}  // namespace quillform
