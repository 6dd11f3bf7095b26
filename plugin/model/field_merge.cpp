#include <optional>
#include <vector>

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

// T, FT, Ff and the inheritable entries that the field's own dictionary has.
std::vector<Atom> KeysOfField(FieldNode field) {
  std::vector<Atom> keys = {key::T, key::FT, key::Ff};
  for (std::uint32_t bit = kBitQ; bit != 0; bit >>= 1) {
    if ((field->ownEntries & bit) != 0) keys.push_back(InheritableKey(bit));
  }
  return keys;
}

// A dictionary of what belongs to the field, with the field's widget as its kid. Nothing refers to
// it yet, and the widget is as it was.
ObjectHandle CopyOfField(FieldNode field, const std::vector<Atom>& keys) {
  const ObjectHandle old = field->dict;
  const ObjectHandle made = Objects->NewDict(field->record->objectDoc, true, kSplitCapacity);
  for (const Atom key : keys) {
    const ObjectHandle entry = Objects->DictGet(old, key);
    if (!IsNull(entry)) PutCopy(made, key, entry);
  }
  const ObjectHandle above = Objects->DictGet(old, key::Parent);
  if (IsKind(above, ObjectKind::kDict)) Objects->DictPut(made, key::Parent, above);
  MoveToEnd(NeedKids(made), old);
  return made;
}

// Puts the copy in the field's place and takes from the widget what the copy has.
void PutInPlace(FieldNode field, ObjectHandle made, const std::vector<Atom>& keys,
                ObjectHandle form) {
  const ObjectHandle old = field->dict;
  ReplaceInArray(ContainerOf(made, form), old, made);
  Objects->DictPut(old, key::Parent, made);
  for (const Atom key : keys) {
    if (key != key::T) RemoveEntry(old, key);
  }
  RecomputeOwnEntries(field);
}

// After a failure in the midst of a split: the widget is the field again, under its name and with
// its value. Each step is tried, whatever becomes of the others.
void UndoSplit(ObjectHandle old, ObjectHandle made, const std::vector<Atom>& keys,
               ObjectHandle form, const std::string& name) {
  for (const Atom key : keys) {
    DropFailures([&] {
      const ObjectHandle entry = Objects->DictGet(made, key);
      if (!IsNull(entry) && !Objects->DictKnown(old, key)) PutCopy(old, key, entry);
    });
  }
  DropFailures([&] {
    const ObjectHandle above = Objects->DictGet(made, key::Parent);
    if (IsKind(above, ObjectKind::kDict)) {
      Objects->DictPut(old, key::Parent, above);
    } else {
      RemoveEntry(old, key::Parent);
    }
  });
  DropFailures([&] {
    if (FieldNode node = ExistingNodeOf(made)) ForgetNodes(node);
  });
  DropFailures([&] {
    const ObjectHandle container = ContainerOf(made, form);
    ReplaceInArray(container, made, old);
  });
  DropFailures([&] { InitFieldDict(old, name.c_str()); });
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
  const std::vector<Atom> keys = KeysOfField(field);
  const ObjectHandle made = CopyOfField(field, keys);
  std::optional<NodePin> pin;
  bool whole = false;
  const FailureCode failure = CatchFailure([&] {
    PutInPlace(field, made, keys, form);
    JoinField(made, widget);
    pin.emplace(InitFieldDict(made, name.c_str()));
    whole = pin->node != nullptr && InitFieldDict(old, nullptr) != nullptr;
  });
  if (failure != quillon::kErrorNone) {
    UndoSplit(old, made, keys, form, name);
    Raise(failure);
  }
  if (whole && pin->node != nullptr && SplitIsAccepted(pin->node)) return 0;
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
