// What all dialogs share.
#pragma once

#include "plugin/host/win32.h"

namespace quillform {

// Three words. Their presence tells that initialisation got past its first allocation.
struct SharedUi {
  HFONT dialogFont;  // null when the platform gave none
  HFONT dialogFontBold;
  void* unused;
};

// Null before CreateSharedUi and after FreeSharedUi.
extern SharedUi* sharedUi;

// The zeroed record; false when memory runs out.
bool CreateSharedUi();
// 8-point Arial, plain and bold, for the screen's resolution.
void CreateDialogFonts();
void DeleteDialogFonts();
void FreeSharedUi();

}  // namespace quillform
