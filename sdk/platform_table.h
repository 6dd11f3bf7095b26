// `Platform` ("Plat"): what the platform's windows are called by.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

// DocViewWindow: the platform window that shows the document view; the main window when the view is
// null or has none; null when the viewer runs without a screen. Never raises.
#define QUILLON_PLATFORM_TABLE(X) X(1, PlatformWindow, DocViewWindow, (DocView view))

QUILLON_DECLARE_TABLE(PlatformTable, QUILLON_PLATFORM_TABLE)

}  // namespace quillon
