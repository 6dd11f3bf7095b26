// The appearances of check boxes and radio buttons: on and off, at rest and pressed (down).
#pragma once

#include "plugin/appearance/widget_look.h"

namespace quillform {

// Make all four appearances anew: N and D, each for the look's on state and for Off. MK from an
// older place is moved to the annotation first. Nothing happens for a look without a check part;
// when the mark cannot be drawn, the failure is raised and the appearances stay as they were.
void BuildCheckAppearance(AnnotHandle annot, const WidgetLook& look);
// With the circle as its mark a radio button is drawn round, with a dot.
void BuildRadioAppearance(AnnotHandle annot, const WidgetLook& look);

// Shows a state, Off when the widget has no such one, after rebuilding the appearances on request.
// Only widgets with MK are rebuilt.
void RefreshCheckWidget(AnnotHandle annot, Atom state, bool rebuild);

}  // namespace quillform
