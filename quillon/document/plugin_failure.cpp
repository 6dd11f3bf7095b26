#include "quillon/document/plugin_failure.h"

#include <cstdio>

#include "quillon/core/report.h"

namespace quillon {

void ReportPlugInFailure(const PlugInFailure& failure) {
  char code[16];
  std::snprintf(code, sizeof(code), "0x%X", static_cast<unsigned>(failure.code));
  Report("extension " + std::to_string(failure.extension) + " failed in " + failure.during +
         " with error " + code + ": " + failure.text);
}

}  // namespace quillon
