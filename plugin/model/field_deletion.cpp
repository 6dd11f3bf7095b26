#include "plugin/host/form_events.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// The first of several failures, for work that is carried through in spite of them.
struct FirstFailure {
  FailureCode code = quillon::kErrorNone;
  void Note(FailureCode next) {
    if (code == quillon::kErrorNone) code = next;
  }
};

void AnnounceUnshared(FieldNode remaining) {
  if (!FieldNodeIsTerminal(remaining)) return;
  FormEventRecord event{};
  event.document = remaining->record->doc;
  event.node = remaining;
  FormEventAnnounce(kEventNameUnshared, &event);
}

void RemoveFromTop(FormRecord& record, ObjectHandle dict) {
  const ObjectHandle form = FormDictOfObjects(record.objectDoc);
  if (!IsNull(form)) RemoveFromArray(Objects->DictGet(form, key::Fields), dict);
}

// Answers whether the parent has no kid left.
bool RemoveFromParent(ObjectHandle parent, ObjectHandle dict) {
  const ObjectHandle kids = Objects->DictGet(parent, key::Kids);
  RemoveFromArray(kids, dict);
  Objects->DictRemove(dict, key::Parent);
  if (!IsKind(kids, ObjectKind::kArray) || Objects->ArrayLength(kids) != 0) return false;
  Objects->DictRemove(parent, key::Kids);
  return true;
}

// Deletes one node; answers its parent when that has lost its last kid.
FieldNode DeleteOne(FieldNode node, FirstFailure& failure) {
  FormRecord& record = *node->record;
  const ObjectHandle dict = node->dict;
  if (FieldNode remaining = UnlinkNode(node)) {
    failure.Note(CatchFailure([&] { AnnounceUnshared(remaining); }));
  }
  bool parentIsEmpty = false;
  failure.Note(CatchFailure([&] {
    if (node->parent == nullptr) {
      RemoveFromTop(record, dict);
    } else {
      parentIsEmpty = RemoveFromParent(node->parent->dict, dict);
    }
  }));
  FieldNode parent = parentIsEmpty ? node->parent : nullptr;
  record.recent = nullptr;
  FreeNode(node);
  return parent;
}

}  // namespace

void DeleteNode(FieldNode node) {
  FirstFailure failure;
  while (node != nullptr) node = DeleteOne(node, failure);
  if (failure.code != quillon::kErrorNone) Raise(failure.code);
}

void DeleteFieldNode(FieldNode node) {
  if (FieldNodeIsValid(node)) DeleteNode(node);
}

}  // namespace quillform
