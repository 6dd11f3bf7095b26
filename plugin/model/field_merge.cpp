#include "plugin/host/form_events.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/field_making.h"
#include "plugin/model/field_name_text.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr std::uint32_t kSplitCapacity = 10;

// Where the widget goes: a field that has widgets already, or that stands apart from any.
FieldNode FieldForWidgets(FieldNode field) {
  for (FieldNode bearer = FirstOfName(field); bearer != nullptr; bearer = bearer->sameNameNext) {
    if (!FieldNodeIsValid(bearer)) continue;
    if (bearer->firstKid != nullptr || !NodeIsWidget(bearer)) return bearer;
  }
  return nullptr;
}

bool TypeFits(FieldNode field, ObjectHandle widget) {
  const ObjectHandle type = Objects->DictGet(widget, key::FT);
  return !IsKind(type, ObjectKind::kName) || Objects->NameValue(type) == field->type;
}

// The flags of a field with widgets are settled; the first two must agree about them.
bool FlagsFit(FieldNode field, ObjectHandle widget) {
  const ObjectHandle flags = Objects->DictGet(widget, key::Ff);
  if (field->firstKid != nullptr || !IsKind(flags, ObjectKind::kInteger)) return true;
  return static_cast<std::uint32_t>(Objects->IntegerValue(flags)) == field->flags[1];
}

bool KeepsOptions(FieldNode field, ObjectHandle widget) {
  FieldNode leaf = field;
  while (leaf->firstKid != nullptr) leaf = leaf->firstKid;
  return IsKind(Objects->DictGet(widget, key::Opt), ObjectKind::kArray) &&
         IsKind(GetInherited(leaf, key::Opt), ObjectKind::kArray);
}

// The field's value, type and flags apply to the widget from here on.
void DropOwnEntries(FieldNode field, ObjectHandle widget) {
  if (!KeepsOptions(field, widget)) RemoveEntry(widget, key::Opt);
  if (field->firstKid == nullptr) RemoveEntry(widget, key::Ff);
  for (Atom key : {key::FT, key::V, key::DV}) RemoveEntry(widget, key);
}

void JoinField(ObjectHandle field, ObjectHandle widget) {
  Objects->DictPut(widget, key::Parent, field);
  MoveToEnd(NeedKids(field), widget);
}

// What belongs to the field moves from its widget into a dictionary of its own.
ObjectHandle MakeFieldOf(FieldNode field, ObjectHandle form) {
  const ObjectHandle old = field->dict;
  const ObjectHandle made = Objects->NewDict(field->record->objectDoc, true, kSplitCapacity);
  PutCopy(made, key::T, Objects->DictGet(old, key::T));
  MoveEntry(old, made, key::FT);
  MoveEntry(old, made, key::Ff);
  for (std::uint32_t bit = kBitQ; bit != 0; bit >>= 1) {
    if ((field->ownEntries & bit) != 0) MoveEntry(old, made, InheritableKey(bit));
  }
  RecomputeOwnEntries(field);
  const ObjectHandle above = Objects->DictGet(old, key::Parent);
  if (IsKind(above, ObjectKind::kDict)) Objects->DictPut(made, key::Parent, above);
  ReplaceInArray(ContainerOf(made, form), old, made);
  JoinField(made, old);
  return made;
}

// Whether subscribers let the split field take the second widget.
bool SplitIsAccepted(FieldNode made) {
  FormEventRecord event{};
  event.document = made->record->doc;
  event.node = made;
  FormEventAnnounce(kEventFieldSplit, &event);
  return event.cancel == 0;
}

std::uint32_t SplitFor(FieldNode field, ObjectHandle widget) {
  const ObjectHandle form = FormDictOfObjects(field->record->objectDoc);
  std::string name;
  if (IsNull(form) || !PartialNameOf(field->dict, &name)) return 1;
  const ObjectHandle old = field->dict;
  const ObjectHandle made = MakeFieldOf(field, form);
  JoinField(made, widget);
  NodePin pin(InitFieldDict(made, name.c_str()));
  const bool whole = pin.node != nullptr && InitFieldDict(old, nullptr) != nullptr;
  if (whole && pin.node != nullptr && SplitIsAccepted(pin.node)) return 0;
  RemoveFromArray(KidsOf(made), widget);
  RemoveEntry(widget, key::Parent);
  return 1;
}

}  // namespace

std::uint32_t MergeWidgetIntoField(FieldNode field, ObjectHandle widget) {
  if (!FieldNodeIsValid(field)) Raise(quillon::kErrorBadParameter);
  NodePin pin(field);
  LoadKids(field);
  field = pin.node;
  if (!FieldNodeIsTerminal(field)) Raise(quillon::kErrorBadParameter);
  if (!IsKind(widget, ObjectKind::kDict) || Objects->Equal(field->dict, widget)) return 1;
  if (!TypeFits(field, widget) || !FlagsFit(field, widget)) return 1;
  FieldNode home = FieldForWidgets(field);
  if (home == nullptr && (field->status & kNodeNameShared) != 0) return 1;
  DropOwnEntries(field, widget);
  if (home == nullptr) return SplitFor(field, widget);
  JoinField(home->dict, widget);
  return 0;
}

}  // namespace quillform
