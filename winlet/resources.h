// Resources of the module: raw data and strings.
#pragma once

#include "winlet/types.h"

// A number where a name is expected.
#define MAKEINTRESOURCEA(i) \
  (reinterpret_cast<LPSTR>(static_cast<std::uintptr_t>(static_cast<WORD>(i))))

// The module handle is not looked at: this layer knows the resources of the module that it is
// linked into and no others. Of several languages the first one in the file is taken.
HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL resource);
DWORD SizeofResource(HMODULE module, HRSRC resource);

// Characters outside Windows-1252 become '?'; the real one may choose a similar character.
int LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size);
