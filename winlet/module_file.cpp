#include "winlet/module_file.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

// The program itself is known by the name it was started with, which may be no path at all.
std::string ModuleFile() {
  static const char inThisModule = 0;
  Dl_info info{};
  const bool known = dladdr(&inThisModule, &info) != 0 && info.dli_fname != nullptr;
  const std::string name = known ? info.dli_fname : "";
  std::error_code error;
  const bool isPath = name.find('/') != std::string::npos;
  const std::filesystem::path whole = isPath
                                          ? std::filesystem::absolute(name, error)
                                          : std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : whole.lexically_normal().string();
}

}  // namespace

DWORD GetModuleFileNameA(HMODULE, LPSTR buffer, DWORD size) {
  if (buffer == nullptr || size == 0) return 0;
  const std::string file = ModuleFile();
  const std::size_t length = std::min<std::size_t>(file.size(), size - 1);
  std::memcpy(buffer, file.data(), length);
  buffer[length] = '\0';
  return length < file.size() ? size : static_cast<DWORD>(length);
}

BOOL OemToCharA(LPCSTR oem, LPSTR ansi) {
  if (oem == nullptr || ansi == nullptr) return FALSE;
  std::memmove(ansi, oem, std::strlen(oem) + 1);
  return TRUE;
}
