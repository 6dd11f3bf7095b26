// What a form needs before text can be drawn in its fields.
#pragma once

#include "sdk/types.h"

namespace quillon::app {

// Gives a form without fonts Helvetica for text and ZapfDingbats for check marks, and a default
// appearance when it has none; says so among the document's warnings.
void AddMissingFonts(DocHandle doc);

}  // namespace quillon::app
