#include "quillon/app/field_conversion.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string_view>
#include <utility>

#include "quillon/app/console.h"
#include "quillon/app/form_keys.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"

namespace quillon::app {
namespace {

using nlohmann::json;
using Converter = std::optional<FieldValue> (*)(const FieldToFill& field, const json& given,
                                                std::string* problem);

// The text of a value; numbers as they would be typed.
std::optional<std::string> GivenText(const json& given) {
  if (given.is_string()) return given.get<std::string>();
  if (given.is_number()) return given.dump();
  return std::nullopt;
}

std::string CharacterAt(const std::string& utf8, std::size_t offset) {
  std::size_t end = offset;
  const std::optional<char32_t> character = NextUtf8(utf8, &end);
  if (!character) return "the byte at offset " + std::to_string(offset) + ", which is not UTF-8,";
  char number[16];
  std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(*character));
  return "the character \"" + Printable(utf8.substr(offset, end - offset)) + "\" (" + number + ")";
}

std::optional<std::string> Encode(const std::string& text, std::string* problem) {
  std::size_t bad = 0;
  std::optional<std::string> bytes = Utf8ToPdfDoc(text, &bad);
  if (!bytes) {
    *problem = CharacterAt(text, bad) + " cannot be held by the document's encoding";
  } else if (IsUtf16Text(*bytes) || IsUtf8Text(*bytes)) {
    *problem = "a value cannot start with \"" + Printable(PdfDocToUtf8(bytes->substr(0, 2))) +
               "\": readers would take it for the mark of another encoding";
    return std::nullopt;
  } else if (bytes->find('\0') != std::string::npos) {
    *problem = "the value contains a NUL character";
    return std::nullopt;
  }
  return bytes;
}

// In a value a line ends with a carriage return; a line feed marks where an editor wrapped it.
std::string WithFieldLineEnds(const std::string& text) {
  std::string lines;
  lines.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') {
      if (i == 0 || text[i - 1] != '\r') lines += '\r';
    } else {
      lines += text[i];
    }
  }
  return lines;
}

FieldValue TextValue(std::string bytes) {
  FieldValue value;
  value.form = FieldValue::Form::kText;
  value.texts.push_back(std::move(bytes));
  return value;
}

std::optional<FieldValue> ConvertText(const FieldToFill& field, const json& given,
                                      std::string* problem) {
  if (given.is_null()) return FieldValue{};
  const std::optional<std::string> text = GivenText(given);
  if (!text) {
    *problem = std::string("a text field takes a text or a number, not ") + given.type_name();
    return std::nullopt;
  }
  std::optional<std::string> bytes = Encode(*text, problem);
  if (!bytes) return std::nullopt;
  if ((field.flags & kFlagMultiLine) == 0 && bytes->find_first_of("\r\n") != std::string::npos) {
    *problem = "the field holds a single line, the value has line breaks";
    return std::nullopt;
  }
  *bytes = WithFieldLineEnds(*bytes);
  if (field.maxLength != 0 && bytes->size() > field.maxLength) {
    *problem = "the value has " + std::to_string(bytes->size()) + " characters, the field holds " +
               std::to_string(field.maxLength);
    return std::nullopt;
  }
  return TextValue(std::move(*bytes));
}

// "it takes A, B or C".
std::string ListOf(const std::vector<std::string>& names) {
  constexpr std::size_t kMostListed = 20;
  const std::size_t count = std::min(names.size(), kMostListed);
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
    text += Printable(names[i]);
  }
  const std::size_t rest = names.size() - count;
  return rest == 0 ? text : text + " and " + std::to_string(rest) + " more";
}

std::string Quoted(const std::string& text) { return "\"" + Printable(text) + "\""; }

FieldValue StateValue(Atom state) {
  FieldValue value;
  value.form = FieldValue::Form::kState;
  value.state = state;
  return value;
}

std::string WhichStates(const FieldToFill& field) {
  std::vector<std::string> names;
  for (const OnState& state : field.states) names.push_back(state.text);
  if (names.size() == 1) names.emplace_back("on");
  names.emplace_back("off");
  return ListOf(names);
}

bool SameWord(const std::string& text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

// A state's own name goes before the words for on and off.
std::optional<FieldValue> ConvertState(const FieldToFill& field, const json& given,
                                       std::string* problem) {
  if (given.is_null()) return FieldValue{};
  std::optional<std::string> text = GivenText(given);
  if (given.is_boolean()) text = given.get<bool>() ? "on" : "off";
  if (!text) {
    *problem = std::string("a ") + KindName(field.kind) + " takes the name of a state, not " +
               given.type_name();
    return std::nullopt;
  }
  for (const OnState& state : field.states) {
    if (state.text == *text) return StateValue(state.name);
  }
  if (SameWord(*text, "off")) return FieldValue{};
  if (SameWord(*text, "on") && field.states.size() == 1) return StateValue(field.states[0].name);
  *problem = Quoted(*text) + " is no state of the " + KindName(field.kind) + "; it takes " +
             WhichStates(field);
  return std::nullopt;
}

// Export texts go before display texts, which need not be unique.
const ChoiceOption* FindOption(const FieldToFill& field, const std::string& text) {
  for (const ChoiceOption& option : field.options) {
    if (option.exported == text) return &option;
  }
  for (const ChoiceOption& option : field.options) {
    if (option.display == text) return &option;
  }
  return nullptr;
}

std::string NoSuchOption(const FieldToFill& field, const std::string& text) {
  std::vector<std::string> names;
  for (const ChoiceOption& option : field.options) names.push_back(option.display);
  if (names.empty()) return "the field has no options";
  return Quoted(text) + " is none of the options: " + ListOf(names);
}

std::optional<FieldValue> ConvertCombo(const FieldToFill& field, const json& given,
                                       std::string* problem) {
  if (given.is_null()) return FieldValue{};
  const std::optional<std::string> text = GivenText(given);
  if (!text) {
    *problem = std::string("a combo box takes one option, not ") + given.type_name();
    return std::nullopt;
  }
  if (const ChoiceOption* option = FindOption(field, *text)) return TextValue(option->bytes);
  if ((field.flags & kFlagEditable) != 0) return ConvertText(field, given, problem);
  *problem = NoSuchOption(field, *text);
  return std::nullopt;
}

// Several options in one text stand in lines of their own.
json OptionsGiven(const FieldToFill& field, const json& given) {
  if (given.is_array()) return given;
  const std::optional<std::string> text = GivenText(given);
  if (!text || FindOption(field, *text) != nullptr) return json::array({given});
  json lines = json::array();
  std::istringstream stream(*text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::optional<FieldValue> ConvertList(const FieldToFill& field, const json& given,
                                      std::string* problem) {
  if (given.is_null()) return FieldValue{};
  const json several = OptionsGiven(field, given);
  if (several.size() > 1 && (field.flags & kFlagMultiSelect) == 0) {
    *problem = "the list box takes one option, " + std::to_string(several.size()) + " are given";
    return std::nullopt;
  }
  FieldValue value;
  for (const json& one : several) {
    const std::optional<std::string> text = GivenText(one);
    if (!text) {
      *problem = std::string("a list box takes options, not ") + one.type_name();
      return std::nullopt;
    }
    const ChoiceOption* option = FindOption(field, *text);
    if (option == nullptr) {
      *problem = NoSuchOption(field, *text);
      return std::nullopt;
    }
    value.texts.push_back(option->bytes);
  }
  if (value.texts.empty()) return FieldValue{};
  value.form = value.texts.size() == 1 ? FieldValue::Form::kText : FieldValue::Form::kTexts;
  return value;
}

std::optional<FieldValue> Refuse(const FieldToFill& field, const json&, std::string* problem) {
  *problem = std::string("a field of the kind \"") + KindName(field.kind) + "\" takes no value";
  return std::nullopt;
}

struct KindConverter {
  FieldKind kind;
  Converter convert;
};
constexpr KindConverter kConverters[] = {
    {FieldKind::kText, ConvertText},
    {FieldKind::kCheckBox, ConvertState},
    {FieldKind::kRadioButton, ConvertState},
    {FieldKind::kPushButton, Refuse},
    {FieldKind::kComboBox, ConvertCombo},
    {FieldKind::kListBox, ConvertList},
    {FieldKind::kOther, Refuse},
};

ObjectHandle NewText(ObjectDoc doc, const std::string& bytes) {
  return objects::NewString(doc, 0, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

bool IsText(ObjectHandle object, const std::string& bytes) {
  return document::IsKind(object, ObjectKind::kString) && document::BytesOf(object) == bytes;
}

bool HoldsTexts(ObjectHandle held, const std::vector<std::string>& texts) {
  if (!document::IsKind(held, ObjectKind::kArray)) return false;
  if (objects::ArrayLength(held) != texts.size()) return false;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!IsText(objects::ArrayGet(held, static_cast<std::uint32_t>(i)), texts[i])) return false;
  }
  return true;
}

}  // namespace

FieldToFill ReadFieldToFill(ObjectHandle dict, std::uint32_t flags) {
  FieldToFill field{KindOfField(dict, flags), flags, MaxLengthOfField(dict)};
  switch (field.kind) {
    case FieldKind::kCheckBox:
    case FieldKind::kRadioButton:
      field.states = OnStatesOf(dict);
      break;
    case FieldKind::kComboBox:
    case FieldKind::kListBox:
      field.options = ChoiceOptionsOf(dict);
      break;
    default:
      break;
  }
  return field;
}

std::optional<FieldValue> ConvertValue(const FieldToFill& field, const json& given,
                                       std::string* problem) {
  for (const KindConverter& entry : kConverters) {
    if (entry.kind == field.kind) return entry.convert(field, given, problem);
  }
  return Refuse(field, given, problem);
}

ObjectHandle NewValueObject(ObjectDoc doc, const FieldValue& value) {
  switch (value.form) {
    case FieldValue::Form::kText:
      return NewText(doc, value.texts.front());
    case FieldValue::Form::kState:
      return objects::NewName(doc, 0, value.state);
    case FieldValue::Form::kTexts: {
      const auto count = static_cast<std::uint32_t>(value.texts.size());
      const ObjectHandle array = objects::NewArray(doc, 0, count);
      for (std::uint32_t i = 0; i < count; ++i) {
        objects::ArrayPut(array, i, NewText(doc, value.texts[i]));
      }
      return array;
    }
    default:
      return kNullObject;
  }
}

// A button without a value reads as Off.
bool HoldsValue(ObjectHandle held, const FieldValue& value) {
  switch (value.form) {
    case FieldValue::Form::kText:
      return IsText(held, value.texts.front());
    case FieldValue::Form::kState:
      return document::NameOr(held, kNoAtom) == value.state;
    case FieldValue::Form::kTexts:
      return HoldsTexts(held, value.texts);
    default:
      return document::IsNull(held) || document::NameOr(held, kNoAtom) == Keys().Off;
  }
}

}  // namespace quillon::app
