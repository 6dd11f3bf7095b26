#include "plugin/host/settings.h"

#include <algorithm>

namespace quillform {

namespace {

constexpr const char* kBaseKeyLevels[] = {"Software", "Vantrel", "Quillon", "QuillForm", "1.0"};
constexpr const char* kStartUpSection = "General";
constexpr LONG kLongestText = 256;

// A key for its own lifetime.
struct OwnedKey {
  explicit OwnedKey(HKEY key) : key(key) {}
  ~OwnedKey() {
    if (key != nullptr) RegCloseKey(key);
  }
  OwnedKey(const OwnedKey&) = delete;
  OwnedKey& operator=(const OwnedKey&) = delete;

  HKEY key;
};

// Null when it can neither be opened nor made.
HKEY OpenKey(HKEY parent, const char* name) {
  HKEY key = nullptr;
  const LSTATUS status = RegCreateKeyExA(parent, name, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
  return status == ERROR_SUCCESS ? key : nullptr;
}

HKEY OpenBaseKey() {
  HKEY key = HKEY_CURRENT_USER;
  for (const char* level : kBaseKeyLevels) {
    const OwnedKey parent(key == HKEY_CURRENT_USER ? nullptr : key);
    key = OpenKey(key, level);
    if (key == nullptr) return nullptr;
  }
  return key;
}

std::string SettingName(const char* name, std::uint16_t index) {
  if (index == kNotIndexed) return name;
  return std::string(name) + "-" + std::to_string(index);
}

bool HasKey(const SettingsStore* store) { return store != nullptr && store->key != nullptr; }

void CloseKey(SettingsStore* store) {
  if (store->key != nullptr) RegCloseKey(store->key);
  store->key = nullptr;
}

}  // namespace

SettingsStore* SettingsOpen() {
  void* block = Support->Alloc(sizeof(SettingsStore));
  return block != nullptr ? new (block) SettingsStore{} : nullptr;
}

void SettingsSelectSection(SettingsStore* store, const char* section) {
  if (store == nullptr) return;
  CloseKey(store);
  const OwnedKey base(OpenBaseKey());
  if (base.key != nullptr) store->key = OpenKey(base.key, section);
}

bool SettingsRead(SettingsStore* store, const char* name, std::uint16_t index, const char* format,
                  SettingTargets targets) {
  if (!HasKey(store)) return false;
  char text[kLongestText];
  LONG size = kLongestText;
  if (RegQueryValueA(store->key, SettingName(name, index).c_str(), text, &size) != ERROR_SUCCESS) {
    return false;
  }
  // Other programs may have stored a text without its NUL.
  const char* end = std::find(text, text + std::clamp(size, LONG{0}, kLongestText), '\0');
  if (end == text) return false;
  ReadSettingText({text, end}, format, targets);
  return true;
}

void SettingsWrite(SettingsStore* store, const char* name, std::uint16_t index, const char* format,
                   SettingValues values) {
  if (!HasKey(store)) return;
  const std::string text = MakeSettingText(format, values);
  RegSetValueA(store->key, SettingName(name, index).c_str(), REG_SZ, text.c_str(),
               static_cast<DWORD>(text.size()));
}

void SettingsClose(SettingsStore* store) {
  if (store == nullptr) return;
  CloseKey(store);
  Support->Free(store);
}

bool ReadDebugSetting() {
  const SettingsSection section(kStartUpSection);
  Boolean debug = 0;
  return SettingsRead(section.store, "Debug", kNotIndexed, "b", {&debug}) && debug != 0;
}

void ReadLanguageSetting(char* buffer) {
  const SettingsSection section(kStartUpSection);
  SettingsRead(section.store, "Language", kNotIndexed, "s",
               {SettingText{buffer, kLanguageCodeSize}});
}

}  // namespace quillform
