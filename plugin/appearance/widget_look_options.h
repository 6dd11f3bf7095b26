// The options of choice fields as texts and as objects (ISO 32000-1, 12.7.4.4).
#pragma once

#include "plugin/appearance/widget_look.h"

namespace quillform {

OptionList ReadOptions(FieldNode node);
bool OptionListsEqual(const OptionList& a, const OptionList& b);
// A new direct array for the document; the null object for no options.
ObjectHandle NewOptionArray(ObjectDoc doc, const OptionList& options);

// The option with that export form or that display text, searched from the last; -1 for none.
std::int32_t OptionOfExport(FieldNode node, ObjectHandle value);
std::int32_t OptionOfDisplay(FieldNode node, const std::string& documentText);
// How many options the field has, inherited ones included; 0 without an array of them.
std::int32_t CountOptions(FieldNode node);
// What users see of an option, in the document's encoding; empty for an index outside the options.
std::string DisplayOfOption(FieldNode node, std::int32_t index);
// The export form of an option, the null object for an index outside the options.
ObjectHandle ExportOfOption(FieldNode node, std::int32_t index);

}  // namespace quillform
