#include <unordered_set>

#include "plugin/model/field_dicts.h"
#include "plugin/model/field_making.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// The arrays met on the way down: one that is met again (a cycle, or kids that two fields share)
// has been walked.
using SeenArrays = std::unordered_set<std::uint64_t>;

// A widget with kids is damaged: it cannot be a field of other fields, so it is taken as a leaf.
bool IsBranch(ObjectHandle element) {
  if (!Objects->DictKnown(element, key::Kids)) return false;
  if (!DictIsWidget(element)) return true;
  Objects->DictRemove(element, key::Kids);
  return false;
}

void LoadArray(FormRecord& record, ObjectHandle array, std::uint32_t depth, SeenArrays& seen) {
  if (!IsKind(array, ObjectKind::kArray) || depth > kMaxFieldDepth) return;
  if (!seen.insert(IdentityOf(array)).second) return;
  for (ObjectHandle element : ElementsFromEnd(array)) {
    if (!IsKind(element, ObjectKind::kDict)) continue;
    if (IsBranch(element)) {
      LoadArray(record, Objects->DictGet(element, key::Kids), depth + 1, seen);
    } else {
      LoadElement(record, element);
    }
  }
}

// Visits the nodes of the entry on which the cursor stands; false when the walk is to stop.
bool VisitEntry(NodeCursor& cursor, bool terminalOnly, bool onePerName, FieldNodeProc proc,
                void* clientData) {
  cursor.entryMoved = false;
  cursor.node = cursor.entry->first;
  while (cursor.node != nullptr) {
    cursor.nodeMoved = false;
    const FieldNode node = cursor.node;
    if (FieldNodeIsValid(node) && !(terminalOnly && node->firstKid != nullptr)) {
      if (!proc(node, clientData)) return false;
      if (onePerName) break;
    }
    if (!cursor.nodeMoved) cursor.node = cursor.node->sameNameNext;
  }
  if (!cursor.entryMoved) cursor.entry = cursor.entry->next;
  return !cursor.ended;
}

}  // namespace

void LoadAllFields(DocHandle doc) {
  if (!FormIsUsable(doc)) return;
  FormRecord& record = *LiveFormRecord(Document->ObjectDocOf(doc));
  if (record.loaded) return;
  record.loaded = true;  // from now on: making nodes can lead here again
  BulkScope bulk(&record);
  const FailureCode failure = CatchFailure([&] {
    const ObjectHandle form = FormDictOf(doc);
    if (IsNull(form)) return;
    SeenArrays seen;
    LoadArray(record, Objects->DictGet(form, key::Fields), 0, seen);
  });
  if (failure != quillon::kErrorNone) {
    record.loaded = false;
    Raise(failure);
  }
}

void ForEachFieldNode(DocHandle doc, bool terminalOnly, bool onePerName, FieldNodeProc proc,
                      void* clientData) {
  if (!FormIsUsable(doc)) return;
  NodeCursor cursor(*LiveFormRecord(Document->ObjectDocOf(doc)));
  for (std::uint32_t bucket = kNameBuckets; bucket-- > 0 && !cursor.ended;) {
    cursor.entry = cursor.record.buckets[bucket];
    while (cursor.entry != nullptr) {
      if (!VisitEntry(cursor, terminalOnly, onePerName, proc, clientData)) return;
    }
  }
}

}  // namespace quillform
