#include "tests/plugin/host/settings_sandbox.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "plugin/host/win32.h"

namespace quillform {
namespace {

#if defined(_WIN32)

std::string KeyOfTests() {
  return "Software\\QuillFormTests" + std::to_string(GetCurrentProcessId());
}

void UseOwnSettings() {
  HKEY key = nullptr;
  RegCreateKeyExA(HKEY_CURRENT_USER, KeyOfTests().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                  &key, nullptr);
  RegOverridePredefKey(HKEY_CURRENT_USER, key);
  RegCloseKey(key);
}

void RemoveOwnSettings() {
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  RegDeleteTreeA(HKEY_CURRENT_USER, KeyOfTests().c_str());
}

#else

std::filesystem::path folder;

void UseOwnSettings() {
  std::string name = (std::filesystem::temp_directory_path() / "quillform-XXXXXX").string();
  ASSERT_NE(mkdtemp(name.data()), nullptr);
  folder = name;
  setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
}

void RemoveOwnSettings() { std::filesystem::remove_all(folder); }

#endif

struct OwnSettings : testing::Environment {
  void SetUp() override { UseOwnSettings(); }
  void TearDown() override { RemoveOwnSettings(); }
};

const testing::Environment* const ownSettings = testing::AddGlobalTestEnvironment(new OwnSettings);

struct SectionKey {
  explicit SectionKey(const std::string& section) : key(nullptr) {
    const std::string path = "Software\\Vantrel\\Quillon\\QuillForm\\1.0\\" + section;
    RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                    KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
  }
  ~SectionKey() { RegCloseKey(key); }
  SectionKey(const SectionKey&) = delete;
  SectionKey& operator=(const SectionKey&) = delete;

  HKEY key;
};

}  // namespace

void ClearSettings() {
  RemoveOwnSettings();
  UseOwnSettings();
}

void StoreSettingText(const std::string& section, const std::string& name,
                      const std::string& text) {
  const SectionKey sectionKey(section);
  EXPECT_EQ(RegSetValueA(sectionKey.key, name.c_str(), REG_SZ, text.c_str(),
                         static_cast<DWORD>(text.size())),
            ERROR_SUCCESS);
}

}  // namespace quillform
