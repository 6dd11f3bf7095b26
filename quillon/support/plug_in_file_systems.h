// File systems that plug-ins provide.
#pragma once

namespace quillon {

// At the end of the host, when the plug-ins are unloaded: their file systems are gone, and files of
// theirs that are still open read nothing and take nothing.
void RemovePlugInFileSystems();

}  // namespace quillon
