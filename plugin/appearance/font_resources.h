// Font dictionaries of the fourteen base fonts (ISO 32000-1, 9.6.2.2) and where they are kept.
#pragma once

#include <array>

#include "plugin/model/field_node.h"

namespace quillform {

struct BaseFont {
  Atom base;
  Atom shortName;
  std::uint16_t labelId;  // string of the name that users see
};

// The table, in its fixed order; filled by FillBaseFontTable after the key atoms exist.
extern std::array<BaseFont, 14> baseFonts;
void FillBaseFontTable();

bool IsBaseFont(Atom base);
Atom ShortNameOf(Atom base);             // the atom itself when it is not a base font
Atom BaseNameOf(Atom shortName);         // kNoAtom when it is not a short name
Atom BaseFontOf(ObjectHandle fontDict);  // kNoAtom without a BaseFont name
Atom FontKeyOf(ObjectHandle fontDict);

// The encoding dictionary that the document's text fonts share; null object when the host fails.
ObjectHandle SharedEncodingDict(DocHandle doc);

// The font dictionary of a base font, made when the document has none (then not yet stored
// anywhere); null object for other fonts.
ObjectHandle FindOrMakeFontDict(DocHandle doc, Atom base);

// Stores the font in the field's resources; answers the key, kNoAtom for an invalid node or a font
// without BaseFont. Raises kErrorBadStructure when no dictionary can be had.
Atom AddFontToFieldResources(FieldNode node, ObjectHandle fontDict);

// Stores the font in the form's resources; answers kBitDR when they changed, else 0.
std::uint32_t AddFontToFormResources(ObjectHandle formDict, ObjectHandle fontDict);

// The base font behind a resource name of a field's default appearance; adds a missing font to the
// field's resources. Raises kErrorBadStructure when the field has no DR with a Font dictionary.
Atom ResolveFieldFont(FieldNode node, Atom resource);

}  // namespace quillform
