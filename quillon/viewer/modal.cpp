#include "quillon/viewer/modal.h"

#include "quillon/viewer/operations.h"

namespace quillon {
namespace {

struct ModalState {
  std::uint32_t depth = 0;
  std::uint32_t beeps = 0;
  std::uint16_t latestBeep = 0;
  std::uint32_t modifiers = 0;
  BeepRoutine beep = nullptr;
};

ModalState state;

}  // namespace

std::uint32_t ModalDepth() { return state.depth; }
std::uint32_t BeepCount() { return state.beeps; }
std::uint16_t LatestBeep() { return state.latestBeep; }
void SetBeepRoutine(BeepRoutine routine) { state.beep = routine; }
void SetModifierKeys(std::uint32_t modifiers) { state.modifiers = modifiers; }
void ResetModalState() { state = ModalState{}; }

namespace viewer {

// The window is the caller's business: without a screen nothing has to be disabled behind it.
std::uint32_t BeginModal(void*) { return ++state.depth; }

void EndModal() {
  if (state.depth == 0) Fail(kErrorBadParameter, "no modal window is open");
  --state.depth;
}

void Beep(std::uint16_t sound) {
  ++state.beeps;
  state.latestBeep = sound;
  if (state.beep != nullptr) state.beep(sound);
}

const char* GetLanguage() { return "ENU"; }

std::uint32_t ModifierKeys() { return state.modifiers; }

}  // namespace viewer
}  // namespace quillon
