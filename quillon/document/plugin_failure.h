// What plug-ins raise where nobody can act on it: notifications, drawing, closing. It is reported
// (core/report.h) and dropped.
#pragma once

#include <string>

#include "quillon/core/failure.h"
#include "sdk/types.h"

namespace quillon {

struct PlugInFailure {
  std::string during;     // what was being done, such as "notification 0x26"
  ExtensionId extension;  // 0 when it is not known
  FailureCode code;
  std::string text;
};

void ReportPlugInFailure(const PlugInFailure& failure);

}  // namespace quillon
