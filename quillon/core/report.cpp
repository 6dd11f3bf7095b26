#include "quillon/core/report.h"

#include <cstdio>
#include <utility>

namespace quillon {
namespace {

Reporter& Current() {
  static Reporter reporter;
  return reporter;
}

}  // namespace

void Report(const std::string& text) {
  if (Current()) {
    Current()(text);
  } else {
    std::fprintf(stderr, "quillon: %s\n", text.c_str());
  }
}

Reporter SetReporter(Reporter reporter) { return std::exchange(Current(), std::move(reporter)); }

}  // namespace quillon
