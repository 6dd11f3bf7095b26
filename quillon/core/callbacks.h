// Which callbacks are alive, and whose they are.
#pragma once

#include <cstddef>

#include "sdk/types.h"

namespace quillon {

// Callbacks made and not freed yet, of one plug-in and of all.
std::size_t LiveCallbackCount(ExtensionId extension);
std::size_t LiveCallbackCount();

// At the end of the host, after the plug-ins are unloaded.
void ForgetCallbacks();

}  // namespace quillon
