// Where the module lies.
#pragma once

#include "winlet/types.h"

// The file of the module (or program) that this layer is linked into, whatever `module` says; cut
// to the buffer, the answer then being `size`. Folders are separated by slashes.
DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);

// There is one character set only: a copy.
BOOL OemToCharA(LPCSTR oem, LPSTR ansi);
