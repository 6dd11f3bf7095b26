// What is known about the failures that were raised.
#pragma once

#include "quillon/core/failure.h"

namespace quillon {

// The host's own failure behind the latest raise of a code; null when the code came from a plug-in
// or belongs to an earlier call from the top level. Valid until the next raise.
const HostFailure* RememberedFailure(FailureCode code);

}  // namespace quillon
