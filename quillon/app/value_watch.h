// Which field's value is about to be set, as the form plug-in's subscribers are told.
#pragma once

#include "quillon/app/forms_client.h"

namespace quillon::app {

// Subscribes for its own lifetime, after the plug-ins did: what they make of a change is known when
// its turn comes.
struct ValueWatch {
  ValueWatch();
  ~ValueWatch();
  ValueWatch(const ValueWatch&) = delete;
  ValueWatch& operator=(const ValueWatch&) = delete;

  std::uint32_t registration;
  char name[256] = "";   // of the latest field, as in the document; longer ones there are none
  bool refused = false;  // a plug-in kept it as it was
};

// Whether the latest change was to this field and a plug-in did not let it through.
bool WasRefused(const ValueWatch& watch, FieldNode node);

}  // namespace quillon::app
