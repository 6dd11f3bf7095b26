#include "plugin/frame/shared_ui.h"

#include "plugin/host/host.h"

namespace quillform {

// A plain pointer, so that nothing touches the host's memory when the process ends without an
// unload.
SharedUi* sharedUi = nullptr;

namespace {

constexpr int kDialogFontPoints = 8;
constexpr int kPointsAnInch = 72;

// The screen's device context for its own lifetime.
struct ScreenContext {
  ScreenContext() : context(GetDC(nullptr)) {}
  ~ScreenContext() { ReleaseDC(nullptr, context); }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;

  HDC context;
};

// Negative: the height of the characters alone, without the space above them.
int DialogFontHeight() {
  const ScreenContext screen;
  return -MulDiv(kDialogFontPoints, GetDeviceCaps(screen.context, LOGPIXELSY), kPointsAnInch);
}

HFONT CreateDialogFont(int weight) {
  return CreateFontA(DialogFontHeight(), 0, 0, 0, weight, FALSE, FALSE, FALSE, ANSI_CHARSET,
                     OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                     VARIABLE_PITCH | FF_SWISS, "Arial");
}

void DeleteFont(HFONT& font) {
  if (font != nullptr) DeleteObject(font);
  font = nullptr;
}

}  // namespace

bool CreateSharedUi() {
  void* block = Support->Alloc(sizeof(SharedUi));
  if (block == nullptr) return false;
  sharedUi = new (block) SharedUi{};
  return true;
}

void CreateDialogFonts() {
  sharedUi->dialogFont = CreateDialogFont(FW_DONTCARE);
  sharedUi->dialogFontBold = CreateDialogFont(FW_BOLD);
}

void DeleteDialogFonts() {
  DeleteFont(sharedUi->dialogFontBold);
  DeleteFont(sharedUi->dialogFont);
}

void FreeSharedUi() {
  Support->Free(sharedUi);
  sharedUi = nullptr;
}

}  // namespace quillform
