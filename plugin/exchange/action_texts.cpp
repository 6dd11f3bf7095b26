#include "plugin/exchange/action_texts.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>

#include "plugin/appearance/widget_entries.h"
#include "plugin/exchange/action_targets.h"
#include "plugin/exchange/form_actions.h"
#include "plugin/exchange/hide_action.h"
#include "plugin/exchange/set_state_action.h"
#include "plugin/host/win32.h"
#include "plugin/model/document_widgets.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::size_t kFormatterRoom = 1025;  // the platform's formatter writes no more
constexpr std::uint32_t kPlainText = 76;

std::string StringOf(std::uint32_t id) {
  char text[kActionTextSize];
  LoadLocalString(id, text, sizeof text);
  return text;
}

std::string Formatted(std::uint32_t id, ...) {
  const std::string format = StringOf(id);
  char text[kFormatterRoom];
  va_list arguments;
  va_start(arguments, id);
  wvsprintfA(text, format.c_str(), arguments);
  va_end(arguments);
  return text;
}

template <std::uint32_t id>
std::string FixedText(ActionHandle) {
  return StringOf(id);
}

std::string FileLine(ActionHandle action) {
  return Formatted(kPlainText, FileSpecText(action).c_str());
}

bool IsEditable(ActionHandle action) { return !IsKind(ActionTarget(action), ObjectKind::kArray); }

// Without annotations on the page that is shown there is nothing to choose from.
bool CurrentPageHasAnnots() {
  const DocView view = Viewer->ActiveDocView();
  if (view == nullptr) return false;
  const PageScope scope(Viewer->DocOf(view), Viewer->PageViewPageNumber(Viewer->DocPageView(view)));
  return Document->AnnotCount(scope.page) > 0;
}

std::string HideButton(ActionHandle action) {
  return CurrentPageHasAnnots() && IsEditable(action) ? StringOf(128) : std::string();
}

std::string HideLine(ActionHandle action) {
  if (!IsEditable(action)) return StringOf(134);
  const std::string verb = StringOf(ActionHides(action) ? 132 : 131);
  return Formatted(129, verb.c_str(), HostTextOf(NameOfTarget(action)).c_str());
}

std::string StateLine(ActionHandle action) {
  const char* name = Core->NameFromAtom(StateOfAction(action));
  return name != nullptr ? name : "";
}

template <std::string (*Text)(ActionHandle)>
std::uint32_t PutText(ActionHandle action, char* buffer, std::uint32_t size) {
  char own[kActionTextSize];
  if (buffer == nullptr) {
    buffer = own;
    size = sizeof own;
  }
  if (size == 0) return 0;
  const std::string text = Text(action);
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return static_cast<std::uint32_t>(length);
}

template <std::string (*Text)(ActionHandle)>
ActionTextProc MakeText() {
  return reinterpret_cast<ActionTextProc>(MakeHostCallback<&PutText<Text>, OnFailure::kDrop>());
}

}  // namespace

ActionTexts MakeSubmitFormTexts() {
  return {MakeText<&FixedText<74>>(), MakeText<&FixedText<153>>(), MakeText<&FixedText<75>>(),
          MakeText<&FileLine>()};
}

ActionTexts MakeResetFormTexts() {
  return {MakeText<&FixedText<89>>(), MakeText<&FixedText<152>>(), MakeText<&FixedText<90>>(),
          nullptr};
}

ActionTexts MakeImportDataTexts() {
  return {MakeText<&FixedText<92>>(), MakeText<&FixedText<151>>(), MakeText<&FixedText<93>>(),
          MakeText<&FileLine>()};
}

ActionTexts MakeHideTexts() {
  return {MakeText<&FixedText<127>>(), MakeText<&HideButton>(), MakeText<&HideLine>(),
          MakeText<&FixedText<130>>()};
}

ActionTexts MakeSetStateTexts() { return {nullptr, nullptr, MakeText<&StateLine>(), nullptr}; }

}  // namespace quillform
