// From a value that the user gives to the object that a field of some kind holds.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "quillon/app/field_choices.h"
#include "quillon/app/forms_client.h"

namespace quillon::app {

// What a converter may look at.
struct FieldToFill {
  FieldKind kind;
  std::uint32_t flags;      // FieldFlag, inherited ones included
  std::uint32_t maxLength;  // in characters, 0 for none
  std::vector<OnState> states = {};
  std::vector<ChoiceOption> options = {};
};

// What the kind's converter needs to know of a field.
FieldToFill ReadFieldToFill(ObjectHandle dict, std::uint32_t flags);

struct FieldValue {
  enum class Form { kNone, kText, kState, kTexts };
  Form form = Form::kNone;         // kNone removes the value
  std::vector<std::string> texts;  // as they stand in a file: one, or several for kTexts
  Atom state = kNoAtom;
};

// A field of one kind takes
//   text                       a text or a number
//   check box, radio button    the name of a state, "off", for a field with one state also "on";
//                              true and false stand for on and off
//   combo box, list box        an option's export text or display text; an editable combo box any
//                              text; a list box that allows it several options, in an array
//                              or in lines of a text
//   push button and others     nothing
// null empties each of them. Or tells in *problem why this field cannot take this value (without
// the field's name).
std::optional<FieldValue> ConvertValue(const FieldToFill& field, const nlohmann::json& given,
                                       std::string* problem);

// The value as a new direct object; the null object for none.
ObjectHandle NewValueObject(ObjectDoc doc, const FieldValue& value);

// Whether a field that holds this object has the value.
bool HoldsValue(ObjectHandle held, const FieldValue& value);

}  // namespace quillon::app
