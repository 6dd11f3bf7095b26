#include "quillon/viewer/tools.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/registrations.h"

namespace quillon {
namespace {

struct ToolState {
  Atom active = kNoAtom;  // none: the viewer's own
  Atom last = kNoAtom;
  std::map<std::uint32_t, std::uint32_t> flags;
  // Only how many there are matters: a handle is a number and stands for no record.
  std::set<ModalWindowHandle> modalWindows;
  std::uintptr_t lastModalWindow = 0;
  ActionEditorRoutine editor = nullptr;
};

constexpr std::uint32_t kModalWindowKind = 3;

ToolState state;

Atom OrDefault(Atom tool) { return tool == kNoAtom ? viewer::DefaultTool() : tool; }

// Null for the viewer's own tool and for unknown ones.
const ToolRecord* RecordOfTool(Atom type) {
  const auto& tools = viewer::TheRegistrations().tools;
  const auto newest = std::find_if(tools.rbegin(), tools.rend(),
                                   [&](const auto& tool) { return tool.type == type; });
  return newest == tools.rend() ? nullptr : newest->record;
}

}  // namespace

void SetActionEditor(ActionEditorRoutine routine) { state.editor = routine; }

std::uint32_t AppFlag(std::uint32_t number) {
  const auto found = state.flags.find(number);
  return found == state.flags.end() ? 0 : found->second;
}

std::uint32_t ModalWindowCount() { return static_cast<std::uint32_t>(state.modalWindows.size()); }

void ResetTools() { state = ToolState{}; }

namespace viewer {

Atom DefaultTool() { return core::AtomFromName("Hand"); }
Atom ActiveTool() { return OrDefault(state.active); }
Atom LastTool() { return OrDefault(state.last); }

Boolean ToolIsEnabled(Atom type) {
  if (type == DefaultTool()) return 1;
  const ToolRecord* tool = RecordOfTool(type);
  if (tool == nullptr) return 0;
  if (tool->computeEnabled == nullptr) return 1;
  return CallGuarded([&] { return tool->computeEnabled(tool->computeEnabledData); });
}

void SetActiveTool(Atom type, Boolean persistent) {
  const ToolRecord* next = RecordOfTool(type);
  if (next == nullptr && type != DefaultTool()) {
    Fail(kErrorBadParameter, "nobody registered such a tool");
  }
  const Atom former = ActiveTool();
  if (type != former) {
    // The change stands before the tools are told: each sees the viewer as it will be.
    state.last = former;
    state.active = type;
    const ToolRecord* old = RecordOfTool(former);
    if (old != nullptr && old->deactivate != nullptr) {
      const auto deactivate = reinterpret_cast<void (*)(const ToolRecord*)>(old->deactivate);
      CallGuarded([&] { deactivate(old); });
    }
  }
  if (next != nullptr && next->activate != nullptr) {
    const auto activate = reinterpret_cast<void (*)(const ToolRecord*, Boolean)>(next->activate);
    CallGuarded([&] { activate(next, persistent); });
  }
}

void SetAppFlag(std::uint32_t number, std::uint32_t value) { state.flags[number] = value; }

void DoSelectionProperties(DocView view) {
  if (SelectionType(view) != core::AtomFromName("Annotation")) return;
  AnnotHandle annot{};
  std::memcpy(&annot, SelectionData(view), sizeof annot);
  const RegisteredAnnotHandler* handler = AnnotHandlerOf(document::AnnotSubtype(annot));
  if (handler == nullptr || handler->record->properties == nullptr) return;
  const auto properties =
      reinterpret_cast<void (*)(const AnnotHandlerRecord*, AnnotHandle, DocView)>(
          handler->record->properties);
  CallGuarded([&] { properties(handler->record, annot, view); });
}

Boolean EditAction(ActionHandle* action, DocView view, const char* title) {
  if (action == nullptr || title == nullptr) Fail(kErrorBadParameter, "EditAction needs an action");
  return state.editor != nullptr && state.editor(action, view, title);
}

ModalWindowHandle RegisterModalWindow(std::uint32_t kind, std::uint32_t reserved1,
                                      std::uint32_t reserved2, ExtensionId, void*) {
  if (kind != kModalWindowKind || reserved1 != 0 || reserved2 != 0) {
    Fail(kErrorBadParameter, "a modal window is registered with 3, 0 and 0");
  }
  const auto window = reinterpret_cast<ModalWindowHandle>(++state.lastModalWindow);
  state.modalWindows.insert(window);
  return window;
}

void UnregisterModalWindow(ModalWindowHandle window) {
  if (state.modalWindows.erase(window) == 0) {
    Fail(kErrorBadParameter, "there is no such modal window");
  }
}

}  // namespace viewer
}  // namespace quillon
