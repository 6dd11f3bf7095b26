#include "plugin/host/window_position.h"

#include "plugin/host/settings.h"

namespace quillform {

namespace {

constexpr const char* kPositionsSection = "Positions";

struct Size {
  int width;
  int height;
};

Size SizeOf(const RECT& rect) { return {rect.right - rect.left, rect.bottom - rect.top}; }

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

void MoveTo(HWND window, int left, int top) {
  SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

Size ScreenSize() {
  const HDC screen = GetDC(nullptr);
  const Size size{GetDeviceCaps(screen, HORZRES), GetDeviceCaps(screen, VERTRES)};
  ReleaseDC(nullptr, screen);
  return size;
}

void KeepOnScreen(HWND window) {
  const RECT place = PlaceOf(window);
  const Size size = SizeOf(place);
  const Size screen = ScreenSize();
  MoveTo(window, EdgeOnScreen(place.left, size.width, screen.width),
         EdgeOnScreen(place.top, size.height, screen.height));
}

}  // namespace

void SaveWindowPosition(HWND window, const char* name) {
  RECT place{};
  if (!GetWindowRect(window, &place)) return;
  const SettingsSection positions(kPositionsSection);
  SettingsWrite(positions.store, name, kNotIndexed, "dd",
                {static_cast<std::int16_t>(place.left), static_cast<std::int16_t>(place.top)});
}

void RestoreWindowPosition(HWND window, const char* name) {
  std::int16_t left = 0;
  std::int16_t top = 0;
  const SettingsSection positions(kPositionsSection);
  if (SettingsRead(positions.store, name, kNotIndexed, "dd", {&left, &top})) {
    MoveTo(window, left, top);
  } else {
    CenterWindow(window);
  }
  KeepOnScreen(window);
}

void CenterWindow(HWND window) {
  const Size desktop = SizeOf(PlaceOf(GetDesktopWindow()));
  const Size size = SizeOf(PlaceOf(window));
  MoveTo(window, (desktop.width - size.width) / 2, (desktop.height - size.height) / 2);
}

int EdgeOnScreen(int edge, int windowSize, int screenSize) {
  if (edge < 0) return 0;
  return edge > screenSize ? screenSize - windowSize : edge;
}

}  // namespace quillform
