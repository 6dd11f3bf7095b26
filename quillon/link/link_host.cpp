#include "quillon/link/link_host.h"

namespace quillon::link {

Host host{};

namespace {

[[noreturn]] void ThrowRaised(GuardFrame* frame) { throw Raised{frame->code}; }

}  // namespace

Guard::Guard() : frame{} { host.core->PushFrame(&frame, &ThrowRaised); }

Guard::~Guard() { host.core->PopFrame(); }

FailureCode CodeOfText(const std::string& sentence) {
  if (sentence.empty()) return kErrorNone;
  return host.support->RegisterErrorString(kSeverityError, sentence.c_str());
}

}  // namespace quillon::link
