// Messages to the user.
#pragma once

#include "winlet/types.h"

#define MB_OK 0x0u
#define MB_OKCANCEL 0x1u
#define MB_ABORTRETRYIGNORE 0x2u
#define MB_YESNOCANCEL 0x3u
#define MB_YESNO 0x4u
#define MB_RETRYCANCEL 0x5u
#define MB_ICONHAND 0x10u
#define MB_ICONSTOP 0x10u
#define MB_ICONQUESTION 0x20u
#define MB_ICONEXCLAMATION 0x30u
#define MB_ICONINFORMATION 0x40u
#define MB_TASKMODAL 0x2000u

#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

// This layer has no screen to show a box on: the caption and the text go to the standard error
// stream, and 0, the answer of a box that could not be made, comes back.
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT flags);
