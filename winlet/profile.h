// Private profile files: "[section]", then "key=text" lines.
#pragma once

#include "winlet/types.h"

// The text of a key, cut to size - 1 characters and NUL-terminated, or `otherwise` (null for the
// empty text) when there is none; answers its length. Sections and keys compare without regard to
// the case of letters; blanks around texts, and one pair of quotation marks, do not count; lines
// that start with ";" say nothing. Of what is there twice the first one counts. A file without a
// folder in its name is looked for in the folder of the user's settings (registry_file.h). Neither
// `section` nor `key` may be null: this layer lists none, and answers as if there were none.
DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR otherwise, LPSTR buffer,
                               DWORD size, LPCSTR file);
