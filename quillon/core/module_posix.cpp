#include <dlfcn.h>

#include "quillon/core/failure.h"
#include "quillon/core/module.h"

namespace quillon {

Module LoadModule(const std::string& file) {
  // Without a slash the name would be looked up in the system's library folders.
  const std::string place = file.find('/') == std::string::npos ? "./" + file : file;
  void* handle = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* reason = dlerror();
    Fail(kErrorOpenFile,
         "cannot load the plug-in: " + std::string(reason != nullptr ? reason : file.c_str()));
  }
  return {handle, [](void* module) { dlclose(module); }};
}

PlugInMainRoutine FindPlugInMain(const Module& module) {
  return reinterpret_cast<PlugInMainRoutine>(dlsym(module.get(), kPlugInMainName));
}

}  // namespace quillon
