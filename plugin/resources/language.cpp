#include "plugin/resources/language.h"

#include <cstring>

namespace quillform {

std::uint32_t FindLanguageOffset(const char* code, LoadStringRoutine load) {
  char blockCode[4];
  for (std::uint32_t offset = 0; load(kFirstLanguageString + offset, blockCode, sizeof blockCode);
       offset += kLanguageBlockSize) {
    if (code != nullptr && std::strcmp(code, blockCode) == 0) return offset;
  }
  return 0;
}

}  // namespace quillform
