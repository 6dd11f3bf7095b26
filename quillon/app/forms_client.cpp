#include "quillon/app/forms_client.h"

#include <algorithm>
#include <charconv>

#include "quillon/app/form_keys.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"

namespace quillon::app {
namespace {

// Real forms nest a handful of levels; a chain of parents beyond this is a cycle.
constexpr int kMaxParents = 64;

// In the order of FieldKind.
constexpr const char* kKindNames[] = {"text",      "check box", "radio button", "push button",
                                      "combo box", "list box",  "other"};

const FormsTable* formsTable = nullptr;

// The UTF-16 unit of an escape "%uXXXX" at `position`.
bool EscapedUnit(std::string_view name, std::size_t position, unsigned* unit) {
  if (name.substr(position, 2) != "%u" || name.size() - position < 6) return false;
  const char* digits = name.data() + position + 2;
  const auto [end, error] = std::from_chars(digits, digits + 4, *unit, 16);
  return error == std::errc() && end == digits + 4;
}

void AppendUnit(unsigned unit, std::string* utf16) {
  *utf16 += static_cast<char>(unit >> 8 & 0xFF);
  *utf16 += static_cast<char>(unit & 0xFF);
}

void AppendCharacter(char32_t character, std::string* utf16) {
  if (character < 0x10000) {
    AppendUnit(static_cast<unsigned>(character), utf16);
    return;
  }
  const auto rest = static_cast<unsigned>(character - 0x10000);
  AppendUnit(0xD800 + (rest >> 10), utf16);
  AppendUnit(0xDC00 + (rest & 0x3FF), utf16);
}

}  // namespace

const FormsTable& Forms() {
  if (formsTable == nullptr) {
    const Atom name = core::AtomFromName(quillform::kFormsTableName);
    formsTable = static_cast<const FormsTable*>(core::GetTable(name, quillform::kFormsVersion));
  }
  if (formsTable == nullptr) {
    Fail(kErrorNotOffered, "no plug-in that is loaded offers form fields (the table \"Forms\")");
  }
  return *formsTable;
}

void ForgetForms() { formsTable = nullptr; }

const char* KindName(FieldKind kind) { return kKindNames[static_cast<std::size_t>(kind)]; }

ObjectHandle InheritedFieldEntry(ObjectHandle dict, Atom key) {
  for (int level = 0; level < kMaxParents && document::IsKind(dict, ObjectKind::kDict); ++level) {
    const ObjectHandle entry = objects::DictGet(dict, key);
    if (!document::IsNull(entry)) return entry;
    dict = objects::DictGet(dict, Keys().Parent);
  }
  return kNullObject;
}

FieldKind KindOfField(ObjectHandle dict, std::uint32_t fieldFlags) {
  const Atom type = document::NameOr(InheritedFieldEntry(dict, Keys().FT), kNoAtom);
  if (type == Keys().Tx) return FieldKind::kText;
  if (type == Keys().Ch) {
    return (fieldFlags & kFlagCombo) != 0 ? FieldKind::kComboBox : FieldKind::kListBox;
  }
  if (type != Keys().Btn) return FieldKind::kOther;
  if ((fieldFlags & kFlagPushButton) != 0) return FieldKind::kPushButton;
  return (fieldFlags & kFlagRadio) != 0 ? FieldKind::kRadioButton : FieldKind::kCheckBox;
}

std::uint32_t MaxLengthOfField(ObjectHandle dict) {
  const ObjectHandle entry = InheritedFieldEntry(dict, Keys().MaxLen);
  return static_cast<std::uint32_t>(std::max(0, document::IntegerOr(entry, 0)));
}

std::string NameToUtf8(std::string_view name) {
  if (name.find("%u") == std::string_view::npos) return PdfDocToUtf8(name);
  std::string utf16 = "\xFE\xFF";
  for (std::size_t position = 0; position < name.size();) {
    unsigned unit = 0;
    if (EscapedUnit(name, position, &unit)) {
      AppendUnit(unit, &utf16);
      position += 6;
    } else {
      AppendCharacter(PdfDocCharacter(static_cast<unsigned char>(name[position++])), &utf16);
    }
  }
  return PdfTextToUtf8(utf16);
}

std::string Utf8ToName(std::string_view utf8) {
  // Plain text stands in the file as it is, even where it looks like an escape.
  if (auto plain = Utf8ToPdfDoc(utf8, nullptr)) return *plain;
  std::string utf16 = "\xFE\xFF";
  for (std::size_t position = 0; position < utf8.size();) {
    AppendCharacter(NextUtf8(utf8, &position).value_or(kNoCharacter), &utf16);
  }
  const auto length = static_cast<std::uint32_t>(utf16.size());
  std::string name(document::NarrowPDFText(utf16.data(), length, nullptr, 0), '\0');
  document::NarrowPDFText(utf16.data(), length, name.data(),
                          static_cast<std::uint32_t>(name.size() + 1));
  return name;
}

}  // namespace quillon::app
