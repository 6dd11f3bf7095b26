// Actions that follow one another (ISO 32000-1, 12.6.2): each names those to come after it as Next.
#pragma once

#include <string>
#include <vector>

#include "plugin/host/host.h"

namespace quillform {

// Chains of hostile documents end here.
inline constexpr std::uint32_t kMostActions = 1000;

using ActionProc = bool (*)(ActionHandle action, void* clientData);

// Calls the routine with the action and those that follow it, depth first, until it answers false;
// false then. An action that was there before is not called again.
bool ForEachActionInChain(ActionHandle action, ActionProc proc, void* clientData);

// The actions of one trigger, for editing.
struct ActionList {
  Atom trigger;
  std::string name;  // of the owner, for people
  std::vector<ActionHandle> actions;
  bool valid;  // false when not all of them could be read
};

// `useA` as in triggers.h. What the host raises is told by `valid`.
ActionList GetTriggerActions(ObjectHandle owner, Atom trigger, const std::string& name, bool useA);

// Makes the list what the trigger sets off, one action the only Next of the one before. Afterwards
// the list names the actions as they are in the document: those that were part of another object
// have been copied.
void SetTriggerActions(ObjectHandle owner, ActionList* list, bool useA);

// Has the host perform an action and what follows it. What goes wrong is dropped.
void PerformAction(ActionHandle action, DocView view);

}  // namespace quillform
