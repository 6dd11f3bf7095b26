// From a finished writer to a form XObject (ISO 32000-1, 8.10) in a widget's appearance dictionary
// (12.5.5).
#pragma once

#include "plugin/appearance/content_writer.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

// The finished stream; the null object for an empty writer or when the host fails.
ObjectHandle MakeFormStream(ObjectDoc doc, const ContentWriter& writer);

// A copy of an existing appearance whose marked section is replaced by the writer's; the null
// object when the writer has no such section or the host fails.
ObjectHandle MergeMarkedContent(ObjectHandle oldStream, ContentWriter& writer,
                                const TextAppearance& look, ObjectHandle formResources);

// Puts a normal appearance into the widget; `state` is kNoAtom for none; a null stream removes it.
void InstallAppearance(AnnotHandle annot, Atom state, ObjectHandle stream);
// The general form: `which` is N or D, or kNoAtom to remove AP. Raises what the host raises, after
// announcing the change with the code.
void PutAppearance(AnnotHandle annot, Atom which, Atom state, ObjectHandle stream);

// The MK dictionary, found in the annotation or (an older place) in its normal appearance.
ObjectHandle WidgetMK(AnnotHandle annot);

// The frame that every builder shares: the widget's rectangle at the height OH when it has one, and
// its rotation from MK R or from the normal appearance's matrix.
struct WidgetFrame {
  FixedRect rect;
  std::uint16_t rotation;
};
WidgetFrame FrameOfWidget(AnnotHandle annot);

// AP, then `which`, then (unless kNoAtom) `state`; the null object when there is no such stream.
ObjectHandle AppearanceOf(AnnotHandle annot, Atom which, Atom state);

}  // namespace quillform
