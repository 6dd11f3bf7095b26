// From a sorted list of fields to the Fields array of an FDF document (ISO 32000-1, table 243).
#pragma once

#include <vector>

#include "plugin/exchange/field_collection.h"

namespace quillform {

// A direct array of `fdf`: fields of one parent that follow each other share an entry. Raises
// ownErrors.exportFailed for a name longer than a field's can be; nothing is left then.
ObjectHandle MakeFieldsArray(ObjectDoc fdf, const std::vector<CollectedField>& fields,
                             bool exportCommand);

}  // namespace quillform
