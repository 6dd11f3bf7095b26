// The appearance of text fields, and what choice fields share with them.
#pragma once

#include <functional>
#include <string>

#include "plugin/appearance/content_writer.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

// Draws border and background for a widget with MK and answers the null object; for one without,
// answers its existing normal appearance, to be updated in place, or the null object.
ObjectHandle BeginWidgetAppearance(AnnotHandle annot, ContentWriter& writer);

// What is drawn inside a widget's border, as the marked section of its appearance.
struct WidgetContent {
  TextAppearance look;  // the field's
  Fixed margin;         // between the widget's edge and the content
  bool isEmpty;
  std::function<void(ContentWriter& writer)> draw;  // may be called for two writers in turn
};

// Installs the widget's normal appearance: a new one with border and background, clipped to the
// area inside the margin, or the existing one with its marked section exchanged, where the author's
// own clip applies.
void BuildWithContent(AnnotHandle annot, FieldNode node, const WidgetContent& content);

// What the widget's border takes, as the margin of its content.
Fixed MarginInside(AnnotHandle annot);

// Rebuilds and installs the widget's normal appearance from a value.
void BuildTextAppearance(AnnotHandle annot, ObjectHandle value);

// The same, laid out as far as `layoutFlags` (of kFieldMultiLine, kFieldPassword) allow the field's
// own flags to say.
void BuildValueAppearance(AnnotHandle annot, ObjectHandle value, std::uint32_t layoutFlags);

// A value as text in the document's encoding: strings, names, numbers, truth values.
std::string ValueText(ObjectHandle value);

}  // namespace quillform
