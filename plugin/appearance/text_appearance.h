// How a field's text looks: default appearance strings (ISO 32000-1, 12.7.3.3) parsed and written,
// with the fonts and the quadding that belong to them.
#pragma once

#include <string>

#include "plugin/host/host.h"
#include "plugin/model/field_node.h"

namespace quillform {

struct TextAppearance {
  Fixed charSpacing;
  Fixed wordSpacing;
  Fixed horizScaling;  // percent
  Fixed leading;
  Fixed rise;
  Fixed fontSize;  // points; 0 means automatic
  FixedMatrix matrix;
  ColourRec strokeColour;
  ColourRec fillColour;
  std::uint16_t renderMode;  // 0 to 3
  std::uint16_t quadding;    // 0 left, 1 centred, 2 right
  Atom baseFont;
  Atom fontResource;  // kNoAtom for none
};

// The record that parsing begins with: Helvetica, automatic size, black.
TextAppearance DefaultTextAppearance();
// The record of a form without a look, and of a malformed text: all zero, no font.
TextAppearance NoTextAppearance();
bool TextAppearanceIsValid(const TextAppearance& look);
bool TextAppearancesEqual(const TextAppearance& a, const TextAppearance& b);

// Raises kErrorBadParameter for an object that is no string, kErrorBadObject for a malformed text.
void ParseDA(ObjectHandle da, TextAppearance* look);

// A text that grows up to 65,535 bytes.
struct GrowingText {
  std::string bytes;
  std::uint16_t capacity;
};
inline constexpr std::uint16_t kStreamDACapacity = 133;
inline constexpr std::uint16_t kFieldDACapacity = 250;
inline constexpr std::uint16_t kFormDACapacity = 120;

// Appends the record as a DA text, trailing blank included; 0 done, 1 for an invalid record or a
// text that cannot grow. Normalises the record's colours and names its font resource.
std::uint32_t WriteDA(TextAppearance& look, GrowingText& text);
void NormaliseColours(TextAppearance& look);
// The record as a DA text; raises kErrorBadParameter when it cannot be written.
std::string DAText(TextAppearance look, std::uint16_t capacity);

// The inherited look of a field; the form's own look. Raise kErrorBadStructure when the font
// resources are missing, and what ParseDA raises.
void FieldTextAppearance(FieldNode node, TextAppearance* look);
void FormTextAppearance(ObjectHandle formDict, TextAppearance* look);

// Writes the look into the field (null removes the field's own DA, DR and Q) and rebuilds the
// widgets; into the form's defaults, announcing form event 3.
void SetFieldTextAppearance(FieldNode node, const TextAppearance* look);
void SetFormTextAppearance(ObjectHandle formDict, const TextAppearance& look);
void SetFieldQuadding(FieldNode node, std::uint16_t quadding);

// What a new form dictionary gets: Helvetica, automatic size, black, left.
void SetDefaultFormAppearance(ObjectHandle formDict);

}  // namespace quillform
