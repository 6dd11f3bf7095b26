#include <charconv>
#include <cstring>
#include <optional>

#include "plugin/model/field_name_text.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr char kSeparator = '.';

bool IsUtf16(std::string_view text) {
  return text.size() >= 2 && text[0] == '\xFE' && text[1] == '\xFF';
}

std::string DecimalText(std::int64_t value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  return {digits, end};
}

// Names that a parent numbers by itself: AI is [base count rotation].
std::int64_t IntegerAt(ObjectHandle array, std::uint32_t index) {
  const ObjectHandle element = Objects->ArrayGet(array, index);
  return IsKind(element, ObjectKind::kInteger) || IsKind(element, ObjectKind::kFixed)
             ? Objects->IntegerValue(element)
             : 0;
}

const ArrayIndex& IndexOfKids(FormRecord& record, ObjectHandle kids, std::uint32_t length) {
  ArrayIndex& index = record.kidsIndex[IdentityOf(kids)];
  if (index.length != length) {
    index = ArrayIndex{};
    for (std::uint32_t i = 0; i < length; ++i) {
      index.positionOf[IdentityOf(Objects->ArrayGet(kids, i))] = i;
    }
    index.length = length;
  }
  return index;
}

// The last position of a kid, -1 when it is not there.
std::int64_t PositionInKids(ObjectHandle parent, ObjectHandle kid) {
  const ObjectHandle kids = Objects->DictGet(parent, key::Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return -1;
  const std::uint32_t length = Objects->ArrayLength(kids);
  FormRecord* record = FindFormRecord(Objects->DocumentOf(parent));
  if (record != nullptr && record->bulkDepth > 0) {
    const ArrayIndex& index = IndexOfKids(*record, kids, length);
    const auto found = index.positionOf.find(IdentityOf(kid));
    return found != index.positionOf.end() ? static_cast<std::int64_t>(found->second) : -1;
  }
  for (std::uint32_t i = length; i-- > 0;) {
    if (Objects->Equal(Objects->ArrayGet(kids, i), kid)) return i;
  }
  return -1;
}

std::string NumberOfKid(ObjectHandle parent, ObjectHandle numbering, ObjectHandle kid) {
  std::int64_t position = PositionInKids(parent, kid);
  if (Objects->ArrayLength(numbering) > 2) {
    const std::int64_t rotation = IntegerAt(numbering, 2);
    if (rotation == 90 || rotation == 180) position = IntegerAt(numbering, 1) - position;
  }
  return DecimalText(IntegerAt(numbering, 0) + position);
}

// Appends ".", when there is a prefix, and a partial name.
bool Join(NameText* name, std::string_view partial) {
  if (name->length + 1 + partial.size() > kMaxNameLength) return false;
  name->text[name->length++] = kSeparator;
  std::memcpy(name->text + name->length, partial.data(), partial.size());
  name->length += static_cast<std::uint32_t>(partial.size());
  name->text[name->length] = '\0';
  return true;
}

bool StartWith(NameText* name, std::string_view partial) {
  if (partial.size() > kMaxNameLength) return false;
  std::memcpy(name->text, partial.data(), partial.size());
  name->length = static_cast<std::uint32_t>(partial.size());
  name->text[name->length] = '\0';
  return true;
}

bool MakeFullName(ObjectHandle dict, std::uint32_t depth, NameText* name) {
  if (depth > kMaxFieldDepth) return false;
  std::string partial;
  const bool named = PartialNameOf(dict, &partial);
  const ObjectHandle parent = Objects->DictGet(dict, key::Parent);
  if (!IsKind(parent, ObjectKind::kDict)) return named && StartWith(name, partial);
  if (named) {
    if (partial.find(kSeparator) != std::string::npos) Raise(quillon::kErrorBadStructure);
    return MakeFullName(parent, depth + 1, name) && Join(name, partial);
  }
  if (!MakeFullName(parent, depth + 1, name)) return false;
  const ObjectHandle numbering = Objects->DictGet(parent, key::AI);
  if (!IsKind(numbering, ObjectKind::kArray)) return true;
  return Join(name, NumberOfKid(parent, numbering, dict));
}

bool NodeIsAnnot(FieldNode node, AnnotHandle annot) {
  return NodeIsWidget(node) && Document->AnnotEqual(AnnotOfNode(node), annot);
}

// Why a widget cannot take the name of an existing field, or 0.
std::uint16_t ConflictWithField(FieldNode field, AnnotHandle widget, Atom kind) {
  if (!FieldNodeIsTerminal(field)) return 3;
  FieldNode leaf = field;
  while (leaf->firstKid != nullptr) leaf = leaf->firstKid;
  if (!NodeIsWidget(leaf) || FieldKindOfNode(leaf) == kind) return 0;
  if (!NodeIsAnnot(leaf, widget)) return 2;
  const bool hasOthers = (leaf->status & kNodeNameShared) != 0 && leaf->parent != nullptr &&
                         leaf->parent->firstKid->nextSibling != nullptr;
  return hasOthers ? 2 : 0;
}

// Whether a terminal field would have to take the widget's field as its kid. The widget's own field
// does not stand in its way: it is renamed with it.
bool PrefixConflicts(FieldNode field, AnnotHandle widget) {
  if (!FieldNodeIsValid(field) || !FieldNodeIsTerminal(field)) return false;
  if (NodeIsAnnot(field, widget)) return false;
  const FieldNode kid = field->firstKid;
  return kid == nullptr || kid->nextSibling != nullptr || !NodeIsAnnot(kid, widget);
}

}  // namespace

std::string NameOfText(ObjectHandle text) {
  std::uint32_t length = 0;
  const char* bytes = Objects->StringValue(text, &length);
  const std::string_view view(bytes, length);
  if (!IsUtf16(view)) return std::string(view.substr(0, view.find('\0')));
  char start[kMaxNameLength + 1];
  const std::uint32_t whole = Document->NarrowPDFText(bytes, length, start, sizeof start);
  std::string name(whole + 1, '\0');
  Document->NarrowPDFText(bytes, length, name.data(), whole + 1);
  name.resize(whole);
  return name;
}

bool PartialNameOf(ObjectHandle dict, std::string* name) {
  const ObjectHandle partial = Objects->DictGet(dict, key::T);
  if (IsKind(partial, ObjectKind::kString)) {
    *name = NameOfText(partial);
    return true;
  }
  if (IsKind(partial, ObjectKind::kInteger)) {
    *name = DecimalText(Objects->IntegerValue(partial));
    return true;
  }
  return false;
}

bool FullNameTextOf(ObjectHandle dict, NameText* name) { return MakeFullName(dict, 0, name); }

char* FullNameOf(ObjectHandle dict) {
  NameText name;
  if (!IsKind(dict, ObjectKind::kDict) || !FullNameTextOf(dict, &name)) return nullptr;
  auto* text = static_cast<char*>(AllocOrRaise(sizeof name.text));
  std::memcpy(text, name.text, name.length + 1);
  return text;
}

std::uint16_t CheckFieldName(DocHandle doc, AnnotHandle widget, Atom kind, char* name) {
  if (name == nullptr) return 1;
  std::size_t length = std::strlen(name);
  while (length > 0 && name[length - 1] == kSeparator) name[--length] = '\0';
  if (length == 0) return 1;

  const FieldNode field = FindFieldByName(doc, name);
  if (FieldNodeIsValid(field)) return ConflictWithField(field, widget, kind);

  std::string prefix(name);
  for (auto dot = prefix.rfind(kSeparator); dot != std::string::npos;
       dot = prefix.rfind(kSeparator)) {
    prefix.resize(dot);
    if (PrefixConflicts(FindFieldByName(doc, prefix.c_str()), widget)) return 4;
  }
  return 0;
}

}  // namespace quillform
