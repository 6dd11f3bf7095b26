// From a value that the user gives to the object that a field of some kind holds.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "quillon/app/forms_client.h"

namespace quillon::app {

// What a converter may look at.
struct FieldToFill {
  FieldKind kind;
  std::uint32_t flags;      // FieldFlag, inherited ones included
  std::uint32_t maxLength;  // in characters, 0 for none
};

// A string value, or none to remove the value.
struct FieldValue {
  std::optional<std::string> bytes;  // PDFDocEncoding
};

// Converts, or tells in *problem why this field cannot take this value (without the field's name).
std::optional<FieldValue> ConvertValue(const FieldToFill& field, const nlohmann::json& given,
                                       std::string* problem);

}  // namespace quillon::app
