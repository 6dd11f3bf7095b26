// Texts as the user interface orders them.
#pragma once

#include "winlet/types.h"

// Compare as an English dictionary does: other signs before digits before letters; letters without
// regard to accents and case, then accents, then small before capital letters; hyphens and
// apostrophes count only between texts that are otherwise the same. lstrcmpiA leaves case out. A
// null text is smaller than any other. The real ones follow the user's locale.
int lstrcmpA(LPCSTR a, LPCSTR b);
int lstrcmpiA(LPCSTR a, LPCSTR b);
