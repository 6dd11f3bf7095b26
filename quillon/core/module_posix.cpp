#include <dlfcn.h>

#include <filesystem>
#include <system_error>

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
         "cannot load the module: " + std::string(reason != nullptr ? reason : file.c_str()));
  }
  return {handle, [](void* module) { dlclose(module); }};
}

Callback FindRoutine(const Module& module, const char* name) {
  return reinterpret_cast<Callback>(dlsym(module.get(), name));
}

std::string FileBesideProgram(const char* name) {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) Fail(kErrorOpenFile, "the program cannot find its own folder: " + error.message());
  return (program.parent_path() / name).string();
}

PlugInMainRoutine FindPlugInMain(const Module& module) {
  return reinterpret_cast<PlugInMainRoutine>(FindRoutine(module, kPlugInMainName));
}

}  // namespace quillon
