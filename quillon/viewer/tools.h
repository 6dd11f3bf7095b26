// The active tool, the viewer's numbered settings, and the editors that a window brings.
#pragma once

#include <cstdint>

#include "sdk/types.h"

namespace quillon {

// The viewer's action editor; null for none. Answers and changes `action` as Viewer.EditAction.
using ActionEditorRoutine = bool (*)(ActionHandle* action, DocView view, const char* title);
void SetActionEditor(ActionEditorRoutine routine);

// 0 until somebody sets it.
std::uint32_t AppFlag(std::uint32_t number);

// How many windows are registered as modal.
std::uint32_t ModalWindowCount();

// The viewer's own tool is active, nothing is set, nobody edits actions.
void ResetTools();

}  // namespace quillon
