// Numbers as PDF files write them (ISO 32000-1, 7.3.3).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sdk/types.h"

namespace quillon::objects {

struct ParsedNumber {
  bool real;
  bool canonical;      // AppendInteger or AppendFixed would write the same text
  bool wellFormed;     // one sign at most, digits, one point at most
  std::int32_t value;  // an integer or a Fixed, held to the range
};

// Malformed texts are read as far as they make sense.
ParsedNumber ParseNumber(std::string_view text);

void AppendInteger(std::string* out, std::int64_t value);

// The shortest decimal text that reads back as the same value; at most five decimals.
void AppendFixed(std::string* out, Fixed value);

}  // namespace quillon::objects
