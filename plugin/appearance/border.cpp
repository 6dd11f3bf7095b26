#include "plugin/appearance/border.h"

#include <algorithm>

#include "plugin/appearance/fixed_math.h"

namespace quillform {

namespace {

constexpr ColourRec kWhite{0, kFixedOne, 0, 0, 0};
constexpr ColourRec kLightGrey{0, 49344, 0, 0, 0};
constexpr ColourRec kDarkGrey{0, 32896, 0, 0, 0};
constexpr Fixed kShadeStep = 16448;
constexpr Fixed kOneAndHalf = kFixedOne + kFixedOne / 2;
constexpr std::int16_t kRGB = 1;

bool IsNone(const ColourRec& colour) { return colour.space == kNoColour.space; }

// One border being drawn; the rectangle's width and height are kept beside its edges.
struct Shape {
  FixedRect rect;
  Fixed across;
  Fixed up;
  Fixed width;
  ColourRec border;
  ColourRec background;
};

// The two colours of a bevel, after the style and the press have chosen them.
struct BevelColours {
  ColourRec upperLeft;
  ColourRec lowerRight;
};

Fixed Darker(Fixed part) { return std::min(FixedSub(part, kShadeStep), kFixedOne); }

ColourRec ShadeOf(const ColourRec& colour) {
  return {kRGB, Darker(colour.c1), Darker(colour.c2), Darker(colour.c3), 0};
}

// Solid and dashed backgrounds darken while pressed; an inset one takes the shade.
ColourRec BackgroundFor(std::int32_t style, const ColourRec& background, const ColourRec& shade,
                        bool down) {
  if (!down) return background;
  if (style == kBorderInset) return shade;
  const bool darkens = style == kBorderSolid || style == kBorderDashed;
  return darkens && !IsNone(background) ? shade : background;
}

BevelColours BevelFor(std::int32_t style, const ColourRec& shade, bool down) {
  if (style == kBorderBeveled) {
    return down ? BevelColours{shade, kWhite} : BevelColours{kWhite, shade};
  }
  return down ? BevelColours{kBlack, kWhite} : BevelColours{kDarkGrey, kLightGrey};
}

void StartStroke(ContentWriter& writer, const Shape& shape, bool dashed) {
  SetColour(writer, shape.border, false);
  WriteOp(writer, "%f w", shape.width);
  if (dashed) WriteOp(writer, "[3] 0 d");
}

void DrawPlain(ContentWriter& writer, const Shape& shape, bool dashed) {
  const FixedRect& rect = shape.rect;
  if (!IsNone(shape.background)) {
    SetColour(writer, shape.background, true);
    WriteRect(writer, rect.left, rect.bottom, shape.across, shape.up, 'f');
  }
  if (IsNone(shape.border)) return;
  StartStroke(writer, shape, dashed);
  const Fixed half = FixedHalf(shape.width);
  WriteRect(writer, FixedAdd(rect.left, half), FixedAdd(rect.bottom, half),
            FixedSub(shape.across, shape.width), FixedSub(shape.up, shape.width), 's');
}

void DrawBand(ContentWriter& writer, const FixedRect& rect, Fixed depth, const ColourRec& colour,
              bool upperLeft) {
  if (IsNone(colour)) return;
  SetColour(writer, colour, true);
  WriteBevelPolygon(writer, rect, depth, upperLeft);
}

void DrawBevel(ContentWriter& writer, const Shape& shape, const BevelColours& colours) {
  DrawPlain(writer, shape, false);
  const Fixed width = shape.width;
  const FixedRect inner{FixedAdd(shape.rect.left, width), FixedSub(shape.rect.top, width),
                        FixedSub(shape.rect.right, width), FixedAdd(shape.rect.bottom, width)};
  DrawBand(writer, inner, width, colours.upperLeft, true);
  DrawBand(writer, inner, width, colours.lowerRight, false);
}

void DrawUnderline(ContentWriter& writer, const Shape& shape) {
  if (!IsNone(shape.background)) {
    SetColour(writer, shape.background, true);
    WriteRect(writer, 0, 0, shape.across, shape.up, 'f');
  }
  if (IsNone(shape.border)) return;
  SetColour(writer, shape.border, false);
  const Fixed y = FixedAdd(shape.rect.bottom, FixedHalf(shape.width));
  WriteOp(writer, "%f w %f %f m %f %f l s", shape.width, shape.rect.left, y, shape.across, y);
}

struct Circle {
  Fixed cx;
  Fixed cy;
  Fixed r;
};

Circle CircleIn(const Shape& shape) {
  return {FixedAdd(shape.rect.left, FixedHalf(shape.across)),
          FixedAdd(shape.rect.bottom, FixedHalf(shape.up)),
          FixedHalf(std::min(shape.across, shape.up))};
}

void FillCircle(ContentWriter& writer, const Shape& shape, const Circle& circle) {
  if (IsNone(shape.background)) return;
  SetColour(writer, shape.background, true);
  WriteCircle(writer, circle.cx, circle.cy, circle.r, 'f');
}

void DrawPlainCircle(ContentWriter& writer, const Shape& shape, bool dashed) {
  const Circle circle = CircleIn(shape);
  FillCircle(writer, shape, circle);
  if (IsNone(shape.border)) return;
  StartStroke(writer, shape, dashed);
  WriteCircle(writer, circle.cx, circle.cy, FixedSub(circle.r, FixedHalf(shape.width)), 's');
}

void DrawHalf(ContentWriter& writer, const Circle& circle, Fixed r, const ColourRec& colour,
              bool upperLeft) {
  if (IsNone(colour)) return;
  SetColour(writer, colour, false);
  WriteHalfCircle(writer, circle.cx, circle.cy, r, upperLeft);
}

void DrawRoundBevel(ContentWriter& writer, const Shape& shape, const BevelColours& colours) {
  const Circle circle = CircleIn(shape);
  FillCircle(writer, shape, circle);
  WriteOp(writer, "%f w", shape.width);
  if (!IsNone(shape.border)) {
    SetColour(writer, shape.border, false);
    WriteCircle(writer, circle.cx, circle.cy, FixedSub(circle.r, FixedHalf(shape.width)), 's');
  }
  const Fixed inner = FixedSub(circle.r, Support->FixedMul(shape.width, kOneAndHalf));
  DrawHalf(writer, circle, inner, colours.upperLeft, true);
  DrawHalf(writer, circle, inner, colours.lowerRight, false);
}

Shape MakeShape(const ContentWriter& writer, const FixedRect* rect, Fixed width,
                const ColourRec& border, const ColourRec& background) {
  const FixedRect& edges = rect != nullptr ? *rect : writer.box;
  return {edges,
          FixedDistance(edges.right, edges.left),
          FixedDistance(edges.top, edges.bottom),
          width,
          border,
          background};
}

}  // namespace

void DrawBorder(ContentWriter& writer, const FixedRect* rect, std::int32_t style, Fixed width,
                const ColourRec& border, const ColourRec& background, bool down) {
  const ColourRec shade = IsNone(background) ? kLightGrey : ShadeOf(background);
  const Shape shape =
      MakeShape(writer, rect, width, border, BackgroundFor(style, background, shade, down));
  switch (style) {
    case kBorderSolid:
    case kBorderDashed:
      return DrawPlain(writer, shape, style == kBorderDashed);
    case kBorderBeveled:
    case kBorderInset:
      return DrawBevel(writer, shape, BevelFor(style, shade, down));
    case kBorderUnderlined:
      return DrawUnderline(writer, shape);
    default:
      return;
  }
}

void DrawRoundBorder(ContentWriter& writer, const FixedRect* rect, std::int32_t style, Fixed width,
                     const ColourRec& border, const ColourRec& background, bool down) {
  const ColourRec shade = ShadeOf(background);
  const Shape shape =
      MakeShape(writer, rect, width, border, BackgroundFor(style, background, shade, down));
  switch (style) {
    case kBorderSolid:
    case kBorderDashed:
    case kBorderUnderlined:
      return DrawPlainCircle(writer, shape, style == kBorderDashed);
    case kBorderBeveled:
    case kBorderInset:
      return DrawRoundBevel(writer, shape, BevelFor(style, shade, down));
    default:
      return;
  }
}

}  // namespace quillform
