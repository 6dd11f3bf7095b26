// Making field nodes. The model's own.
#pragma once

#include "plugin/model/form_record.h"

namespace quillform {

// As FieldNodeOf for a dictionary of a live record; a node that is still being made is given too.
FieldNode FindOrMakeNode(FormRecord& record, ObjectHandle dict);

// Gives an element of Fields or Kids its node. A name that breaks the rules leaves only this
// element out: one damaged field must not cost the user the rest of the form.
void LoadElement(FormRecord& record, ObjectHandle dict);

// Gives every kid of a field its node. Nothing happens while that is being done for the field.
void LoadKids(FieldNode field);

}  // namespace quillform
