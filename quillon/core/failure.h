// How failures travel inside the host: one exception type. At the seam it becomes a raise of its
// code (slot.h); its text is kept so that Support.ErrorText can tell more than the code does.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "sdk/errors.h"
#include "sdk/types.h"

namespace quillon {

inline constexpr std::int64_t kNoOffset = -1;

// what() is a sentence for people: what is wrong and, where it helps, what to do.
struct HostFailure : std::runtime_error {
  HostFailure(FailureCode failureCode, const std::string& text, std::uint32_t object = 0,
              std::int64_t byteOffset = kNoOffset)
      : std::runtime_error(text), code(failureCode), objectNumber(object), offset(byteOffset) {}

  FailureCode code;
  std::uint32_t objectNumber;  // 0 when no one object is at fault
  std::int64_t offset;         // byte offset in the file, kNoOffset when there is none
};

// The one place where the host's failures are born, for a breakpoint or a log line.
[[noreturn]] void Fail(FailureCode code, const std::string& text, std::uint32_t object = 0,
                       std::int64_t offset = kNoOffset);

}  // namespace quillon
