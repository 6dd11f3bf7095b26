// Actions and destinations (ISO 32000-1, 12.3.2 and 12.6).
#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"

namespace quillon::document {
namespace {

const ActionRecord& RecordOf(ActionHandle action) {
  if (action == nullptr) Fail(kErrorBadParameter, "there is no action");
  return *reinterpret_cast<const ActionRecord*>(action);
}

// Older files say Subtype where S is meant.
Atom ActionTypeOf(ObjectHandle dict) {
  const Atom type = NameOr(EntryOf(dict, Names().S), kNoAtom);
  return type != kNoAtom ? type : NameOr(EntryOf(dict, Names().Subtype), kNoAtom);
}

// An array, a name or a string that names one, or the dictionary that a name leads to.
bool IsDestination(ObjectHandle object) {
  switch (objects::TypeOf(object)) {
    case ObjectKind::kArray:
    case ObjectKind::kName:
    case ObjectKind::kString:
      return true;
    case ObjectKind::kDict:
      return IsKind(objects::DictGet(object, Names().D), ObjectKind::kArray);
    default:
      return false;
  }
}

bool IsAction(ObjectHandle object) {
  return IsKind(object, ObjectKind::kDict) && ActionTypeOf(object) != kNoAtom;
}

}  // namespace

ActionHandle ActionFromObject(ObjectHandle object) {
  if (!IsAction(object) && !IsDestination(object)) return nullptr;
  return reinterpret_cast<ActionHandle>(PooledRecord(&ActionPool(object), object));
}

Atom ActionType(ActionHandle action) {
  const ObjectHandle object = RecordOf(action).object;
  return IsAction(object) ? ActionTypeOf(object) : Names().GoTo;
}

ObjectHandle ActionDict(ActionHandle action) { return RecordOf(action).object; }

}  // namespace quillon::document
