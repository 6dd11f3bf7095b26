// Replaced slots, as the host's end handles them.
#pragma once

namespace quillon {

// Puts back what stood in every replaced slot before the first replacement. Called when the
// plug-ins are unloaded: their routines are about to go.
void RestoreSlots();

}  // namespace quillon
