#include "winlet/registry.h"

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "winlet/registry_file.h"

namespace {

// The path of each open key below its root.
std::map<HKEY, std::unique_ptr<std::string>>& OpenKeys() {
  static std::map<HKEY, std::unique_ptr<std::string>> keys;
  return keys;
}

std::optional<std::string> PathOf(HKEY key) {
  if (key == HKEY_CURRENT_USER) return std::string();
  const auto found = OpenKeys().find(key);
  if (found == OpenKeys().end()) return std::nullopt;
  return *found->second;
}

}  // namespace

LSTATUS RegCreateKeyExA(HKEY parent, LPCSTR name, DWORD, LPSTR, DWORD, REGSAM, void*, HKEY* key,
                        DWORD*) {
  std::optional<std::string> path = PathOf(parent);
  if (!path) return ERROR_INVALID_HANDLE;
  if (name == nullptr || key == nullptr) return ERROR_INVALID_PARAMETER;
  if (!winlet::LoadRegistry()) return ERROR_ACCESS_DENIED;
  if (!path->empty() && name[0] != '\0') path->push_back('\\');
  path->append(name);
  auto made = std::make_unique<std::string>(std::move(*path));
  *key = reinterpret_cast<HKEY>(made.get());
  OpenKeys().emplace(*key, std::move(made));
  return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY key) {
  return OpenKeys().erase(key) == 1 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LSTATUS RegQueryValueA(HKEY key, LPCSTR subkey, LPSTR text, LONG* size) {
  const std::optional<std::string> path = PathOf(key);
  if (!path) return ERROR_INVALID_HANDLE;
  if (subkey == nullptr || size == nullptr) return ERROR_INVALID_PARAMETER;
  const auto settings = winlet::LoadRegistry();
  if (!settings) return ERROR_BADDB;
  const winlet::RegistrySetting* setting = winlet::FindSetting(*settings, *path, subkey);
  if (setting == nullptr) return ERROR_FILE_NOT_FOUND;
  const LONG room = *size;
  *size = static_cast<LONG>(setting->text.size()) + 1;
  if (text == nullptr) return ERROR_SUCCESS;
  if (room < *size) return ERROR_MORE_DATA;
  std::memcpy(text, setting->text.c_str(), static_cast<std::size_t>(*size));
  return ERROR_SUCCESS;
}

LSTATUS RegSetValueA(HKEY key, LPCSTR subkey, DWORD type, LPCSTR text, DWORD) {
  const std::optional<std::string> path = PathOf(key);
  if (!path) return ERROR_INVALID_HANDLE;
  const bool fits = subkey != nullptr && subkey[0] != '\0' && text != nullptr && type == REG_SZ;
  if (!fits) return ERROR_INVALID_PARAMETER;
  return winlet::StoreSetting({*path, subkey, text}) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

namespace winlet {

std::size_t LiveKeys() { return OpenKeys().size(); }

}  // namespace winlet
