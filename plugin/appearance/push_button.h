// The appearances of push buttons.
#pragma once

#include "plugin/appearance/widget_look.h"

namespace quillform {

// Make the normal appearance, or the normal and the down one, from the look and the caption that MK
// holds. Nothing happens for a look without a button part.
void BuildButtonAppearance(AnnotHandle annot, const WidgetLook& look);
void BuildPushButtonAppearances(AnnotHandle annot, const WidgetLook& look);

// What the look's highlight mode asks for: only a button that is pushed in has a down appearance.
void BuildButton(AnnotHandle annot, const WidgetLook& look);

// Rebuilds a widget with MK on request.
void RefreshButtonWidget(AnnotHandle annot, bool rebuild);

}  // namespace quillform
