// Large forms made for measuring: flat text fields, spread evenly over pages.
#pragma once

#include <cstdint>
#include <string>

namespace quillform::bench {

struct FormSize {
  std::uint32_t fields;
  std::uint32_t pages;
};

// A whole PDF file, about 200 bytes a field. Fields are named field1, field2, ...; each has a
// border, a default appearance of its own and no appearance stream.
std::string WriteForm(const FormSize& size);

std::string FieldName(std::uint32_t number);

// A form with a check box and a list box of so many options.
inline constexpr const char* kCheckName = "check";
inline constexpr const char* kListName = "list";
std::string WriteCheckAndList(std::uint32_t options);

std::string OptionName(std::uint32_t number);

}  // namespace quillform::bench
