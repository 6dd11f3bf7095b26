// The fields whose values must not outlive the open document. The form dictionary lists their
// dictionaries ($Vo), so that the list is there however the document is closed. The model's own.
#pragma once

#include "plugin/model/field_node.h"

namespace quillform {

// Lists a password field whose value has changed, once however often that happens; nothing for
// other fields.
void NoteVolatileValue(FieldNode field);

// Clears the values of the listed fields and removes the list. The first failure is raised when all
// have been dealt with.
void ClearVolatileValues(ObjectHandle form);

}  // namespace quillform
