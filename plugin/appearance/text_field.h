// The appearance of text fields.
#pragma once

#include <string>

#include "plugin/appearance/content_writer.h"

namespace quillform {

// Draws border and background for a widget with MK and answers the null object; for one without,
// answers its existing normal appearance, to be updated in place, or the null object.
ObjectHandle BeginWidgetAppearance(AnnotHandle annot, ContentWriter& writer);

// Rebuilds and installs the widget's normal appearance from a value.
void BuildTextAppearance(AnnotHandle annot, ObjectHandle value);

// A value as text in the document's encoding: strings, names, numbers, truth values.
std::string ValueText(ObjectHandle value);

}  // namespace quillform
