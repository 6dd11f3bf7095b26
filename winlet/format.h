// Texts from a format and its arguments.
#pragma once

#include <cstdarg>

#include "winlet/types.h"

// Formats into a buffer of 1,024 bytes at least, cut to 1,023 characters; answers the characters
// put. Known are %c, %d, %i, %u, %x, %X, %s and %%, the flags "-", "#" and "0", width and
// precision in digits, and the sizes "h", "l" and "w". "l" is 32 bits wide, as LONG is. There are
// no floating-point numbers. A null text is "(null)". An unknown letter stands for itself.
int wvsprintfA(LPSTR buffer, LPCSTR format, va_list arguments);
