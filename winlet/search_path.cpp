#include "winlet/search_path.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace {

// An entry of PATH that is empty means the current folder.
std::string FullPathIn(std::string_view folder, LPCSTR fileName) {
  std::error_code error;
  const std::filesystem::path full =
      std::filesystem::absolute(std::filesystem::path(folder) / fileName, error);
  if (error || !std::filesystem::is_regular_file(full, error)) return {};
  return full.lexically_normal().string();
}

std::string Find(LPCSTR fileName) {
  std::string found = FullPathIn("", fileName);
  const char* const variable = std::getenv("PATH");
  std::string_view folders = variable != nullptr ? variable : "";
  while (found.empty() && !folders.empty()) {
    const std::size_t end = folders.find(':');
    found = FullPathIn(folders.substr(0, end), fileName);
    folders.remove_prefix(end == std::string_view::npos ? folders.size() : end + 1);
  }
  return found;
}

}  // namespace

DWORD SearchPathA(LPCSTR path, LPCSTR fileName, LPCSTR extension, DWORD size, LPSTR buffer,
                  LPSTR* filePart) {
  if (path != nullptr || extension != nullptr || fileName == nullptr || *fileName == '\0') return 0;
  const std::string found = Find(fileName);
  if (found.empty()) return 0;
  if (found.size() >= size) return static_cast<DWORD>(found.size() + 1);
  std::memcpy(buffer, found.c_str(), found.size() + 1);
  if (filePart != nullptr) *filePart = buffer + found.rfind('/') + 1;
  return static_cast<DWORD>(found.size());
}
