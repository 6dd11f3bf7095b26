// Performing actions and those that follow them (ISO 32000-1, 12.6.2).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sdk/types.h"

namespace quillon {

// Chains of hostile documents end here.
inline constexpr std::size_t kMostActions = 1000;

struct ActionRun {
  std::size_t performed;
  std::vector<Atom> passedOver;  // the types of actions that nobody performs
};

// Has the handlers of their types perform an action, then those that its Next names, depth first.
// An action that was met already is not performed again, so that circles end. Throws what a handler
// raises; the actions after that one are not performed. Nothing more is performed either once the
// action's document, or the view (null for none), has been closed. `before` is told of each action
// that is about to be performed.
ActionRun RunActions(ActionHandle action, DocView view,
                     const std::function<void(ActionHandle action)>& before = {});

// The first line with which its handler describes an action, in UTF-8; empty when it has none.
std::string DescribeAction(ActionHandle action);

}  // namespace quillon
