#include "plugin/appearance/choice_field.h"

#include <algorithm>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/appearance/widget_look_options.h"
#include "plugin/host/win32.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::int16_t kRGB = 1;

Fixed ColourPart(DWORD colour, int shift) {
  const auto byte = static_cast<std::int32_t>((colour >> shift) & 0xFF);
  return Support->FixedDiv(FixedOfWhole(byte), FixedOfWhole(255));
}

ColourRec SystemColour(int index) {
  const DWORD colour = GetSysColor(index);
  return {kRGB, ColourPart(colour, 0), ColourPart(colour, 8), ColourPart(colour, 16), 0};
}

struct OptionRows {
  FieldNode node;
  std::int64_t count;
  std::int64_t selected;  // -1 for none
};

// The first option to show, of so many visible ones, that keeps the selected one in sight.
std::int64_t TopFor(const OptionRows& options, std::int64_t top, std::int64_t visible) {
  const std::int64_t selected = options.selected;
  if (selected < 0) return top;
  const std::int64_t last = std::min(top + visible, options.count) - 1;
  if (selected < top) return selected;
  if (selected > last) return std::min(selected, options.count - visible);
  return top;
}

// A new top index does not put the appearance out of date that is being built with it.
void StoreTop(FieldNode node, std::int64_t top) {
  const std::uint32_t stale = node->status & kNodeStale;
  PutInheritedCount(node, key::TI, static_cast<std::int32_t>(top));
  node->status = (node->status & ~std::uint32_t{kNodeStale}) | stale;
}

void DrawOptions(ContentWriter& writer, const OptionRows& options, Fixed margin,
                 const TextAppearance& look) {
  LineLayout layout = NewLineLayout(writer, margin, look);
  const std::int64_t visible = VisibleLineCount(layout);
  const std::int64_t oldTop = std::max(InheritedCount(options.node, key::TI), 0);
  const std::int64_t top = TopFor(options, oldTop, visible);
  if (top != oldTop) StoreTop(options.node, top);

  const std::int64_t row = options.selected - top;
  if (options.selected >= 0 && row >= 0 && row < visible) {
    DrawRowHighlight(layout, static_cast<std::int32_t>(row), SystemColour(COLOR_HIGHLIGHT));
  }
  LayoutLine(layout, nullptr);
  const std::int64_t end = std::min(options.count, top + visible);
  for (std::int64_t i = top; i < end; ++i) {
    const std::string text = DisplayOfOption(options.node, static_cast<std::int32_t>(i));
    const bool selected = i == options.selected;
    if (selected) SetColour(writer, SystemColour(COLOR_HIGHLIGHTTEXT), true);
    LayoutLine(layout, text.c_str());
    if (selected) SetColour(writer, look.fillColour, true);
  }
  EndLineLayout(layout);
}

}  // namespace

void BuildComboAppearance(AnnotHandle annot, ObjectHandle value) {
  BuildValueAppearance(annot, value, 0);
}

void BuildListAppearance(AnnotHandle annot) {
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) {
    InstallAppearance(annot, kNoAtom, quillon::kNullObject);
    return;
  }
  TextAppearance look;
  FieldTextAppearance(node, &look);
  const Fixed margin = MarginInside(annot);
  const OptionRows options{node, CountOptions(node), OptionOfExport(node, GetFieldValue(node))};
  const auto draw = [&](ContentWriter& writer) { DrawOptions(writer, options, margin, look); };
  BuildWithContent(annot, node, {look, margin, options.count == 0, draw});
}

void DrawRowHighlight(const LineLayout& layout, std::int32_t row, const ColourRec& colour) {
  if (layout.started) return;
  ContentWriter& writer = *layout.writer;
  const FixedRect& box = writer.box;
  const Fixed lineHeight = writer.font.lineHeight;
  const Fixed left = FixedAdd(box.left, layout.margin);
  const Fixed right = FixedSub(box.right, layout.margin);
  const Fixed top =
      FixedSub(FixedSub(box.top, layout.margin), HoldFixed(std::int64_t{lineHeight} * row));
  const Fixed bottom = FixedSub(top, lineHeight);
  SetColour(writer, colour, true);
  WriteRect(writer, left, bottom, FixedSub(right, left), FixedSub(top, bottom), 'f');
}

}  // namespace quillform
