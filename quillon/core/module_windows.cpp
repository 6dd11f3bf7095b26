#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <filesystem>

#include "quillon/core/failure.h"
#include "quillon/core/module.h"

namespace quillon {

Module LoadModule(const std::string& file) {
  const std::filesystem::path place(std::u8string(file.begin(), file.end()));
  HMODULE handle = LoadLibraryW(std::filesystem::absolute(place).wstring().c_str());
  if (handle == nullptr) {
    Fail(kErrorOpenFile,
         "cannot load the plug-in " + file + ": system error " + std::to_string(GetLastError()));
  }
  return {handle, [](void* module) { FreeLibrary(static_cast<HMODULE>(module)); }};
}

PlugInMainRoutine FindPlugInMain(const Module& module) {
  const FARPROC routine = GetProcAddress(static_cast<HMODULE>(module.get()), kPlugInMainName);
  return reinterpret_cast<PlugInMainRoutine>(reinterpret_cast<Callback>(routine));
}

}  // namespace quillon
