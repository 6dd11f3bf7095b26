#include "winlet/system_colours.h"

DWORD WINAPI GetSysColor(int index) {
  switch (index) {
    case COLOR_HIGHLIGHT:
      return 0x00D77800;
    case COLOR_HIGHLIGHTTEXT:
      return 0x00FFFFFF;
    default:
      return 0;
  }
}
