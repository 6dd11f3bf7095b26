// The registry, as far as settings need it: subkeys with an unnamed text.
#pragma once

#include "winlet/types.h"

using HKEY = struct HKEY__*;
using REGSAM = DWORD;
using LSTATUS = LONG;

#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(0x80000001u)))

#define ERROR_SUCCESS 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_MORE_DATA 234L
#define ERROR_BADDB 1009L

#define REG_SZ 1u
#define REG_OPTION_NON_VOLATILE 0u
#define KEY_READ 0x20019u
#define KEY_WRITE 0x20006u

// Settings live in a text file of the user (winlet/registry_file.h), which is read at every query,
// so that changes by others are seen. A key exists as soon as it is asked for, and leaves no trace
// in the file while nothing is stored below it. HKEY_CURRENT_USER is the only root; the class,
// options, access and security of a key are not looked at.
LSTATUS RegCreateKeyExA(HKEY parent, LPCSTR name, DWORD reserved, LPSTR className, DWORD options,
                        REGSAM access, void* security, HKEY* key, DWORD* disposition);
LSTATUS RegCloseKey(HKEY key);

// The text of a subkey. `size` is the room in bytes, then the bytes with the NUL; too little room
// is ERROR_MORE_DATA. A subkey that is not there is ERROR_FILE_NOT_FOUND.
LSTATUS RegQueryValueA(HKEY key, LPCSTR subkey, LPSTR text, LONG* size);
// `type` is REG_SZ; the text ends at its NUL.
LSTATUS RegSetValueA(HKEY key, LPCSTR subkey, DWORD type, LPCSTR text, DWORD length);

namespace winlet {

// Made and not yet closed; tests look for leaks with it.
std::size_t LiveKeys();

}  // namespace winlet
