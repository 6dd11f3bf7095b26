// What an FDF asks of the fields of a document (ISO 32000-1, table 243).
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Shows the status that the FDF carries and applies its fields: values, flags, options and what
// their widgets get. Fields that the document does not have are passed over. True when nothing but
// values was among it. Raises ownErrors.invalidFdf for a malformed FDF and what the fields raise;
// what came before is then applied.
bool ImportFDF(DocHandle doc, ObjectDoc fdf);

}  // namespace quillform
