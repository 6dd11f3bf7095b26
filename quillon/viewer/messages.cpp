#include "quillon/viewer/messages.h"

#include <utility>

#include "quillon/document/text_encoding.h"
#include "quillon/viewer/operations.h"

namespace quillon {
namespace {

struct ButtonSet {
  std::uint32_t buttons;
  MessageAnswer cautious;
  MessageAnswer agreeing;
};

constexpr ButtonSet kButtonSets[] = {
    {kMessageOk, kAnswerOk, kAnswerOk},
    {kMessageOkCancel, kAnswerCancel, kAnswerOk},
    {kMessageAbortRetryIgnore, kAnswerAbort, kAnswerIgnore},
    {kMessageYesNoCancel, kAnswerNo, kAnswerYes},
    {kMessageYesNo, kAnswerNo, kAnswerYes},
    {kMessageRetryCancel, kAnswerCancel, kAnswerCancel},
};

constexpr std::uint32_t kButtonsMask = 0xF;

const ButtonSet& ButtonSetOf(std::uint32_t flags) {
  for (const ButtonSet& set : kButtonSets) {
    if (set.buttons == (flags & kButtonsMask)) return set;
  }
  return kButtonSets[0];
}

MessageRoutine& TheRoutine() {
  static MessageRoutine routine;
  return routine;
}

std::string Utf8Of(const char* text) { return HostTextToUtf8(text != nullptr ? text : ""); }

}  // namespace

void SetMessageRoutine(MessageRoutine routine) { TheRoutine() = std::move(routine); }

std::uint32_t CautiousAnswer(std::uint32_t flags) { return ButtonSetOf(flags).cautious; }

std::uint32_t AgreeingAnswer(std::uint32_t flags) { return ButtonSetOf(flags).agreeing; }

namespace viewer {

std::uint32_t AnswerMessage(const char* caption, const char* text, std::uint32_t flags) {
  if (!TheRoutine()) return CautiousAnswer(flags);
  return TheRoutine()({Utf8Of(caption), Utf8Of(text), flags});
}

}  // namespace viewer
}  // namespace quillon
