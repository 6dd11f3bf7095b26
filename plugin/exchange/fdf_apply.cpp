#include "plugin/exchange/fdf_apply.h"

#include <optional>
#include <string>

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/fdf_widget.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kPlainText = 76;
constexpr std::uint32_t kStatusSize = 257;

// Entries that share their kids can be nested so that a short file has more names than any form has
// fields.
constexpr std::uint32_t kMostEntries = 4'000'000;

// One import, and the entries met so far.
struct Import {
  DocHandle doc;
  std::uint32_t entries;
};

// One level of Fields or Kids.
struct Level {
  Import* import;
  std::string prefix;  // of the names on this level, with its "."
  bool valuesOnly;
};

void ApplyElements(ObjectHandle elements, Level* level);

std::string FullNameOfEntry(const Level& level, ObjectHandle entry) {
  if (!IsKind(entry, ObjectKind::kDict)) Raise(ownErrors.invalidFdf);
  const ObjectHandle part = Objects->DictGet(entry, key::T);
  if (!IsKind(part, ObjectKind::kString)) Raise(ownErrors.invalidFdf);
  return level.prefix + NameOfText(part);
}

void ApplyKids(ObjectHandle entry, const std::string& name, Level* level) {
  Level below{level->import, name + ".", true};
  // No field below has a name that long.
  if (below.prefix.size() <= kMaxNameLength) {
    ApplyElements(Objects->DictGet(entry, key::Kids), &below);
  }
  level->valuesOnly = level->valuesOnly && below.valuesOnly;
}

bool IsForWidgets(ObjectHandle entry) {
  for (const Atom key :
       {key::AP, key::AppearanceState, key::A, key::AA, key::F, key::SetF, key::ClrF}) {
    if (Objects->DictKnown(entry, key)) return true;
  }
  return false;
}

void ApplyToWidgets(FieldNode field, ObjectHandle entry) {
  const ObjectHandle dict = HighestOfName(field)->dict;
  if (DictIsWidget(dict)) {
    ApplyToWidget(dict, entry);
    return;
  }
  const ObjectHandle kids = Objects->DictGet(dict, key::Kids);
  if (!FieldNodeIsTerminal(field) || !IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(kids); ++i) {
    const ObjectHandle kid = Objects->ArrayGet(kids, i);
    if (IsKind(kid, ObjectKind::kDict)) ApplyToWidget(kid, entry);
  }
}

// The field flags that the entry asks for; none when it says nothing of them.
std::optional<std::uint32_t> FieldFlagsFor(FieldNode field, ObjectHandle entry) {
  if (Objects->DictKnown(entry, key::Ff)) return FlagsEntry(entry, key::Ff);
  return ChangedFlags(GetFieldFlags(field, 1), entry, key::SetFf, key::ClrFf);
}

void ApplyValue(FieldNode field, ObjectHandle value) {
  const NewObject copy(Objects->CopyObject(value, Objects->DocumentOf(field->dict)));
  SetFieldValue(field, copy.handle);
}

void ApplyToField(FieldNode field, ObjectHandle entry, Level* level) {
  NodePin pin(field);
  if (IsForWidgets(entry)) {
    ApplyToWidgets(field, entry);
    level->valuesOnly = false;
  }
  if (const auto flags = FieldFlagsFor(pin.node, entry)) {
    SetFieldFlags(pin.node, 1, *flags);
    level->valuesOnly = false;
  }
  if (Objects->DictKnown(entry, key::Opt)) {
    SetFieldOptions(pin.node, Objects->DictGet(entry, key::Opt));
    level->valuesOnly = false;
  }
  const ObjectHandle value = Objects->DictGet(entry, key::V);
  if (pin.node != nullptr && !IsNull(value)) ApplyValue(pin.node, value);
}

void ApplyEntry(ObjectHandle entry, Level* level) {
  if (++level->import->entries > kMostEntries) Raise(ownErrors.invalidFdf);
  const std::string name = FullNameOfEntry(*level, entry);
  if (Objects->DictKnown(entry, key::Kids)) {
    ApplyKids(entry, name, level);
    return;
  }
  if (name.size() > kMaxNameLength) return;
  const FieldNode field = FindFieldByName(level->import->doc, name.c_str());
  if (field != nullptr) ApplyToField(field, entry, level);
}

Boolean ApplyElement(ObjectHandle, ObjectHandle element, void* data) {
  ApplyEntry(element, static_cast<Level*>(data));
  return 1;
}

void ApplyElements(ObjectHandle elements, Level* level) {
  const ObjectKind kind = Objects->TypeOf(elements);
  if (kind != ObjectKind::kArray && kind != ObjectKind::kDict) Raise(ownErrors.invalidFdf);
  Objects->EnumDict(elements, Wrap<&ApplyElement>, level);
}

void ShowStatus(ObjectHandle status) {
  if (!IsKind(status, ObjectKind::kString)) return;
  std::uint32_t length = 0;
  const char* bytes = Objects->StringValue(status, &length);
  char text[kStatusSize];
  Document->PDFToHostText(bytes, length, text, sizeof text);
  ShowMessage(MB_ICONEXCLAMATION, MB_OK, kPlainText, text);
}

}  // namespace

bool ImportFDF(DocHandle doc, ObjectDoc fdf) {
  const ObjectHandle dict = FdfDictOf(fdf);
  ShowStatus(Objects->DictGet(dict, key::Status));
  if (!Objects->DictKnown(dict, key::Fields)) return true;
  LoadAllFields(doc);
  Import import{doc, 0};
  Level top{&import, {}, true};
  ApplyElements(Objects->DictGet(dict, key::Fields), &top);
  return top.valuesOnly;
}

}  // namespace quillform
