// Moving about in a view: what a window or a script does to it. Each change is announced.
#pragma once

#include <cstdint>

#include "quillon/document/notify.h"
#include "sdk/types.h"

namespace quillon {

// Bits of the change word of kNoteScrolled, kNotePageChanged and kNoteViewChanged.
enum ViewChange : std::uint32_t {
  kViewChangeSize = 0x01,      // the page area got another size
  kViewChangePage = 0x02,      // another page is shown
  kViewChangePosition = 0x08,  // zoom or scroll position: the page lies elsewhere in the area
};

inline constexpr Fixed kLargestZoom = 64 * kFixedOne;

// Sizes and positions are device units. A size of 0 means as large as the page.
void SetViewSize(DocView view, std::int32_t width, std::int32_t height);
void SetViewZoom(DocView view, Fixed zoom);
void ScrollView(DocView view, std::int32_t x, std::int32_t y);

void ActivateView(DocView view);

// The platform's window of a view, and the one that stands for views without one; null without a
// screen. (Plug-ins learn the main window when they are loaded: core/host.h.)
void SetViewWindow(DocView view, PlatformWindow window);
void SetFallbackWindow(PlatformWindow window);

// Told when UpdateView finds something invalid in a view; null when nothing shows it.
using RedrawRoutine = void (*)(DocView view, const DeviceRect& invalid);
void SetRedrawRoutine(RedrawRoutine routine);

}  // namespace quillon
