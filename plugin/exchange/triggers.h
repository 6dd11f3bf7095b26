// What sets an action off: the entries of widgets and pages that hold actions (ISO 32000-1,
// 12.5.6.19 and 12.6.3).
//
// The owner of actions is the dictionary of a widget or page. Its AA has one action per trigger key
// (key::TriggerUp ...). With `useA`, which fits widgets, the release of the mouse button stands for
// the owner's own Dest or A.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

inline constexpr Atom kAnyTrigger = 0xFFFF;

bool HasTriggerAction(ObjectHandle owner, Atom trigger, bool useA);

// Null when there is none.
ActionHandle GetTriggerAction(ObjectHandle owner, Atom trigger, bool useA);

// A null action removes the trigger's. An action that is a direct object is copied, as it has its
// place already.
void SetTriggerAction(ObjectHandle owner, Atom trigger, ActionHandle action, bool useA);

// The same for the action's object, a direct one being taken over.
void PutTriggerObject(ObjectHandle owner, Atom trigger, ObjectHandle object, bool useA);

}  // namespace quillform
