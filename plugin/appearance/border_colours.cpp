#include <algorithm>
#include <array>

#include "plugin/appearance/border.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

std::array<Fixed, 4> ComponentsOf(const ColourRec& colour) {
  return {colour.c1, colour.c2, colour.c3, colour.c4};
}

// 0 for a space that is none.
std::size_t ComponentCount(const ColourRec& colour) {
  constexpr std::array<std::size_t, 3> kCounts = {1, 3, 4};
  const bool known = colour.space >= 0 && colour.space <= 2;
  return known ? kCounts[static_cast<std::size_t>(colour.space)] : 0;
}

void PutColour(AnnotHandle annot, Atom key, const ColourRec& colour) {
  if (colour.space == kNoColour.space) {
    PutMKEntry(annot, key, quillon::kNullObject);
    return;
  }
  const std::size_t count = ComponentCount(colour);
  const std::array<Fixed, 4> parts = ComponentsOf(colour);
  const bool writable =
      count != 0 && std::all_of(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(count),
                                [](Fixed part) { return part >= 0 && part <= kFixedOne; });
  if (!writable) return;
  const ObjectDoc doc = ObjectDocOfAnnot(annot);
  const ObjectHandle array = Objects->NewArray(doc, false, static_cast<std::uint32_t>(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    Objects->ArrayPut(array, i, Objects->NewFixed(doc, false, parts[i]));
  }
  PutMKEntry(annot, key, array);
}

}  // namespace

bool ColoursEqual(const ColourRec& a, const ColourRec& b) {
  if (a.space != b.space) return false;
  const std::size_t count = ComponentCount(a);
  const std::array<Fixed, 4> left = ComponentsOf(a);
  const std::array<Fixed, 4> right = ComponentsOf(b);
  return std::equal(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(count), right.begin());
}

void ReadWidgetColours(AnnotHandle annot, ColourRec* border, ColourRec* background) {
  *border = kNoColour;
  *background = kNoColour;
  const ObjectHandle mk = WidgetMK(annot);
  if (!IsKind(mk, ObjectKind::kDict)) return;
  *border = ColourOfArray(Objects->DictGet(mk, key::BC));
  *background = ColourOfArray(Objects->DictGet(mk, key::BG));
}

void WriteWidgetColours(AnnotHandle annot, const ColourRec& border, const ColourRec& background) {
  if (!Document->AnnotIsValid(annot)) return;
  ColourRec currentBorder;
  ColourRec currentBackground;
  ReadWidgetColours(annot, &currentBorder, &currentBackground);
  if (!ColoursEqual(currentBorder, border)) PutColour(annot, key::BC, border);
  if (!ColoursEqual(currentBackground, background)) PutColour(annot, key::BG, background);
}

}  // namespace quillform
