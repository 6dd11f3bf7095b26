#include "plugin/model/field_dicts.h"

#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

FormRecord* RecordOf(ObjectHandle array) { return FindFormRecord(Objects->DocumentOf(array)); }

// Where an element stands, or may stand, in an array.
struct Whereabouts {
  std::uint32_t end;    // behind its last occurrence
  std::uint32_t count;  // at most so many occurrences
};

Whereabouts FindIn(FormRecord* record, ObjectHandle array, ObjectHandle element) {
  const ArrayNames* names = record != nullptr ? NamesOnLevel(*record, array) : nullptr;
  const std::uint32_t length = Objects->ArrayLength(array);
  if (names == nullptr || !Objects->IsIndirect(element)) return {length, length};
  const auto place = names->placeOf.find(IdentityOf(element));
  if (place == names->placeOf.end()) return {0, 0};
  if (place->second.count > 1) return {length, place->second.count};
  const std::uint32_t position = PositionOf(*names, place->second, element);
  return position < length ? Whereabouts{position + 1, 1} : Whereabouts{length, length};
}

struct MissingEntries {
  ObjectHandle to;
  bool (*wanted)(Atom key);
};

Boolean CopyMissingEntry(ObjectHandle key, ObjectHandle value, void* data) {
  const auto& missing = *static_cast<MissingEntries*>(data);
  const Atom name = Objects->NameValue(key);
  if (missing.wanted(name) && !Objects->DictKnown(missing.to, name)) {
    PutCopy(missing.to, name, value);
  }
  return 1;
}

}  // namespace

ObjectHandle KidsOf(ObjectHandle dict) {
  const ObjectHandle kids = Objects->DictGet(dict, key::Kids);
  return IsKind(kids, ObjectKind::kArray) ? kids : kNullObject;
}

ObjectHandle NeedKids(ObjectHandle dict) {
  const ObjectHandle kids = KidsOf(dict);
  if (!IsNull(kids)) return kids;
  Objects->DictPut(dict, key::Kids, Objects->NewArray(Objects->DocumentOf(dict), false, 1));
  return KidsOf(dict);
}

bool HasKids(FieldNode node) {
  return node->firstKid != nullptr || (!IsNull(KidsOf(node->dict)) && !DictIsWidget(node->dict));
}

std::vector<ObjectHandle> ElementsFromEnd(ObjectHandle array) {
  std::vector<ObjectHandle> elements;
  elements.reserve(Objects->ArrayLength(array));
  for (std::uint32_t i = Objects->ArrayLength(array); i-- > 0;) {
    elements.push_back(Objects->ArrayGet(array, i));
  }
  return elements;
}

void RemoveFromArray(ObjectHandle array, ObjectHandle element) {
  if (!IsKind(array, ObjectKind::kArray)) return;
  FormRecord* record = RecordOf(array);
  const Whereabouts place = FindIn(record, array, element);
  std::uint32_t removed = 0;
  for (std::uint32_t i = place.end; i-- > 0 && removed < place.count;) {
    if (!Objects->Equal(Objects->ArrayGet(array, i), element)) continue;
    Objects->ArrayRemove(array, i);
    ++removed;
  }
  if (record != nullptr && removed > 0) NoteRemoved(*record, array, element, removed);
}

void MoveToEnd(ObjectHandle array, ObjectHandle element) {
  if (!IsKind(array, ObjectKind::kArray)) return;
  // What was just appended is there once; looking for more would make placing many quadratic.
  const std::uint32_t length = Objects->ArrayLength(array);
  if (length > 0 && Objects->Equal(Objects->ArrayGet(array, length - 1), element)) return;
  RemoveFromArray(array, element);
  AppendToArray(array, element);
}

void AppendToArray(ObjectHandle array, ObjectHandle element) {
  Objects->ArrayInsert(array, Objects->ArrayLength(array), element);
  if (FormRecord* record = RecordOf(array)) NoteAppended(*record, array, element);
}

void ReplaceInArray(ObjectHandle array, ObjectHandle old, ObjectHandle replacement) {
  if (!IsKind(array, ObjectKind::kArray)) return;
  FormRecord* record = RecordOf(array);
  for (std::uint32_t i = FindIn(record, array, old).end; i-- > 0;) {
    if (!Objects->Equal(Objects->ArrayGet(array, i), old)) continue;
    Objects->ArrayPut(array, i, replacement);
    if (record != nullptr) NoteReplaced(*record, array, old, replacement);
    return;
  }
  AppendToArray(array, replacement);
}

ObjectHandle ContainerOf(ObjectHandle dict, ObjectHandle form) {
  const ObjectHandle parent = Objects->DictGet(dict, key::Parent);
  if (IsKind(parent, ObjectKind::kDict)) return NeedKids(parent);
  return Objects->DictGet(form, key::Fields);
}

void RemoveEntry(ObjectHandle dict, Atom key) {
  if (Objects->DictKnown(dict, key)) Objects->DictRemove(dict, key);
}

void PutCopy(ObjectHandle dict, Atom key, ObjectHandle value) {
  const ObjectDoc doc = Objects->DocumentOf(dict);
  if (Objects->IsIndirect(value) && Objects->DocumentOf(value) == doc) {
    Objects->DictPut(dict, key, value);
    return;
  }
  const ObjectHandle copy = Objects->CopyObject(value, doc);
  const FailureCode failure = CatchFailure([&] { Objects->DictPut(dict, key, copy); });
  if (failure == quillon::kErrorNone) return;
  DropFailures([&] { Objects->Destroy(copy); });
  Raise(failure);
}

void MoveEntry(ObjectHandle from, ObjectHandle to, Atom key) {
  const ObjectHandle value = Objects->DictGet(from, key);
  if (IsNull(value)) return;
  PutCopy(to, key, value);
  Objects->DictRemove(from, key);
}

void CopyMissingEntries(ObjectHandle from, ObjectHandle to, bool (*wanted)(Atom key)) {
  MissingEntries missing{to, wanted};
  Objects->EnumDict(from, Wrap<&CopyMissingEntry>, &missing);
}

bool IsPlaceKey(Atom key) {
  return key == key::T || key == key::Kids || key == key::Parent || key == key::P;
}

}  // namespace quillform
