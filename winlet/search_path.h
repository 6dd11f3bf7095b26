// Finding a file by its name.
#pragma once

#include "winlet/types.h"

// Looks for `fileName` in the current folder and then in those of the PATH environment variable;
// this layer knows no system folders, and neither folders (`path`) nor a default extension may be
// given. The length of the full path, which is put into `buffer`; a number above its `size` (in
// bytes) when it does not fit, 0 when there is no such file. `filePart`, unless null, gets the
// place of the name in the buffer.
DWORD SearchPathA(LPCSTR path, LPCSTR fileName, LPCSTR extension, DWORD size, LPSTR buffer,
                  LPSTR* filePart);
