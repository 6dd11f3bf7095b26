#include "quillon/core/callbacks.h"

#include <algorithm>
#include <unordered_map>

#include "quillon/core/operations.h"

namespace quillon {
namespace {

// A callback is the routine itself, so one may be there several times.
std::unordered_multimap<Callback, ExtensionId>& Live() {
  static std::unordered_multimap<Callback, ExtensionId> live;
  return live;
}

}  // namespace

std::size_t LiveCallbackCount(ExtensionId extension) {
  return static_cast<std::size_t>(
      std::count_if(Live().begin(), Live().end(),
                    [extension](const auto& entry) { return entry.second == extension; }));
}

std::size_t LiveCallbackCount() { return Live().size(); }

void ForgetCallbacks() { Live().clear(); }

namespace core {

Callback MakeCallback(ExtensionId extension, Callback routine) {
  if (routine != nullptr) Live().emplace(routine, extension);
  return routine;
}

void FreeCallback(Callback callback) {
  if (callback == nullptr) return;
  const auto place = Live().find(callback);
  if (place == Live().end()) Fail(kErrorBadParameter, "a callback was freed that is not alive");
  Live().erase(place);
}

}  // namespace core
}  // namespace quillon
