// The time of a modal window.
#pragma once

#include "plugin/host/host.h"
#include "plugin/host/win32.h"

namespace quillform {

// The host's modal state for its own lifetime; the keyboard goes back to the window that had it.
struct ModalScope {
  ModalScope() : focus(GetFocus()) { Viewer->BeginModal(nullptr); }
  ~ModalScope() {
    DropFailures([] { Viewer->EndModal(); });
    if (focus != nullptr) SetFocus(focus);
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

  HWND focus;
};

}  // namespace quillform
