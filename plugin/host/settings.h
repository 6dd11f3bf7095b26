// The user's settings: in the current user's registry below Software\Vantrel\Quillon\QuillForm\1.0.
// A section is a subkey there, a setting a subkey of its section whose unnamed value is a text
// (plugin/host/settings_text.h). Nothing here raises on account of the registry: what cannot be
// opened reads as nothing and takes no writes.
#pragma once

#include <cstdint>

#include "plugin/host/host.h"
#include "plugin/host/settings_text.h"
#include "plugin/host/win32.h"

namespace quillform {

struct SettingsStore {
  HKEY key;  // of the section, null for none
};

// A setting of that name, rather than one of several by number ("Name-0", "Name-1").
inline constexpr std::uint16_t kNotIndexed = 0xFFFF;

// Without a section yet; null when memory runs out. The other routines take a null store as one
// without a key.
SettingsStore* SettingsOpen();

// Leaves the section that was open. The section is made when it is missing.
void SettingsSelectSection(SettingsStore* store, const char* section);

// Whether the setting is there and not empty; only then are the targets filled. A text of more than
// 255 bytes cannot be read.
bool SettingsRead(SettingsStore* store, const char* name, std::uint16_t index, const char* format,
                  SettingTargets targets);
void SettingsWrite(SettingsStore* store, const char* name, std::uint16_t index, const char* format,
                   SettingValues values);

void SettingsClose(SettingsStore* store);

// A store with one section, for its own lifetime.
struct SettingsSection {
  // Through the other constructor, so that the store is closed when the section cannot be opened.
  explicit SettingsSection(const char* section) : SettingsSection() {
    SettingsSelectSection(store, section);
  }
  ~SettingsSection() { SettingsClose(store); }
  SettingsSection(const SettingsSection&) = delete;
  SettingsSection& operator=(const SettingsSection&) = delete;

  SettingsStore* store;

 private:
  SettingsSection() : store(SettingsOpen()) {}
};

// Whether a log is wanted: "General", "Debug".
bool ReadDebugSetting();

// The three-letter code of "General", "Language"; the buffer is untouched when there is none.
inline constexpr std::uint16_t kLanguageCodeSize = 4;
void ReadLanguageSetting(char* buffer);

}  // namespace quillform
