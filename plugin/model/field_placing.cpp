#include "plugin/model/field_placing.h"

#include "plugin/model/field_dicts.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr char kSeparator = '.';
constexpr std::uint32_t kUnplaced = quillon::kAnnotInvisible | quillon::kAnnotHidden;

bool IsSameOrAbove(std::string_view field, std::string_view name) {
  return name.starts_with(field) &&
         (name.size() == field.size() || name[field.size()] == kSeparator);
}

PlaceInFields SearchFields(ObjectHandle fields, ObjectHandle dict, std::string_view name) {
  for (std::uint32_t i = Objects->ArrayLength(fields); i-- > 0;) {
    const ObjectHandle element = Objects->ArrayGet(fields, i);
    if (Objects->Equal(element, dict)) return PlaceInFields::kStands;
    std::string field;
    if (FullNameOfElement(element, &field) && IsSameOrAbove(field, name)) {
      return PlaceInFields::kBelongsElsewhere;
    }
  }
  return PlaceInFields::kMissing;
}

PlaceInFields LookUpInFields(const ArrayNames& fields, ObjectHandle dict, std::string_view name) {
  std::int64_t own = -1;
  if (const auto found = fields.placeOf.find(IdentityOf(dict)); found != fields.placeOf.end()) {
    own = found->second.order;
  }
  std::string field(name);
  for (;;) {
    const auto found = fields.bearersOf.find(field);
    if (found != fields.bearersOf.end() && !found->second.empty() &&
        found->second.back().order > own) {
      return PlaceInFields::kBelongsElsewhere;
    }
    const auto dot = field.rfind(kSeparator);
    if (dot == std::string::npos) break;
    field.resize(dot);
  }
  return own >= 0 ? PlaceInFields::kStands : PlaceInFields::kMissing;
}

// The whole path, so that the widget can be placed when it is met again.
void GiveNameBack(ObjectHandle widget, const NameText& name) {
  ChangeEntryOf(widget, key::T, [&] {
    const ObjectDoc doc = Objects->DocumentOf(widget);
    Objects->DictPut(widget, key::T, Objects->NewString(doc, false, name.text, name.length));
  });
}

}  // namespace

PlaceInFields FindInFields(FormRecord& record, ObjectHandle fields, ObjectHandle dict,
                           const NameText& name) {
  if (record.bulkDepth == 0) return SearchFields(fields, dict, ViewOf(name));
  return LookUpInFields(NamesInFields(record, fields), dict, ViewOf(name));
}

void MarkMerged(const FormRecord& record) {
  const ObjectHandle form = FormDictOfObjects(record.objectDoc);
  if (IsNull(form)) return;
  const ObjectHandle mark = Objects->DictGet(form, key::WidgetsMerged);
  if (IsKind(mark, ObjectKind::kBoolean) && Objects->BooleanValue(mark)) return;
  Objects->DictPut(form, key::WidgetsMerged, Objects->NewBoolean(record.objectDoc, false, 1));
}

FieldNode PlaceWidget(FormRecord& record, ObjectHandle widget, const NameText& name) {
  ChangeEntryOf(widget, key::T, [&] { Objects->DictRemove(widget, key::T); });
  FieldNode placed = nullptr;
  FailureCode failure = quillon::kErrorNone;
  if (fieldPlacement.AddWidgetUnderName != nullptr) {
    failure = CatchFailure([&] { placed = fieldPlacement.AddWidgetUnderName(widget, name.text); });
  }
  if (failure == quillon::kErrorNoMemory) {
    DropFailures([&] { GiveNameBack(widget, name); });
    Raise(failure);
  }
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
