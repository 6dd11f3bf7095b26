// Modal state, sounds and keys: what the user interface reports to the viewer and tests ask it.
#pragma once

#include <cstdint>

namespace quillon {

// How many modal windows are open, one inside the other.
std::uint32_t ModalDepth();

// Beeps since the viewer was started, and the sound of the latest one.
std::uint32_t BeepCount();
std::uint16_t LatestBeep();

// Told of every beep; null for none.
using BeepRoutine = void (*)(std::uint16_t sound);
void SetBeepRoutine(BeepRoutine routine);

// The keys that are held: bits as Viewer.ModifierKeys answers them.
void SetModifierKeys(std::uint32_t modifiers);

// Nothing modal, nothing held, no beeps yet.
void ResetModalState();

}  // namespace quillon
