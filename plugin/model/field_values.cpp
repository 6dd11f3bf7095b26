#include "plugin/model/field_values.h"

#include "plugin/host/form_events.h"
#include "plugin/model/field_making.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "plugin/model/volatile_fields.h"

namespace quillform {
namespace {

bool IsToggle(FieldNode node) { return node->type == key::Btn && !IsPushButton(node); }

ObjectHandle ValueOfName(FieldNode node, std::uint32_t bit) {
  const Atom key = InheritableKey(bit);
  if ((node->ownEntries & bit) != 0) return Objects->DictGet(node->dict, key);
  if ((node->status & kNodeNameShared) != 0) {
    for (FieldNode bearer = FirstOfName(node); bearer != nullptr; bearer = bearer->sameNameNext) {
      if ((bearer->ownEntries & bit) != 0) return Objects->DictGet(bearer->dict, key);
    }
  }
  if (IsToggle(node)) return Objects->NewName(node->record->objectDoc, false, key::Off);
  return kNullObject;
}

ObjectHandle EntryOfAncestors(FieldNode node, std::uint32_t bit) {
  const Atom key = InheritableKey(bit);
  const ObjectHandle form = FormDictOfObjects(node->record->objectDoc);
  for (FieldNode holder = node; holder != nullptr; holder = holder->parent) {
    if ((holder->ownEntries & bit) != 0) return Objects->DictGet(holder->dict, key);
  }
  return IsNull(form) ? kNullObject : Objects->DictGet(form, key);
}

FormEventRecord ValueEvent(FieldNode field, ObjectHandle value) {
  FormEventRecord event{};
  event.document = field->record->doc;
  event.node = field;
  event.value = value;
  return event;
}

void ChangeValue(const NodePin& field, ObjectHandle value) {
  FormEventRecord before = ValueEvent(field.node, ValueToStore(field.node, value));
  FormEventAnnounce(kEventValueWillChange, &before);
  if (before.cancel != 0 || field.node == nullptr) return;

  const ObjectHandle old = ValueToStore(field.node, GetFieldValue(field.node));
  const ObjectHandle next = ValueToStore(field.node, before.value);
  const bool differs = !ValuesEqual(old, next);
  if (!differs && !FieldIsStale(field.node)) return;
  FailureCode failure = quillon::kErrorNone;
  if (differs) {
    StoreFieldEntry(field.node, kBitV, next);
    const bool cleared = IsNull(next);
    FormEventRecord after =
        ValueEvent(field.node, cleared ? kNullObject : GetFieldValue(field.node));
    failure = CatchFailure([&] { FormEventAnnounce(kEventValueChanged, &after); });
  }
  if (failure == quillon::kErrorNone && field.node != nullptr) {
    failure = CatchFailure([&] { RefreshAllWidgets(field.node); });
  }
  // A password that is stored is to be taken out again, whatever became of its appearance.
  if (differs && field.node != nullptr) NoteVolatileValue(field.node);
  if (failure != quillon::kErrorNone) Raise(failure);
}

void RefreshStaleWidgets(FieldNode field) {
  VisitNodesOfName(field, [](FieldNode bearer) {
    if ((bearer->status & kNodeStale) != 0) RefreshWidget(bearer, kNullObject, kNoAtom);
  });
}

constexpr std::uint32_t kDeepestValue = 16;
constexpr std::uint32_t kMostComparisons = 1000000;

// Arrays can contain each other in a cycle, or one another many times over; beyond these bounds
// only identity makes them equal.
bool DeepEqual(ObjectHandle a, ObjectHandle b, std::uint32_t depth, std::uint32_t& comparisons) {
  const ObjectKind kind = Objects->TypeOf(a);
  if (kind != Objects->TypeOf(b)) return false;
  if (Objects->Equal(a, b)) return true;
  if (kind == ObjectKind::kString) {
    std::uint32_t lengthA = 0;
    std::uint32_t lengthB = 0;
    const char* bytesA = Objects->StringValue(a, &lengthA);
    const char* bytesB = Objects->StringValue(b, &lengthB);
    return std::string_view(bytesA, lengthA) == std::string_view(bytesB, lengthB);
  }
  if (kind != ObjectKind::kArray || depth == kDeepestValue) return false;
  const std::uint32_t length = Objects->ArrayLength(a);
  if (length != Objects->ArrayLength(b)) return false;
  for (std::uint32_t i = 0; i < length; ++i) {
    if (++comparisons > kMostComparisons) return false;
    if (!DeepEqual(Objects->ArrayGet(a, i), Objects->ArrayGet(b, i), depth + 1, comparisons)) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool IsPushButton(FieldNode node) {
  return node->type == key::Btn && (node->flags[1] & kFieldPushButton) != 0;
}

ObjectHandle ValueToStore(FieldNode field, ObjectHandle value) {
  const bool off =
      IsToggle(field) && IsKind(value, ObjectKind::kName) && Objects->NameValue(value) == key::Off;
  return off ? kNullObject : value;
}

bool ValuesEqual(ObjectHandle a, ObjectHandle b) {
  std::uint32_t comparisons = 0;
  return DeepEqual(a, b, 0, comparisons);
}

ObjectHandle GetFieldEntry(FieldNode node, std::uint32_t bit) {
  if (!FieldNodeIsValid(node) || InheritableKey(bit) == kNoAtom) return kNullObject;
  if (bit == kBitV || bit == kBitDV) return ValueOfName(node, bit);
  return EntryOfAncestors(node, bit);
}

ObjectHandle GetInherited(FieldNode node, Atom key) {
  if (!FieldNodeIsValid(node)) return kNullObject;
  for (FieldNode holder = node; holder != nullptr; holder = holder->parent) {
    const ObjectHandle value = Objects->DictGet(holder->dict, key);
    if (!IsNull(value)) return value;
  }
  return kNullObject;
}

ObjectHandle GetFieldValue(FieldNode node) { return GetFieldEntry(node, kBitV); }

void StoreFieldEntry(FieldNode node, std::uint32_t bit, ObjectHandle value) {
  if (!FieldNodeIsValid(node) || InheritableKey(bit) == kNoAtom) return;
  const Atom key = InheritableKey(bit);
  FieldNode highest = HighestOfName(node);
  const bool kept = !IsNull(value);
  if (kept) {
    // The value may lie inside an entry that goes, so the copy is made first.
    const ObjectHandle copy = Objects->CopyObject(value, node->record->objectDoc);
    const FailureCode failure = CatchFailure([&] { Objects->DictPut(highest->dict, key, copy); });
    if (failure != quillon::kErrorNone) {
      DropFailures([&] { Objects->Destroy(copy); });
      Raise(failure);
    }
    highest->ownEntries |= bit;
  }
  VisitNodesOfName(node, [&](FieldNode bearer) {
    if ((kept && bearer == highest) || !Objects->DictKnown(bearer->dict, key)) return;
    Objects->DictRemove(bearer->dict, key);
    bearer->ownEntries &= ~bit;
  });
}

void SetFieldValue(FieldNode node, ObjectHandle value) {
  if (!FieldNodeIsValid(node)) return;
  NodePin given(node);
  // A field that was found by its own dictionary may not have met its widgets yet.
  if (node->firstKid == nullptr) LoadKids(node);
  if (!FieldNodeIsTerminal(given.node)) return;
  NodePin field((node->status & kNodeNameShared) != 0 ? FirstOfName(node) : node);
  if (!FieldNodeIsValid(field.node) || (field.node->status & kNodeSettingValue) != 0) return;
  if (IsPushButton(field.node)) {
    RefreshStaleWidgets(field.node);
    return;
  }
  field.node->status |= kNodeSettingValue;
  const FailureCode failure = CatchFailure([&] { ChangeValue(field, value); });
  if (field.node != nullptr) {
    field.node->status &= ~static_cast<std::uint32_t>(kNodeSettingValue);
  }
  if (failure != quillon::kErrorNone) Raise(failure);
}

}  // namespace quillform
