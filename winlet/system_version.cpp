#include "winlet/system_version.h"

BOOL GetVersionExA(OSVERSIONINFOA* version) {
  if (version == nullptr || version->dwOSVersionInfoSize != sizeof *version) return FALSE;
  *version = {sizeof *version, 4, 0, 0, VER_PLATFORM_WIN32_NT, ""};
  return TRUE;
}
