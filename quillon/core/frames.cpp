// Guarded blocks: the stack of open frames and what a raise does with it.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <unordered_map>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/core/raised.h"

namespace quillon {
namespace {

GuardFrame* innermost = nullptr;
FailureCode latestCode = kErrorNone;

// What the host's own failures said, by code. A plug-in that closes its block and raises the code
// again so keeps the text.
std::unordered_map<FailureCode, HostFailure>& Remembered() {
  static std::unordered_map<FailureCode, HostFailure> failures;
  return failures;
}

[[noreturn]] void EndProcess(const char* what, FailureCode code) {
  const HostFailure* failure = RememberedFailure(code);
  std::fprintf(stderr, "quillon: %s (error 0x%08x%s%s)\n", what, static_cast<unsigned>(code),
               failure == nullptr ? "" : ": ", failure == nullptr ? "" : failure->what());
  std::abort();
}

[[noreturn]] void ThrowRaised(GuardFrame* frame) {
  const HostFailure* failure = RememberedFailure(frame->code);
  if (failure != nullptr) throw HostFailure(*failure);
  throw HostFailure(frame->code, "");
}

}  // namespace

void Fail(FailureCode code, const std::string& text, std::uint32_t object, std::int64_t offset) {
  throw HostFailure(code, text, object, offset);
}

void RaiseCode(FailureCode code) {
  latestCode = code;
  if (innermost == nullptr) EndProcess("an error was raised outside every guarded block", code);
  innermost->code = code;
  innermost->restore(innermost);
  EndProcess("the restore routine of a guarded block returned", code);
}

void RaiseFailure(const HostFailure& failure) {
  const FailureCode code = failure.code;
  try {
    Remembered().insert_or_assign(code, failure);
  } catch (const std::bad_alloc&) {
    Remembered().erase(code);  // the raise goes on without its text
  }
  RaiseCode(code);
}

const HostFailure* RememberedFailure(FailureCode code) {
  const auto place = Remembered().find(code);
  return place == Remembered().end() ? nullptr : &place->second;
}

HostGuard::HostGuard() : frame{} {
  // The routine's type has no room for [[noreturn]], hence the conversion.
  core::PushFrame(&frame, &ThrowRaised);
}

// Frames that a plug-in opened inside and did not close are dropped with this one: their memory is
// gone by now.
HostGuard::~HostGuard() { innermost = frame.outer; }

std::size_t OpenFrameCount() {
  std::size_t count = 0;
  for (const GuardFrame* frame = innermost; frame != nullptr; frame = frame->outer) ++count;
  return count;
}

namespace core {

// A text belongs to one call from the top level. Forgetting it here keeps a later raise of the same
// code from being explained by an old failure.
void PushFrame(GuardFrame* frame, RestoreRoutine restore) {
  if (innermost == nullptr) Remembered().clear();
  frame->outer = innermost;
  frame->restore = restore;
  frame->code = kErrorNone;
  innermost = frame;
}

void PopFrame() {
  if (innermost != nullptr) innermost = innermost->outer;
}

FailureCode ErrorCode() { return latestCode; }

void Raise(FailureCode code) { RaiseCode(code); }

}  // namespace core
}  // namespace quillon
