#include "winlet/resources.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>

#include "winlet/code_page.h"
#include "winlet/res_file.h"

// The module's compiled resources, put next to this layer by the build; absent (null) in a module
// without any.
extern "C" {
__attribute__((weak, visibility("hidden"))) extern const unsigned char winletResourcesBegin[];
__attribute__((weak, visibility("hidden"))) extern const unsigned char winletResourcesEnd[];
}

namespace {

winlet::ResBytes ModuleResources() {
  const unsigned char* begin = winletResourcesBegin;
  if (begin == nullptr) return {};
  return {begin, static_cast<std::size_t>(winletResourcesEnd - begin)};
}

// A pointer below 0x10000 is a number; "#123" is the number in text.
winlet::ResName NameOf(LPCSTR name) {
  const auto word = reinterpret_cast<std::uintptr_t>(name);
  if (word <= 0xFFFF) return {static_cast<std::uint16_t>(word), {}};
  if (name[0] == '#') return {static_cast<std::uint16_t>(std::atoi(name + 1)), {}};
  winlet::ResName text{0, {}};
  for (; *name != '\0'; ++name) text.text.push_back(winlet::FromWindows1252(*name));
  return text;
}

// A resource handle is the address of its data in the module; the sizes are remembered here.
std::map<const void*, DWORD>& FoundSizes() {
  static std::map<const void*, DWORD> sizes;
  return sizes;
}

}  // namespace

HRSRC FindResourceA(HMODULE, LPCSTR name, LPCSTR type) {
  const auto data = winlet::FindResData(ModuleResources(), NameOf(type), NameOf(name));
  if (!data) return nullptr;
  FoundSizes()[data->data()] = static_cast<DWORD>(data->size());
  return reinterpret_cast<HRSRC>(const_cast<unsigned char*>(data->data()));
}

HGLOBAL LoadResource(HMODULE, HRSRC resource) { return resource; }

LPVOID LockResource(HGLOBAL resource) { return resource; }

DWORD SizeofResource(HMODULE, HRSRC resource) {
  const auto found = FoundSizes().find(resource);
  return found == FoundSizes().end() ? 0 : found->second;
}

int LoadStringA(HINSTANCE, UINT id, LPSTR buffer, int size) {
  if (buffer == nullptr || size <= 0) return 0;
  buffer[0] = '\0';
  if (id > 0xFFFF) return 0;
  const winlet::ResName block{static_cast<std::uint16_t>(id / 16 + 1), {}};
  const auto data = winlet::FindResData(ModuleResources(), {winlet::kResTypeString, {}}, block);
  if (!data) return 0;
  const std::string text = winlet::ToWindows1252(winlet::StringInBlock(*data, id % 16));
  const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}
