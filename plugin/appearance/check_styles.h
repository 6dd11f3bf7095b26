// The marks of check boxes and radio buttons: each style is one ZapfDingbats character, kept as the
// widget's caption.
#pragma once

#include <array>

#include "plugin/host/host.h"

namespace quillform {

struct CheckStyle {
  std::uint16_t labelId;  // string of the name that users see
  char mark;
  std::int32_t height;  // of the character, in thousandths of the size
};

// In the order in which users see them.
inline constexpr std::array<CheckStyle, 6> kCheckStyles{{
    {115, '4', 719},  // check
    {116, '8', 718},  // cross
    {117, 'u', 719},  // diamond
    {118, 'l', 719},  // circle
    {119, 'H', 719},  // star
    {120, 'n', 692},  // square
}};

// Radio buttons of this style are drawn round.
inline constexpr char kCircleMark = 'l';

// The height of a mark in points. Any other character counts as high as the check.
Fixed MarkHeight(char mark, Fixed size);

}  // namespace quillform
