// Actions that change widgets which they name: by annotation, or by the full name of a field.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Changes one widget for an action; answers whether it was otherwise before.
using TargetProc = bool (*)(AnnotHandle widget, const void* clientData);

// Calls the routine with each widget that the action's T names (a widget dictionary, a name that
// all widgets of that field bear, or an array of these). What has changed is shown in the view;
// it does not make the document a modified one, as it is about the showing of the form and not
// about its content. A target that names no widget is passed over.
void ChangeTargets(ActionHandle action, DocView view, TargetProc change, const void* clientData);

// T, or the null object when there is none.
ObjectHandle ActionTarget(ActionHandle action);

}  // namespace quillform
