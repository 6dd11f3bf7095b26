// What a form needs before text can be drawn in its fields.
#pragma once

#include "sdk/types.h"

namespace quillon::app {

// Gives a form without fonts Helvetica for text and ZapfDingbats for check marks; says so among the
// document's warnings.
void AddMissingFonts(DocHandle doc);

// Has a field find a default appearance (DA; ISO 32000-1, 12.7.3.3): where it has none of its own
// and the form has none that names a font, the form's becomes Helvetica; says so among the
// document's warnings.
void CompleteAppearance(DocHandle doc, ObjectHandle field);

}  // namespace quillon::app
