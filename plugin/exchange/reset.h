// Setting fields back to their default values (ISO 32000-1, 12.7.5.3).
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Loads all fields and resets the selected ones (field_collection.h), read-only ones and those that
// are not exported included.
void ResetFields(DocHandle doc, ObjectHandle list, bool inclusion);

// What a ResetForm action asks for.
struct ResetRequest {
  ObjectHandle fields;  // the list, or the null object
  bool inclusion;       // the list names the fields to reset; otherwise those to leave alone
};
ResetRequest ReadResetRequest(ActionHandle action);

// Performs a ResetForm action on the view's document. Raises what resetting raises.
void PerformResetForm(ActionHandle action, DocView view);

}  // namespace quillform
