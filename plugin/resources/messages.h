// Messages to the user, with texts from the string table.
#pragma once

#include <cstdint>

#include "plugin/host/win32.h"

namespace quillform {

// Shows string `stringId`, formatted with what follows as wvsprintfA does it (numbers are 32 bits
// wide, "%ld" too; texts are host text), and answers the button pressed: IDOK, IDYES and so on, 0
// when the platform could not show it. `typeFlags` is the icon (MB_ICON...), `buttonFlags` the
// buttons (MB_OK, MB_YESNO ...). A host without a screen answers in the user's place. The keyboard
// goes back to the window that had it.
int ShowMessage(UINT typeFlags, UINT buttonFlags, std::uint32_t stringId, ...);

}  // namespace quillform
