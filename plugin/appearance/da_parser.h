// Reading default appearance texts: the record behind ParseDA, without the host's objects.
#pragma once

#include <string>

#include "plugin/appearance/text_appearance.h"

namespace quillform {

enum class DAResult {
  kParsed,
  kMalformed,  // a colour operator with the wrong operands; the record then holds nothing
  kNoFont,     // no Tf operand; the record keeps what was read
};

// Operands and operators are read from at most 30 tokens; what follows them is ignored.
DAResult ParseDAText(const std::string& text, TextAppearance* look);

}  // namespace quillform
