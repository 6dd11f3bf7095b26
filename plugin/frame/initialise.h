// Start-up: everything that the plug-in registers with the host, in a fixed order.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Runs the steps; 0 when a step that the rest cannot do without has failed. Nothing is undone then:
// unloading releases what there is. What the host raises reaches the host.
Boolean PlugInInit();

// The step that ended the latest initialisation, null when all ran.
const char* FailedInitStep();

}  // namespace quillform
