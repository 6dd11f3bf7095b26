// A guarded block of the host's own, for the places where it calls a plug-in: what the plug-in
// raises arrives as a HostFailure. Use CallGuarded around every call of a plug-in's routine.
#pragma once

#include <utility>

#include "quillon/core/failure.h"
#include "sdk/core_table.h"

namespace quillon {

// Opens a block for its own lifetime.
struct HostGuard {
  HostGuard();
  ~HostGuard();
  HostGuard(const HostGuard&) = delete;
  HostGuard& operator=(const HostGuard&) = delete;

  GuardFrame frame;
};

// Runs `call` in a block; throws HostFailure with the code raised and the text remembered for it.
template <typename Call>
auto CallGuarded(Call&& call) {
  HostGuard guard;
  return std::forward<Call>(call)();
}

// How many blocks are open; 0 between top-level calls. For tests.
std::size_t OpenFrameCount();

}  // namespace quillon
