// Windows: where they are, and which one has the keyboard. Nothing is shown yet.
#pragma once

#include <cstddef>

#include "winlet/types.h"

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

#define SWP_NOSIZE 0x1u
#define SWP_NOMOVE 0x2u
#define SWP_NOZORDER 0x4u
#define SWP_NOACTIVATE 0x10u
#define WS_POPUP 0x80000000u
#define WM_INITDIALOG 0x110u
#define EM_SETSEL 0xB1u

using HMENU = struct HMENU__*;

// The screen is 1024 by 768.
inline constexpr LONG kWinletScreenWidth = 1024;
inline constexpr LONG kWinletScreenHeight = 768;

// A window of the size and place given; class, texts, styles and menu are not looked at. It is in
// screen coordinates whatever its parent.
HWND CreateWindowExA(DWORD extendedStyle, LPCSTR className, LPCSTR text, DWORD style, int left,
                     int top, int width, int height, HWND parent, HMENU menu, HINSTANCE module,
                     LPVOID data);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);

HWND GetDesktopWindow();
BOOL GetWindowRect(HWND window, RECT* rect);
// Windows have no order yet: `after` is not looked at.
BOOL SetWindowPos(HWND window, HWND after, int left, int top, int width, int height, UINT flags);

// No window has controls or takes messages yet: null, and 0.
HWND GetParent(HWND window);
HWND GetDlgItem(HWND dialog, int id);
LRESULT SendMessageA(HWND window, UINT message, WPARAM word, LPARAM extra);

// The window that had the keyboard before; null for none.
HWND SetFocus(HWND window);
HWND GetFocus();

namespace winlet {

// Made and not yet destroyed; tests look for leaks with it.
std::size_t LiveWindows();

}  // namespace winlet
