// Copies of widgets with their fields, for duplicating and pasting.
#pragma once

#include "plugin/model/field_node.h"

namespace quillform {

// Makes a dictionary a copy of a widget: it gets the entries that it lacks, and a place under the
// name given (null: the name of the source, which makes it one more widget of that field, or of one
// of that name in its own document). The look (AP, MK) is the source's, unless `resetLook` keeps
// what the dictionary has. Under another name the copy has no value, but keeps what the source
// inherits. A dictionary that is no annotation comes to hold the field only.
// 0 done; 1 refused: the dictionary must be indirect, the source a valid node without kids, and the
// name one that AddWidgetUnderName gives. Raises what that raises.
std::uint32_t CopyWidgetField(ObjectHandle dict, FieldNode source, const char* name,
                              bool resetLook);

}  // namespace quillform
