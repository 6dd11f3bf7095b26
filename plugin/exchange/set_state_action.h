// SetState actions: which appearance a push button shows.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Check boxes and radio buttons show their field's value and are left alone.
void PerformSetState(ActionHandle action, DocView view);

// kNoAtom when the action names none.
Atom StateOfAction(ActionHandle action);

}  // namespace quillform
