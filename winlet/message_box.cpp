#include "winlet/message_box.h"

#include <cstdio>

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT) {
  std::fprintf(stderr, "%s: %s\n", caption != nullptr ? caption : "Error",
               text != nullptr ? text : "");
  return 0;
}
