// The text of a setting: its items, one after another.
//
//   letter  in memory             as text
//   b       16-bit flag           "Y" or "N"; what begins otherwise than with "Y" is read as 0
//   d       16-bit integer        decimal
//   l       32-bit integer        decimal
//   f       float                 decimal, written with four places
//   x       16.16 number          the same
//   s       text                  as it is; read, it is all the rest
//
// Items are written with one blank between them and read with any run of blanks and commas. An item
// that is missing is read as 0 or an empty text. Other letters stand for no item; they are followed
// by a separator all the same.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace quillform {

// Room for a text; what is longer is cut to size - 1 bytes.
struct SettingText {
  char* buffer;
  std::uint16_t size;
};

// Where an item is put, and what is written as one.
using SettingTarget =
    std::variant<std::uint16_t*, std::int16_t*, std::int32_t*, float*, SettingText>;
using SettingValue = std::variant<std::uint16_t, std::int16_t, std::int32_t, float, const char*>;

using SettingTargets = std::initializer_list<SettingTarget>;
using SettingValues = std::initializer_list<SettingValue>;

// One target or value for each letter of the table. Raise kErrorBadParameter, with some of the
// targets filled, when they are too few or of a type that their letters do not have.
void ReadSettingText(std::string_view text, const char* format, SettingTargets targets);
std::string MakeSettingText(const char* format, SettingValues values);

}  // namespace quillform
