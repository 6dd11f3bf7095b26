#include "plugin/host/module_path.h"

#include <string>

#include "plugin/host/host.h"
#include "plugin/host/win32.h"

namespace quillform {

namespace {

constexpr DWORD kLongestModuleFile = 1024;

// Empty when it is not known or longer than all that make sense.
std::string ModuleFile() {
  char file[kLongestModuleFile];
  const DWORD length =
      GetModuleFileNameA(static_cast<HMODULE>(ModuleInstance), file, kLongestModuleFile);
  if (length == 0 || length >= kLongestModuleFile) return {};
  OemToCharA(file, file);
  return file;
}

}  // namespace

bool ModuleDirectoryPath(char* path, std::size_t size, const char* fileName) {
  if (size == 0) return false;
  path[0] = '\0';
  std::string whole = ModuleFile();
  const std::size_t separator = whole.find_last_of("\\/");
  if (separator == std::string::npos) return false;
  whole.resize(separator + (fileName != nullptr ? 1 : 0));
  if (fileName != nullptr) whole += fileName;
  if (whole.size() >= size) return false;
  path[whole.copy(path, size - 1)] = '\0';
  return true;
}

}  // namespace quillform
