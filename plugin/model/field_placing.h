// Where a top-level dictionary belongs: in Fields itself, or under a field that is there already.
// The model's own.
#pragma once

#include "plugin/model/field_name_text.h"
#include "plugin/model/form_record.h"

namespace quillform {

enum class PlaceInFields {
  kStands,            // it is an element
  kMissing,           // it is no element
  kBelongsElsewhere,  // a later element bears its name, or the beginning of it
};

// Searches Fields from its end; what is met first decides.
PlaceInFields FindInFields(FormRecord& record, ObjectHandle fields, ObjectHandle dict,
                           const NameText& name);

// Makes a widget one of the field of that name, making the field when it must; the widget's node,
// or null. A widget that cannot be placed is hidden. The form is marked ($Wa), so that closing the
// document looks after what was merged.
FieldNode PlaceWidget(FormRecord& record, ObjectHandle widget, const NameText& name);

// Marks the form ($Wa), so that closing the document looks after widgets that changed places.
void MarkMerged(const FormRecord& record);

// A dictionary that belongs to an existing field: a widget is placed, the kids of a dictionary with
// kids become top-level ones with paths for names, and anything else is left alone. The widget's
// node, or null.
FieldNode MoveUnderField(FormRecord& record, ObjectHandle dict, const NameText& name);

}  // namespace quillform
