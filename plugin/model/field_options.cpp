#include "plugin/model/field_values.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// The last option whose export form is the value; false when there is none.
bool FindOption(ObjectHandle options, ObjectHandle value, ObjectHandle* option) {
  for (std::uint32_t i = Objects->ArrayLength(options); i-- > 0;) {
    *option = Objects->ArrayGet(options, i);
    if (ValuesEqual(OptionExport(*option), value)) return true;
  }
  return false;
}

// An export form that is an indirect object stands for itself wherever it is selected.
bool StandsForItself(ObjectHandle exported, ObjectHandle value) {
  return Objects->IsIndirect(exported) && !Objects->Equal(exported, value);
}

// Whether every element of a selection (the field's own copy) is an option.
bool AcceptSelection(ObjectHandle options, ObjectHandle selection) {
  const std::uint32_t count = Objects->ArrayLength(selection);
  if (count > Objects->ArrayLength(options)) return false;
  for (std::uint32_t i = count; i-- > 0;) {
    const ObjectHandle element = Objects->ArrayGet(selection, i);
    ObjectHandle option = kNullObject;
    if (!FindOption(options, element, &option)) return false;
    const ObjectHandle exported = OptionExport(option);
    if (StandsForItself(exported, element)) Objects->ArrayPut(selection, i, exported);
  }
  return true;
}

// Takes `value` to what is to be stored; false when the options do not allow it.
bool AcceptDefault(ObjectHandle options, ObjectHandle* value) {
  if (!IsKind(options, ObjectKind::kArray)) return true;
  if (IsKind(*value, ObjectKind::kArray)) return AcceptSelection(options, *value);
  if (IsNull(*value)) return true;
  ObjectHandle option = kNullObject;
  if (!FindOption(options, *value, &option)) return false;
  const ObjectHandle exported = OptionExport(option);
  if (StandsForItself(exported, *value)) *value = exported;
  return true;
}

}  // namespace

ObjectHandle OptionExport(ObjectHandle option) {
  if (!IsKind(option, ObjectKind::kArray)) return option;
  const ObjectHandle exported = Objects->ArrayGet(option, 0);
  return IsNull(exported) ? Objects->ArrayGet(option, 1) : exported;
}

ObjectHandle DisplayValue(FieldNode node, ObjectHandle value) {
  const ObjectHandle options = GetInherited(node, key::Opt);
  ObjectHandle option = kNullObject;
  if (!IsKind(options, ObjectKind::kArray) || !FindOption(options, value, &option)) return value;
  const bool pair = IsKind(option, ObjectKind::kArray) && Objects->ArrayLength(option) == 2;
  return pair ? Objects->ArrayGet(option, 1) : value;
}

void SelectOption(FieldNode node, std::int32_t index) {
  if (!FieldNodeIsValid(node) || index < 0) return;
  const ObjectHandle options = GetInherited(node, key::Opt);
  if (!IsKind(options, ObjectKind::kArray)) {
    RefreshAllWidgetsWith(node, kNullObject);
    return;
  }
  auto at = static_cast<std::uint32_t>(index);
  if (at >= Objects->ArrayLength(options)) at = 0;
  SetFieldValue(node, OptionExport(Objects->ArrayGet(options, at)));
}

void ResetFieldValue(FieldNode node) {
  if (!FieldNodeIsValid(node)) return;
  const ObjectHandle preset = GetFieldEntry(node, kBitDV);
  if (IsNull(preset)) {
    const ObjectHandle options = GetInherited(node, key::Opt);
    if (IsKind(options, ObjectKind::kArray) && Objects->ArrayLength(options) > 0) {
      SelectOption(node, 0);
      return;
    }
  }
  SetFieldValue(node, preset);
}

std::uint32_t SetFieldOptions(FieldNode node, ObjectHandle options) {
  if (!FieldNodeIsValid(node)) return 1;
  if (IsKind(options, ObjectKind::kArray) && Objects->ArrayLength(options) > 0) {
    const ObjectHandle copy = Objects->CopyObject(options, node->record->objectDoc);
    const FailureCode failure = CatchFailure([&] { Objects->DictPut(node->dict, key::Opt, copy); });
    if (failure != quillon::kErrorNone) {
      DropFailures([&] { Objects->Destroy(copy); });
      Raise(failure);
    }
  } else if (Objects->DictKnown(node->dict, key::Opt)) {
    Objects->DictRemove(node->dict, key::Opt);
  }
  RecomputeOwnEntries(node);
  return 0;
}

std::uint32_t SetDefaultValue(FieldNode node, ObjectHandle value) {
  if (!FieldNodeIsValid(node) || IsPushButton(node)) return 1;
  const ObjectHandle old = ValueToStore(node, GetFieldEntry(node, kBitDV));
  ObjectHandle next = ValueToStore(node, value);
  if (ValuesEqual(old, next)) return 0;

  // The caller's array stays as it is.
  ObjectHandle selection = kNullObject;
  bool accepted = false;
  const FailureCode failure = CatchFailure([&] {
    if (IsKind(next, ObjectKind::kArray)) {
      next = selection = Objects->CopyObject(next, node->record->objectDoc);
    }
    accepted = AcceptDefault(GetInherited(node, key::Opt), &next);
    if (accepted) StoreFieldEntry(node, kBitDV, next);
  });
  if (!IsNull(selection)) DropFailures([&] { Objects->Destroy(selection); });
  if (failure != quillon::kErrorNone) Raise(failure);
  if (!accepted) return 1;
  ResetFieldValue(node);
  return 0;
}

}  // namespace quillform
