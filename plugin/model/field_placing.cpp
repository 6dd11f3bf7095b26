#include "plugin/model/field_placing.h"

#include "plugin/model/form_dict.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr char kSeparator = '.';
constexpr std::uint32_t kUnplaced = quillon::kAnnotInvisible | quillon::kAnnotHidden;

// False for an element that names no field; a name that breaks the rules is none.
bool NameOfElement(ObjectHandle element, NameText* name) {
  if (!IsKind(element, ObjectKind::kDict)) return false;
  bool named = false;
  const FailureCode failure = CatchFailure([&] { named = FullNameTextOf(element, name); });
  if (failure != quillon::kErrorNone && failure != quillon::kErrorBadStructure) Raise(failure);
  return named;
}

bool IsSameOrAbove(std::string_view field, std::string_view name) {
  return name.starts_with(field) &&
         (name.size() == field.size() || name[field.size()] == kSeparator);
}

PlaceInFields SearchFields(ObjectHandle fields, ObjectHandle dict, std::string_view name) {
  for (std::uint32_t i = Objects->ArrayLength(fields); i-- > 0;) {
    const ObjectHandle element = Objects->ArrayGet(fields, i);
    if (Objects->Equal(element, dict)) return PlaceInFields::kStands;
    NameText field;
    if (NameOfElement(element, &field) && IsSameOrAbove(ViewOf(field), name)) {
      return PlaceInFields::kBelongsElsewhere;
    }
  }
  return PlaceInFields::kMissing;
}

void NoteElement(FieldsIndex& index, std::uint32_t position, ObjectHandle element,
                 std::string_view name) {
  index.positionOf[IdentityOf(element)] = position;
  index.positionOfName[std::string(name)] = position;
}

const FieldsIndex& IndexOfFields(FormRecord& record, ObjectHandle fields) {
  FieldsIndex& index = record.fieldsIndex;
  const std::uint32_t length = Objects->ArrayLength(fields);
  if (index.length == length && Objects->Equal(index.array, fields)) return index;
  index = FieldsIndex{};
  for (std::uint32_t i = 0; i < length; ++i) {
    const ObjectHandle element = Objects->ArrayGet(fields, i);
    NameText name;
    if (NameOfElement(element, &name)) NoteElement(index, i, element, ViewOf(name));
  }
  index.array = fields;
  index.length = length;
  return index;
}

PlaceInFields LookUpInFields(const FieldsIndex& index, ObjectHandle dict, std::string_view name) {
  std::int64_t own = -1;
  if (const auto found = index.positionOf.find(IdentityOf(dict)); found != index.positionOf.end()) {
    own = found->second;
  }
  std::string field(name);
  for (;;) {
    const auto found = index.positionOfName.find(field);
    if (found != index.positionOfName.end() && found->second > own) {
      return PlaceInFields::kBelongsElsewhere;
    }
    const auto dot = field.rfind(kSeparator);
    if (dot == std::string::npos) break;
    field.resize(dot);
  }
  return own >= 0 ? PlaceInFields::kStands : PlaceInFields::kMissing;
}

void RemovePartialName(ObjectHandle widget) {
  const AnnotHandle annot = Document->AnnotFromDict(widget);
  Document->AnnotWillChange(annot, key::T);
  const FailureCode failure = CatchFailure([&] { Objects->DictRemove(widget, key::T); });
  Document->AnnotDidChange(annot, key::T, failure);
  if (failure != quillon::kErrorNone) Raise(failure);
}

}  // namespace

PlaceInFields FindInFields(FormRecord& record, ObjectHandle fields, ObjectHandle dict,
                           const NameText& name) {
  if (record.bulkDepth == 0) return SearchFields(fields, dict, ViewOf(name));
  return LookUpInFields(IndexOfFields(record, fields), dict, ViewOf(name));
}

void AppendToFields(FormRecord& record, ObjectHandle fields, ObjectHandle dict,
                    const NameText& name) {
  const std::uint32_t length = Objects->ArrayLength(fields);
  Objects->ArrayInsert(fields, length, dict);
  FieldsIndex& index = record.fieldsIndex;
  if (index.length == length && Objects->Equal(index.array, fields)) {
    NoteElement(index, length, dict, ViewOf(name));
    index.length = length + 1;
  }
}

void MarkMerged(const FormRecord& record) {
  const ObjectHandle form = FormDictOfObjects(record.objectDoc);
  if (IsNull(form)) return;
  const ObjectHandle mark = Objects->DictGet(form, key::WidgetsMerged);
  if (IsKind(mark, ObjectKind::kBoolean) && Objects->BooleanValue(mark)) return;
  Objects->DictPut(form, key::WidgetsMerged, Objects->NewBoolean(record.objectDoc, false, 1));
}

FieldNode PlaceWidget(FormRecord& record, ObjectHandle widget, const NameText& name) {
  RemovePartialName(widget);
  FieldNode placed = nullptr;
  FailureCode failure = quillon::kErrorNone;
  if (fieldPlacement.AddWidgetUnderName != nullptr) {
    failure = CatchFailure([&] { placed = fieldPlacement.AddWidgetUnderName(widget, name.text); });
    DropArrayIndices(record);
  }
  if (failure == quillon::kErrorNoMemory) Raise(failure);
  if (failure != quillon::kErrorNone || !FieldNodeIsValid(placed)) {
    placed = nullptr;
    Document->SetAnnotFlags(Document->AnnotFromDict(widget), kUnplaced);
  }
  MarkMerged(record);
  return placed;
}

FieldNode MoveUnderField(FormRecord& record, ObjectHandle dict, const NameText& name) {
  if (!Objects->DictKnown(dict, key::Kids)) {
    return DictIsWidget(dict) ? PlaceWidget(record, dict, name) : nullptr;
  }
  if (fieldPlacement.ReparentKids != nullptr) fieldPlacement.ReparentKids(dict);
  DropArrayIndices(record);
  return nullptr;
}

}  // namespace quillform
