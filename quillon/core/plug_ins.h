// Plug-ins as the host's end handles them.
#pragma once

namespace quillon {

// Calls the unload callbacks, newest first; failures are reported.
void UnloadPlugIns();

// Lets go of the plug-ins and their modules. Nothing may call their routines afterwards.
void ForgetPlugIns();

}  // namespace quillon
