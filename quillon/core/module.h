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

// An exported routine of the module by name; null when it exports none.
Callback FindRoutine(const Module& module, const char* name);

// The module's PlugInMain, null when it exports none.
PlugInMainRoutine FindPlugInMain(const Module& module);

// The path of a file in the folder of the running program.
std::string FileBesideProgram(const char* name);

}  // namespace quillon
