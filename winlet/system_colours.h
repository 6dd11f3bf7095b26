// The colours of the user interface. Here they are fixed; the real ones follow the user's settings.
#pragma once

#include "winlet/types.h"

#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14

// 0x00BBGGRR. Knows the two colours of selected items; 0 for any other index.
DWORD WINAPI GetSysColor(int index);
