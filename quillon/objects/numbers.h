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
  std::int32_t value;  // an integer or a Fixed, held to the range
};

// `text` consists of digits, signs and points. Malformed ones are read as far as they make sense.
ParsedNumber ParseNumber(std::string_view text);

void AppendInteger(std::string* out, std::int64_t value);

// The shortest decimal text that reads back as the same value; at most five decimals.
void AppendFixed(std::string* out, Fixed value);

}  // namespace quillon::objects
