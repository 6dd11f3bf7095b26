#include "plugin/appearance/caption_icon.h"

#include <algorithm>
#include <iterator>

#include "plugin/appearance/check_styles.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/text_layout.h"
#include "plugin/appearance/widget_look.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr Fixed kSizeBesideIcon = 12 * kFixedOne;
// What the operators of the last piece of a caption add to its escaped text.
constexpr std::size_t kTailBytes = std::size("() Tj ET") - 1;

struct Extent {
  Fixed width;
  Fixed height;
};

struct Point {
  Fixed x;
  Fixed y;
};

// The box to be filled, with what goes into it.
struct Content {
  FixedRect box;
  Extent space;
  Fixed margin;
  Extent icon;  // unscaled; 0 for none
  Extent text;
};

struct Placement {
  Fixed scale;    // of the icon
  Extent scaled;  // the icon as drawn
  Point icon;
  Point text;
  bool drawsIcon;
  bool drawsText;
};

bool HasArea(const Extent& extent) { return extent.width > 0 && extent.height > 0; }

Fixed Times(Fixed value, std::int32_t count) { return HoldFixed(std::int64_t{value} * count); }

// In the middle of the box.
Point Centred(const Content& content, const Extent& item) {
  return {FixedAdd(FixedHalf(FixedSub(content.space.width, item.width)), content.box.left),
          FixedAdd(FixedHalf(FixedSub(content.space.height, item.height)), content.box.bottom)};
}

// The icon's scale when it fills what the box leaves it: four margins off each way, and besides
// them what else is `taken`.
Fixed IconScale(const Content& content, const Extent& taken) {
  if (!HasArea(content.icon)) return 0;
  const Fixed margins = Times(content.margin, 4);
  const Fixed width = FixedSub(FixedSub(content.space.width, margins), taken.width);
  const Fixed height = FixedSub(FixedSub(content.space.height, margins), taken.height);
  return std::min(Support->FixedDiv(width, content.icon.width),
                  Support->FixedDiv(height, content.icon.height));
}

Placement ScaledBy(const Content& content, Fixed scale) {
  Placement placement{};
  placement.scale = scale;
  placement.scaled = {Support->FixedMul(content.icon.width, scale),
                      Support->FixedMul(content.icon.height, scale)};
  return placement;
}

// Icon and text above each other; the gap above the pair is the one below it.
Placement PlaceStacked(const Content& content, bool iconAbove) {
  const Extent taken{0, FixedAdd(content.margin, content.text.height)};
  Placement placement = ScaledBy(content, std::max(IconScale(content, taken), 0));
  const Fixed iconHeight = placement.scaled.height;
  const Fixed textHeight = content.text.height;
  const Fixed gap = FixedHalf(
      FixedSub(FixedSub(FixedSub(content.space.height, content.margin), iconHeight), textHeight));
  const Fixed low = FixedAdd(content.box.bottom, gap);
  const Fixed high = FixedSub(content.box.top, gap);
  placement.icon = {Centred(content, placement.scaled).x,
                    iconAbove ? FixedSub(high, iconHeight) : low};
  placement.text = {Centred(content, content.text).x, iconAbove ? low : FixedSub(high, textHeight)};
  placement.drawsIcon = placement.scale > 0;
  placement.drawsText = true;
  return placement;
}

// Icon and text beside each other.
Placement PlaceInRow(const Content& content, bool iconFirst) {
  const Extent taken{FixedAdd(content.margin, content.text.width), 0};
  Placement placement = ScaledBy(content, std::max(IconScale(content, taken), 0));
  const Fixed iconWidth = placement.scaled.width;
  const Fixed textWidth = content.text.width;
  const Fixed gap = FixedHalf(
      FixedSub(FixedSub(FixedSub(content.space.width, content.margin), iconWidth), textWidth));
  const Fixed first = FixedAdd(content.box.left, gap);
  const Fixed second = FixedAdd(FixedAdd(first, iconFirst ? iconWidth : textWidth), content.margin);
  placement.icon = {iconFirst ? first : second, Centred(content, placement.scaled).y};
  placement.text = {iconFirst ? second : first, Centred(content, content.text).y};
  placement.drawsIcon = placement.scale > 0;
  placement.drawsText = true;
  return placement;
}

Placement PlaceOver(const Content& content, bool drawsIcon, bool drawsText) {
  Placement placement = ScaledBy(content, IconScale(content, {0, 0}));
  placement.icon = Centred(content, placement.scaled);
  placement.text = Centred(content, content.text);
  placement.drawsIcon = drawsIcon;
  placement.drawsText = drawsText;
  return placement;
}

Placement Place(const Content& content, std::int32_t layout) {
  switch (layout) {
    case kIconOnly:
      return PlaceOver(content, true, false);
    case kIconAboveText:
    case kTextAboveIcon:
      return PlaceStacked(content, layout == kIconAboveText);
    case kIconLeftOfText:
    case kTextLeftOfIcon:
      return PlaceInRow(content, layout == kIconLeftOfText);
    case kTextOverIcon:
      return PlaceOver(content, true, true);
    default:
      return PlaceOver(content, false, true);
  }
}

// The icon's box in its own units; empty for a damaged one.
FixedRect IconBox(ObjectHandle icon) {
  const ObjectHandle array = EntryOf(icon, key::BBox);
  if (!IsKind(array, ObjectKind::kArray) || Objects->ArrayLength(array) < 4) return {};
  Fixed edges[4];
  for (std::uint32_t i = 0; i < 4; ++i) {
    const ObjectHandle edge = Objects->ArrayGet(array, i);
    if (!IsNumber(edge)) return {};
    edges[i] = Objects->FixedValue(edge);
  }
  return {std::min(edges[0], edges[2]), std::max(edges[1], edges[3]), std::max(edges[0], edges[2]),
          std::min(edges[1], edges[3])};
}

void DrawIcon(ContentWriter& writer, const FixedRect& iconBox, const Extent& icon,
              const Placement& placement) {
  WriteOp(writer, "q %f 0 0 %f %f %f cm /FRM Do",
          Support->FixedDiv(placement.scaled.width, icon.width),
          Support->FixedDiv(placement.scaled.height, icon.height),
          FixedSub(placement.icon.x, Support->FixedMul(iconBox.left, placement.scale)),
          FixedSub(placement.icon.y, Support->FixedMul(iconBox.bottom, placement.scale)));
  WriteRestore(writer);
  writer.flags |= kWriterUsesIcon;
}

void DrawCaption(ContentWriter& writer, const TextAppearance& caption, const char* text,
                 const Point& at) {
  WriteOp(writer, "BT %c", DAText(caption, kStreamDACapacity).c_str());
  writer.flags |= kWriterUsesFont;
  WriteOp(writer, "1 0 0 1 %f %f Tm", at.x, FixedSub(at.y, writer.font.descent));
  // Signs that need escaping may make a long caption too long for one operator.
  for (std::size_t count = ShowableBytes(text, kTailBytes); text[count] != '\0';
       count = ShowableBytes(text, kTailBytes)) {
    WriteOp(writer, "%s Tj", std::string(text, count).c_str());
    text += count;
  }
  WriteOp(writer, "%s Tj ET", text);
}

Fixed SizeFor(const ContentWriter& writer, Fixed margin, std::int32_t layout, Atom baseFont,
              bool glyph) {
  if (layout >= kIconOnly && layout <= kTextLeftOfIcon) return kSizeBesideIcon;
  const Fixed size = AutoFontSize(writer, baseFont, margin);
  // Glyphs fill less of the line than text does.
  return glyph ? Support->FixedMul(size, Support->FixedDiv(9 * kFixedOne, 7 * kFixedOne)) : size;
}

bool StaysInside(const Content& content, const Placement& placement) {
  const Fixed left = FixedAdd(content.box.left, content.margin);
  const Fixed top = FixedSub(content.box.top, content.margin);
  const auto inside = [&](const Point& at, Fixed height) {
    return at.x >= left && FixedAdd(at.y, height) <= top;
  };
  return (!placement.drawsIcon || inside(placement.icon, placement.scaled.height)) &&
         (!placement.drawsText || inside(placement.text, content.text.height));
}

}  // namespace

TextAppearance CaptionAppearance(const WidgetLook& look, Atom baseFont) {
  TextAppearance caption = DefaultTextAppearance();
  caption.fontSize = look.fontSize;
  caption.fillColour = look.textColour;
  caption.baseFont = baseFont;
  return caption;
}

bool DrawCaptionAndIcon(ContentWriter& writer, Fixed margin, std::int32_t layout, ObjectHandle icon,
                        const TextAppearance& caption, const char* text, bool glyph) {
  const bool hasIcon = IsKind(icon, ObjectKind::kStream);
  const bool hasText = text != nullptr && text[0] != '\0';
  if (!hasText && (!hasIcon || layout == kTextOnly)) return true;
  if (!hasIcon && layout == kIconOnly) return true;

  TextAppearance sized = caption;
  if (sized.fontSize == 0) sized.fontSize = SizeFor(writer, margin, layout, sized.baseFont, glyph);
  writer.font = FontMetricsOf(sized.baseFont, sized.fontSize);
  writer.fontResource = ShortNameOf(sized.baseFont);
  writer.icon = hasIcon ? icon : kNullObject;

  const FixedRect iconBox = hasIcon ? IconBox(icon) : FixedRect{};
  const Extent iconExtent{FixedSub(iconBox.right, iconBox.left),
                          FixedSub(iconBox.top, iconBox.bottom)};
  const Content content{
      writer.box,
      {BoxWidth(writer), BoxHeight(writer)},
      margin,
      iconExtent,
      {TextWidth(writer.font, text),
       glyph && hasText ? MarkHeight(text[0], sized.fontSize) : writer.font.lineHeight}};
  Placement placement = Place(content, layout);
  // An icon without a box has nothing to show.
  placement.drawsIcon = placement.drawsIcon && HasArea(iconExtent);
  placement.drawsText = placement.drawsText && hasText && sized.fillColour.space != kNoColour.space;
  if (placement.drawsIcon) DrawIcon(writer, iconBox, iconExtent, placement);
  if (placement.drawsText) DrawCaption(writer, sized, text, placement.text);
  return StaysInside(content, placement);
}

}  // namespace quillform
