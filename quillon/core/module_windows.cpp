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
         "cannot load the module " + file + ": system error " + std::to_string(GetLastError()));
  }
  return {handle, [](void* module) { FreeLibrary(static_cast<HMODULE>(module)); }};
}

Callback FindRoutine(const Module& module, const char* name) {
  return reinterpret_cast<Callback>(GetProcAddress(static_cast<HMODULE>(module.get()), name));
}

PlugInMainRoutine FindPlugInMain(const Module& module) {
  return reinterpret_cast<PlugInMainRoutine>(FindRoutine(module, kPlugInMainName));
}

std::string FileBesideProgram(const char* name) {
  wchar_t program[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, program, MAX_PATH);
  if (length == 0 || length == MAX_PATH) {
    Fail(kErrorOpenFile, "the program cannot find its own folder");
  }
  const std::u8string place = (std::filesystem::path(program).parent_path() / name).u8string();
  return {place.begin(), place.end()};
}

}  // namespace quillon
