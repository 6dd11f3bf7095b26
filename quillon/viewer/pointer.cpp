#include "quillon/viewer/pointer.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <utility>

#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_record.h"

namespace quillon {
namespace {

struct Pointer {
  MouseState mouse{0, 0, false};
  std::deque<MouseState> coming;
  std::uint16_t cursor = 0;
};

Pointer pointer;
WaitForMouseRoutine waitForMouse = nullptr;
ShowCursorRoutine showCursor = nullptr;

enum Corner : std::uint16_t {
  kWhole = 0,
  kTopLeft = 1,
  kTopRight = 2,
  kBottomRight = 3,
  kBottomLeft = 4,
};

void NextMouse() {
  if (!pointer.coming.empty()) {
    pointer.mouse = pointer.coming.front();
    pointer.coming.pop_front();
  } else if (waitForMouse != nullptr) {
    pointer.mouse = waitForMouse();
  } else {
    pointer.mouse.down = false;
  }
}

std::int16_t Moved(std::int16_t edge, int by) {
  return static_cast<std::int16_t>(std::clamp(edge + by,
                                              int{std::numeric_limits<std::int16_t>::min()},
                                              int{std::numeric_limits<std::int16_t>::max()}));
}

DeviceRect Dragged(const DeviceRect& from, std::uint16_t corner, int byX, int byY) {
  DeviceRect rect = from;
  const bool whole = corner == kWhole;
  if (whole || corner == kTopLeft || corner == kBottomLeft) rect.left = Moved(rect.left, byX);
  if (whole || corner == kTopRight || corner == kBottomRight) rect.right = Moved(rect.right, byX);
  if (whole || corner == kTopLeft || corner == kTopRight) rect.top = Moved(rect.top, byY);
  if (whole || corner == kBottomLeft || corner == kBottomRight)
    rect.bottom = Moved(rect.bottom, byY);
  if (rect.left > rect.right) std::swap(rect.left, rect.right);
  if (rect.top > rect.bottom) std::swap(rect.top, rect.bottom);
  return rect;
}

bool Same(const DeviceRect& a, const DeviceRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

}  // namespace

void QueueMouse(const MouseState& state) { pointer.coming.push_back(state); }
void SetWaitForMouseRoutine(WaitForMouseRoutine routine) { waitForMouse = routine; }
void SetShowCursorRoutine(ShowCursorRoutine routine) { showCursor = routine; }
void ResetPointer() { pointer = Pointer{}; }

namespace viewer {

Boolean MouseIsDown() {
  NextMouse();
  return pointer.mouse.down;
}

void GetMousePosition(PageView view, std::int16_t* x, std::int16_t* y) {
  RecordOf(view);
  if (x == nullptr || y == nullptr) Fail(kErrorBadParameter, "a coordinate is missing");
  *x = pointer.mouse.x;
  *y = pointer.mouse.y;
}

Boolean TrackRect(PageView view, std::int16_t x, std::int16_t y, const DeviceRect* from,
                  std::uint16_t corner, std::uint32_t reserved, DeviceRect* rect) {
  RecordOf(view);
  if (from == nullptr || rect == nullptr) Fail(kErrorBadParameter, "a rectangle is missing");
  if (corner > kBottomLeft || reserved != 0) Fail(kErrorBadParameter, "there is no such corner");
  const DeviceRect start = *from;
  DeviceRect now = start;
  // The two inversions of a position undo each other, so only the latest one shows.
  InvertRect(view, &now, 1);
  for (bool down = true; down;) {
    down = MouseIsDown() != 0;
    const DeviceRect next = Dragged(start, corner, pointer.mouse.x - x, pointer.mouse.y - y);
    InvertRect(view, &now, 1);
    now = next;
    if (down) InvertRect(view, &now, 1);
  }
  *rect = now;
  return !Same(start, now);
}

Boolean TrackNewRect(PageView view, std::int16_t x, std::int16_t y, DeviceRect* rect) {
  const DeviceRect start = {x, y, x, y};
  return TrackRect(view, x, y, &start, kBottomRight, 0, rect);
}

// A cursor's handle is its number and one, so that the arrow has one too.
CursorHandle GetCursor(std::uint16_t number) {
  return reinterpret_cast<CursorHandle>(std::uintptr_t{number} + 1);
}

CursorHandle CurrentCursor() { return GetCursor(pointer.cursor); }

void SetCursor(CursorHandle cursor) {
  const auto word = reinterpret_cast<std::uintptr_t>(cursor);
  if (word == 0 || word > std::uintptr_t{std::numeric_limits<std::uint16_t>::max()} + 1) {
    Fail(kErrorBadParameter, "there is no such cursor");
  }
  pointer.cursor = static_cast<std::uint16_t>(word - 1);
  if (showCursor != nullptr) showCursor(pointer.cursor);
}

}  // namespace viewer
}  // namespace quillon
