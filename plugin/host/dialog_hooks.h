// Who chooses files in the user's place, where there is no screen to ask on.
#pragma once

#include "plugin/host/win32.h"

namespace quillform {

// Both take the record as the platform's own chooser does (paths are host text) and answer whether
// a file was chosen. An empty routine stands for the platform's chooser, which counts as cancelled
// where the platform has no screen.
struct DialogHooks {
  bool (*AskOpenFile)(OPENFILENAMEA* question);
  bool (*AskSaveFile)(OPENFILENAMEA* question);
};
extern DialogHooks dialogHooks;

// Asks in the host's modal state; the keyboard goes back to the window that had it.
bool AskOpenFile(OPENFILENAMEA* question);
bool AskSaveFile(OPENFILENAMEA* question);

}  // namespace quillform
