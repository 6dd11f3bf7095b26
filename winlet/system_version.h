// Which system this is.
#pragma once

#include "winlet/types.h"

#define VER_PLATFORM_WIN32_WINDOWS 1
#define VER_PLATFORM_WIN32_NT 2

struct OSVERSIONINFOA {
  DWORD dwOSVersionInfoSize;
  DWORD dwMajorVersion;
  DWORD dwMinorVersion;
  DWORD dwBuildNumber;
  DWORD dwPlatformId;
  char szCSDVersion[128];
};

// This layer takes itself for the first system whose user interface had the names it offers:
// version 4 of the platform VER_PLATFORM_WIN32_NT. False for a record of another size.
BOOL GetVersionExA(OSVERSIONINFOA* version);
