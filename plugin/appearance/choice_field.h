// The appearances of combo boxes and list boxes.
#pragma once

#include "plugin/appearance/text_layout.h"

namespace quillform {

// A single line showing the value as it is given.
void BuildComboAppearance(AnnotHandle annot, ObjectHandle value);

// The options from the field's top index on, as many as there is room for, with the one that the
// field's value selects highlighted in the system's colours. A top index that would leave the
// selected option out of sight is changed in the field (TI; ISO 32000-1, table 231).
void BuildListAppearance(AnnotHandle annot);

// Fills the band of one row, from 0. Does nothing once the layout has started its text object.
void DrawRowHighlight(const LineLayout& layout, std::int32_t row, const ColourRec& colour);

}  // namespace quillform
