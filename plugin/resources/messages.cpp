#include "plugin/resources/messages.h"

#include <cstdarg>

#include "plugin/host/host.h"
#include "plugin/host/modal_scope.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::uint32_t kCaptionString = 9;
constexpr std::size_t kLongestCaption = 32;
constexpr std::size_t kLongestFormat = 256;
constexpr std::size_t kFormatterRoom = 1025;  // the platform's formatter writes no more

int AskHost(const char* caption, const char* text, UINT flags) {
  if (Viewer->slotCount < quillon::kViewerAnswerMessageSlot) return quillon::kMessageNotAnswered;
  return static_cast<int>(Viewer->AnswerMessage(caption, text, flags));
}

}  // namespace

int ShowMessage(UINT typeFlags, UINT buttonFlags, std::uint32_t stringId, ...) {
  char format[kLongestFormat + 1];
  LoadLocalString(stringId, format, sizeof format);
  char text[kFormatterRoom];
  va_list arguments;
  va_start(arguments, stringId);
  wvsprintfA(text, format, arguments);
  va_end(arguments);
  char caption[kLongestCaption + 1];
  LoadLocalString(kCaptionString, caption, sizeof caption);

  const auto owner = static_cast<HWND>(Platform->DocViewWindow(Viewer->ActiveDocView()));
  const UINT flags = typeFlags | buttonFlags | MB_TASKMODAL;
  const ModalScope modal;
  const int answer = AskHost(caption, text, flags);
  if (answer != quillon::kMessageNotAnswered) return answer;
  return MessageBoxA(owner, text, caption, flags);
}

}  // namespace quillform
