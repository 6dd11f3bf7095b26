// Message boxes that plug-ins are about to show: who answers them where there is no screen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quillon {

// Texts are UTF-8 here.
struct Message {
  std::string caption;
  std::string text;
  std::uint32_t flags;  // as Viewer.AnswerMessage takes them
};

// The answer, a MessageAnswer; kMessageNotAnswered lets the plug-in show its box.
using MessageRoutine = std::function<std::uint32_t(const Message&)>;

// Asked about every message until the viewer is stopped. An empty routine, as there is at the
// start, stands for CautiousAnswer.
void SetMessageRoutine(MessageRoutine routine);

// The answer that lets the least happen, and the one that lets the caller go on. Neither asks for
// another try: nothing would be different then.
std::uint32_t CautiousAnswer(std::uint32_t flags);
std::uint32_t AgreeingAnswer(std::uint32_t flags);

}  // namespace quillon
