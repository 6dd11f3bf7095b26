// The platform's user-interface calls: the real ones on Windows, the module's own layer elsewhere.
// This is the only place that chooses.
#pragma once

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// After windows.h, which it needs.
#include <commdlg.h>
// The host's tables have operations of these names.
#undef DeleteFile
#else
#include "winlet/winlet.h"
#endif
