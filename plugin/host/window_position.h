// Where the dialogs stand: remembered from one run to the next, and kept on the screen.
#pragma once

#include "plugin/host/win32.h"

namespace quillform {

// The window's left and top edge in screen coordinates, under a name of its own in the user's
// settings.
void SaveWindowPosition(HWND window, const char* name);
// To the saved place, or to the middle of the desktop; a left or top edge that lies off the screen
// is brought back.
void RestoreWindowPosition(HWND window, const char* name);
void CenterWindow(HWND window);

// One direction of the last step: an edge before the screen goes to its beginning, one beyond its
// end goes back so far that the window ends there.
int EdgeOnScreen(int edge, int windowSize, int screenSize);

}  // namespace quillform
