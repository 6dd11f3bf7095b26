// What the host's action dialogs say about form actions. Texts are host text.
#pragma once

#include <string>

#include "plugin/host/host.h"

namespace quillform {

// A text callback copies its text into `buffer` (cut to size - 1 bytes, NUL-terminated) and answers
// the length of what it copied. Without a buffer the text counts as cut to kActionTextSize - 1.
using ActionTextProc = std::uint32_t (*)(ActionHandle action, char* buffer, std::uint32_t size);

inline constexpr std::uint32_t kActionTextSize = 257;

// The callbacks of one type of action; null for texts that it does not have.
struct ActionTexts {
  ActionTextProc typeDescription;
  ActionTextProc buttonLabel;
  ActionTextProc firstLine;
  ActionTextProc secondLine;
};

// Made for the host, anew at each call.
ActionTexts MakeSubmitFormTexts();
ActionTexts MakeResetFormTexts();
ActionTexts MakeImportDataTexts();
ActionTexts MakeHideTexts();
ActionTexts MakeSetStateTexts();

}  // namespace quillform
