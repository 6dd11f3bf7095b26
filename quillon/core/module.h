// Loadable modules of the operating system.
#pragma once

#include <memory>
#include <string>

#include "sdk/entry.h"

namespace quillon {

// A loaded module: the system's handle; the last owner unloads it.
using Module = std::shared_ptr<void>;

// `file` is UTF-8. Throws HostFailure (kErrorOpenFile) with the system's explanation.
Module LoadModule(const std::string& file);

// The module's PlugInMain, null when it exports none.
PlugInMainRoutine FindPlugInMain(const Module& module);

}  // namespace quillon
