#include "winlet/windows.h"

#include <map>
#include <memory>

namespace {

struct Window {
  RECT place;
};

std::map<HWND, std::unique_ptr<Window>>& Windows() {
  static std::map<HWND, std::unique_ptr<Window>> windows;
  return windows;
}

HWND focus = nullptr;

Window* FindWindowRecord(HWND window) {
  const auto found = Windows().find(window);
  return found == Windows().end() ? nullptr : found->second.get();
}

}  // namespace

HWND CreateWindowExA(DWORD, LPCSTR, LPCSTR, DWORD, int left, int top, int width, int height, HWND,
                     HMENU, HINSTANCE, LPVOID) {
  auto made = std::make_unique<Window>(Window{{left, top, left + width, top + height}});
  const auto handle = reinterpret_cast<HWND>(made.get());
  Windows().emplace(handle, std::move(made));
  return handle;
}

BOOL DestroyWindow(HWND window) {
  if (focus == window) focus = nullptr;
  return Windows().erase(window) == 1 ? TRUE : FALSE;
}

BOOL IsWindow(HWND window) {
  return FindWindowRecord(window) != nullptr || window == GetDesktopWindow() ? TRUE : FALSE;
}

HWND GetDesktopWindow() {
  static char desktop;
  return reinterpret_cast<HWND>(&desktop);
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  if (window == GetDesktopWindow()) {
    *rect = {0, 0, kWinletScreenWidth, kWinletScreenHeight};
    return TRUE;
  }
  const Window* record = FindWindowRecord(window);
  if (record == nullptr) return FALSE;
  *rect = record->place;
  return TRUE;
}

BOOL SetWindowPos(HWND window, HWND, int left, int top, int width, int height, UINT flags) {
  Window* record = FindWindowRecord(window);
  if (record == nullptr) return FALSE;
  RECT& place = record->place;
  if ((flags & SWP_NOSIZE) != 0) {
    width = place.right - place.left;
    height = place.bottom - place.top;
  }
  if ((flags & SWP_NOMOVE) != 0) {
    left = place.left;
    top = place.top;
  }
  place = {left, top, left + width, top + height};
  return TRUE;
}

HWND GetParent(HWND) { return nullptr; }

HWND GetDlgItem(HWND, int) { return nullptr; }

LRESULT SendMessageA(HWND, UINT, WPARAM, LPARAM) { return 0; }

HWND SetFocus(HWND window) {
  if (window != nullptr && FindWindowRecord(window) == nullptr) return nullptr;
  const HWND before = focus;
  focus = window;
  return before;
}

HWND GetFocus() { return focus; }

namespace winlet {

std::size_t LiveWindows() { return Windows().size(); }

}  // namespace winlet
