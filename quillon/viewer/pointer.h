// The mouse and its cursor. A window or a script reports what the mouse does; plug-ins ask for it,
// and follow it in loops of their own while the button is held.
#pragma once

#include <cstdint>

#include "sdk/types.h"

namespace quillon {

// The page view's device units.
struct MouseState {
  std::int16_t x;
  std::int16_t y;
  bool down;
};

// What the mouse does next. Each question whether the button is held moves on to the next one;
// when none is left, the routine below is asked, and without it the button counts as released, so
// that every loop ends.
void QueueMouse(const MouseState& state);

// Waits for the next thing that the mouse does; null for none.
using WaitForMouseRoutine = MouseState (*)();
void SetWaitForMouseRoutine(WaitForMouseRoutine routine);

// Told of each change of the cursor; null when nothing shows it. The cursor's number is 0 for the
// arrow.
using ShowCursorRoutine = void (*)(std::uint16_t number);
void SetShowCursorRoutine(ShowCursorRoutine routine);

// At rest in the corner, not held, the arrow.
void ResetPointer();

}  // namespace quillon
