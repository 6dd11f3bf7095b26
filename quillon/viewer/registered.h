// What each plug-in registered with the host, for people to read.
#pragma once

#include <string>
#include <vector>

#include "sdk/types.h"

namespace quillon {

struct Registered {
  ExtensionId extension;
  std::string kind;  // "menu item", "tool", "annotation handler", "action handler",
                     // "selection server", "data handler", "notification"
  std::string name;  // the item's name, the type served, the notification's number
};

// In the order of registration within each kind; the viewer's own things are not listed.
std::vector<Registered> RegisteredThings();

}  // namespace quillon
