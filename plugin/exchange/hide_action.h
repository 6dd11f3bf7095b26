// Hide actions (ISO 32000-1, 12.6.4.10): showing and hiding widgets.
#pragma once

#include <string>

#include "plugin/host/host.h"

namespace quillform {

void PerformHide(ActionHandle action, DocView view);

// Has the user choose another field, and whether it is shown or hidden. Nothing is written when the
// user cancels, or leaves everything as it is.
void EditHide(ActionHandle action, DocView view);

// Whether the action hides; true when it does not say.
bool ActionHides(ActionHandle action);

// The full name of the action's target in the document's encoding; empty for none, and for an array
// of targets.
std::string NameOfTarget(ActionHandle action);

}  // namespace quillform
