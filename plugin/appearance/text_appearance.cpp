#include "plugin/appearance/text_appearance.h"

#include "plugin/appearance/border.h"
#include "plugin/appearance/font_resources.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr ColourRec kGreyZero{0, 0, 0, 0, 0};

bool MatricesEqual(const FixedMatrix& a, const FixedMatrix& b) {
  return a.a == b.a && a.b == b.b && a.c == b.c && a.d == b.d && a.e == b.e && a.f == b.f;
}

void MakeBlackGrey(ColourRec& colour) {
  const bool threeZero = colour.c1 == 0 && colour.c2 == 0 && colour.c3 == 0;
  const bool isBlack = threeZero && (colour.space == 1 || (colour.space == 2 && colour.c4 == 0));
  if (isBlack) colour = kGreyZero;
}

// A quadding outside 16 bits stays recognisably invalid.
std::uint16_t QuaddingOf(ObjectHandle entry, std::uint16_t fallback) {
  if (!IsKind(entry, ObjectKind::kInteger)) return fallback;
  const std::int32_t value = Objects->IntegerValue(entry);
  return value < 0 || value > 0xFFFF ? std::uint16_t{0xFFFF} : static_cast<std::uint16_t>(value);
}

}  // namespace

TextAppearance DefaultTextAppearance() {
  TextAppearance look{};
  look.horizScaling = 100 * kFixedOne;
  look.matrix = {kFixedOne, 0, 0, kFixedOne, 0, 0};
  look.baseFont = key::Helvetica;
  look.fontResource = kNoAtom;
  return look;
}

TextAppearance NoTextAppearance() {
  TextAppearance look{};
  look.baseFont = kNoAtom;
  look.fontResource = kNoAtom;
  return look;
}

bool TextAppearanceIsValid(const TextAppearance& look) {
  return look.quadding <= 2 && look.renderMode <= 3 && look.baseFont != kNoAtom &&
         look.fontSize >= 0;
}

bool TextAppearancesEqual(const TextAppearance& a, const TextAppearance& b) {
  return a.charSpacing == b.charSpacing && a.wordSpacing == b.wordSpacing &&
         a.horizScaling == b.horizScaling && a.leading == b.leading && a.rise == b.rise &&
         a.fontSize == b.fontSize && MatricesEqual(a.matrix, b.matrix) &&
         ColoursEqual(a.strokeColour, b.strokeColour) && ColoursEqual(a.fillColour, b.fillColour) &&
         a.renderMode == b.renderMode && a.quadding == b.quadding && a.baseFont == b.baseFont &&
         a.fontResource == b.fontResource;
}

void NormaliseColours(TextAppearance& look) {
  const bool fills = look.renderMode != 1 && look.renderMode != 3;
  const bool strokes = look.renderMode != 0 && look.renderMode != 3;
  if (!fills) look.fillColour = kGreyZero;
  if (!strokes) look.strokeColour = kGreyZero;
  MakeBlackGrey(look.fillColour);
  MakeBlackGrey(look.strokeColour);
}

void FieldTextAppearance(FieldNode node, TextAppearance* look) {
  ParseDA(GetFieldEntry(node, kBitDA), look);
  if (look->fontResource == kNoAtom) Raise(quillon::kErrorBadStructure);
  look->baseFont = ResolveFieldFont(node, look->fontResource);
  look->quadding = QuaddingOf(GetFieldEntry(node, kBitQ), 0);
}

void FormTextAppearance(ObjectHandle formDict, TextAppearance* look) {
  const ObjectHandle da = Objects->DictGet(formDict, key::DA);
  if (IsKind(da, ObjectKind::kString)) {
    ParseDA(da, look);
    const ObjectHandle resources = Objects->DictGet(formDict, key::DR);
    if (look->fontResource == kNoAtom || !IsKind(resources, ObjectKind::kDict)) {
      Raise(quillon::kErrorBadStructure);
    }
    const ObjectHandle fonts = Objects->DictGet(resources, key::Font);
    if (!IsKind(fonts, ObjectKind::kDict)) Raise(quillon::kErrorBadStructure);
    look->baseFont = BaseFontOf(Objects->DictGet(fonts, look->fontResource));
  } else {
    *look = NoTextAppearance();
  }
  look->quadding = QuaddingOf(Objects->DictGet(formDict, key::Q), 0);
}

}  // namespace quillform
