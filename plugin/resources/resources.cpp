#include "plugin/resources/resources.h"

#include "plugin/host/host.h"
#include "plugin/host/win32.h"
#include "plugin/resources/language.h"

namespace quillform {

namespace {

HMODULE Module() { return static_cast<HMODULE>(ModuleInstance); }

std::size_t LoadModuleString(std::uint32_t id, char* buffer, std::size_t size) {
  if (size == 0) return 0;
  buffer[0] = '\0';
  const int length = LoadStringA(Module(), id, buffer, static_cast<int>(size));
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

// The language is asked for once and then kept.
std::uint32_t LanguageOffset() {
  static const std::uint32_t offset = FindLanguageOffset(Viewer->GetLanguage(), &LoadModuleString);
  return offset;
}

}  // namespace

std::size_t LoadLocalString(std::uint32_t id, char* buffer, std::size_t size) {
  if (id >= kFirstLanguageString) {
    const std::size_t length = LoadModuleString(id + LanguageOffset(), buffer, size);
    if (length > 0) return length;
  }
  return LoadModuleString(id, buffer, size);
}

ResourceBytes FindDataResource(const char* name) {
  constexpr int kRawData = 10;
  const HRSRC found = FindResourceA(Module(), name, MAKEINTRESOURCEA(kRawData));
  if (found == nullptr) return {nullptr, 0};
  const HGLOBAL loaded = LoadResource(Module(), found);
  return {static_cast<const unsigned char*>(LockResource(loaded)), SizeofResource(Module(), found)};
}

}  // namespace quillform
