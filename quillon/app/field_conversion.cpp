#include "quillon/app/field_conversion.h"

#include <cstdio>

#include "quillon/app/console.h"
#include "quillon/document/text_encoding.h"

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
  return FieldValue{std::move(bytes)};
}

struct KindConverter {
  FieldKind kind;
  Converter convert;  // null: fields of the kind cannot be filled yet
};
constexpr KindConverter kConverters[] = {
    {FieldKind::kText, ConvertText},    {FieldKind::kCheckBox, nullptr},
    {FieldKind::kRadioButton, nullptr}, {FieldKind::kPushButton, nullptr},
    {FieldKind::kComboBox, nullptr},    {FieldKind::kListBox, nullptr},
    {FieldKind::kOther, nullptr},
};

}  // namespace

std::optional<FieldValue> ConvertValue(const FieldToFill& field, const json& given,
                                       std::string* problem) {
  for (const KindConverter& entry : kConverters) {
    if (entry.kind == field.kind && entry.convert != nullptr) {
      return entry.convert(field, given, problem);
    }
  }
  *problem =
      std::string("a field of the kind \"") + KindName(field.kind) + "\" cannot be filled yet";
  return std::nullopt;
}

}  // namespace quillon::app
