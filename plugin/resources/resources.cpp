#include "plugin/resources/resources.h"

#include <string>

#include "plugin/host/host.h"
#include "plugin/host/settings.h"
#include "plugin/host/win32.h"
#include "plugin/resources/language.h"

namespace quillform {

namespace {

constexpr std::uint32_t kDialogsOfALanguage = 1000;

// The types of resources, by their numbers.
constexpr WORD kDialogResource = 5;
constexpr WORD kDataResource = 10;

HMODULE Module() { return static_cast<HMODULE>(ModuleInstance); }

std::size_t LoadModuleString(std::uint32_t id, char* buffer, std::size_t size) {
  if (size == 0) return 0;
  buffer[0] = '\0';
  const int length = LoadStringA(Module(), id, buffer, static_cast<int>(size));
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

// The host's language, unless the user's settings name another.
std::uint32_t FindOffset() {
  const char* hostCode = Viewer->GetLanguage();
  std::string code = hostCode != nullptr ? hostCode : "";
  char ownCode[kLanguageCodeSize] = "";
  ReadLanguageSetting(ownCode);
  if (ownCode[0] != '\0') code = ownCode;
  return FindLanguageOffset(code.c_str(), &LoadModuleString);
}

}  // namespace

std::uint32_t LanguageOffset() {
  static const std::uint32_t offset = FindOffset();
  return offset;
}

std::uint32_t LocalDialogId(std::uint32_t id) {
  if (id < kDialogsOfALanguage) return id;
  const std::uint32_t local = kDialogsOfALanguage * (LanguageOffset() / kLanguageBlockSize) + id;
  const HRSRC found =
      FindResourceA(Module(), MAKEINTRESOURCEA(local), MAKEINTRESOURCEA(kDialogResource));
  return found != nullptr ? local : id;
}

std::size_t LoadLocalString(std::uint32_t id, char* buffer, std::size_t size) {
  if (id >= kFirstLanguageString) {
    const std::size_t length = LoadModuleString(id + LanguageOffset(), buffer, size);
    if (length > 0) return length;
  }
  return LoadModuleString(id, buffer, size);
}

ResourceBytes FindDataResource(const char* name) {
  const HRSRC found = FindResourceA(Module(), name, MAKEINTRESOURCEA(kDataResource));
  if (found == nullptr) return {nullptr, 0};
  const HGLOBAL loaded = LoadResource(Module(), found);
  return {static_cast<const unsigned char*>(LockResource(loaded)), SizeofResource(Module(), found)};
}

}  // namespace quillform
