#include "quillon/viewer/messages.h"

#include <string_view>
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

std::string HostTextToUtf8(const char* text) {
  std::string utf8;
  for (const char byte : std::string_view(text != nullptr ? text : "")) {
    AppendUtf8(HostCharacter(static_cast<unsigned char>(byte)), &utf8);
  }
  return utf8;
}

}  // namespace

void SetMessageRoutine(MessageRoutine routine) { TheRoutine() = std::move(routine); }

std::uint32_t CautiousAnswer(std::uint32_t flags) { return ButtonSetOf(flags).cautious; }

std::uint32_t AgreeingAnswer(std::uint32_t flags) { return ButtonSetOf(flags).agreeing; }

namespace viewer {

std::uint32_t AnswerMessage(const char* caption, const char* text, std::uint32_t flags) {
  if (!TheRoutine()) return CautiousAnswer(flags);
  return TheRoutine()({HostTextToUtf8(caption), HostTextToUtf8(text), flags});
}

}  // namespace viewer
}  // namespace quillon
