#include "plugin/model/volatile_fields.h"

#include <vector>

#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

ObjectHandle VolatileArray(ObjectHandle form, ObjectDoc doc) {
  const ObjectHandle existing = Objects->DictGet(form, key::VolatileFields);
  if (IsKind(existing, ObjectKind::kArray)) return existing;
  Objects->DictPut(form, key::VolatileFields, Objects->NewArray(doc, false, 0));
  return Objects->DictGet(form, key::VolatileFields);
}

VolatileIndex& IndexOf(FormRecord& record, ObjectHandle array) {
  VolatileIndex& index = record.volatileFields;
  const std::uint32_t length = Objects->ArrayLength(array);
  if (index.length == length && Objects->Equal(index.array, array)) return index;
  index = VolatileIndex{array, length, {}};
  for (std::uint32_t i = 0; i < length; ++i) {
    index.listed.insert(IdentityOf(Objects->ArrayGet(array, i)));
  }
  return index;
}

void RemoveAll(ObjectHandle array, ObjectHandle dict) {
  for (std::uint32_t i = Objects->ArrayLength(array); i-- > 0;) {
    if (Objects->Equal(Objects->ArrayGet(array, i), dict)) Objects->ArrayRemove(array, i);
  }
}

}  // namespace

void NoteVolatileValue(FieldNode field) {
  if (field->type != key::Tx || (field->flags[1] & kFieldPassword) == 0) return;
  FormRecord& record = *field->record;
  const ObjectHandle form = FormDictOfObjects(record.objectDoc);
  if (IsNull(form)) return;
  const ObjectHandle dict = HighestOfName(field)->dict;
  const ObjectHandle array = VolatileArray(form, record.objectDoc);
  VolatileIndex& index = IndexOf(record, array);
  if (!index.listed.insert(IdentityOf(dict)).second) {
    if (Objects->Equal(Objects->ArrayGet(array, index.length - 1), dict)) return;
    RemoveAll(array, dict);
  }
  Objects->ArrayInsert(array, Objects->ArrayLength(array), dict);
  index.length = Objects->ArrayLength(array);
}

void ClearVolatileValues(ObjectHandle form) {
  const ObjectHandle array = Objects->DictGet(form, key::VolatileFields);
  FailureCode first = quillon::kErrorNone;
  if (IsKind(array, ObjectKind::kArray)) {
    // Clearing a value lists its field anew, so what is to be cleared is taken down first.
    std::vector<ObjectHandle> fields;
    for (std::uint32_t i = Objects->ArrayLength(array); i-- > 0;) {
      fields.push_back(Objects->ArrayGet(array, i));
    }
    for (ObjectHandle dict : fields) {
      const FailureCode failure =
          CatchFailure([&] { SetFieldValue(FieldNodeOf(dict), kNullObject); });
      if (first == quillon::kErrorNone) first = failure;
    }
  }
  if (Objects->DictKnown(form, key::VolatileFields)) {
    Objects->DictRemove(form, key::VolatileFields);
  }
  if (first != quillon::kErrorNone) Raise(first);
}

}  // namespace quillform
