// Data that came from outside for the viewer's data handlers: it waits until the viewer is idle.
#pragma once

#include <cstddef>

namespace quillon {

struct DeliveryCount {
  std::size_t used;     // whose handler answered true
  std::size_t refused;  // whose handler answered false or raised, which is reported
};

// Hands over all that waits, what comes in meanwhile included. Call it where nothing is running:
// after an action, between events.
DeliveryCount DeliverWaitingData();

void ForgetDeliveries();

}  // namespace quillon
