#include "plugin/model/field_copy.h"

#include <cstring>
#include <string>

#include "plugin/model/field_dicts.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

bool IsCopied(Atom key) { return !IsPlaceKey(key); }

bool IsCopiedWithoutLook(Atom key) {
  return !IsPlaceKey(key) && key != key::AP && key != key::MK && key != key::AppearanceState;
}

void CopyEntry(ObjectHandle from, ObjectHandle to, Atom key) {
  const ObjectHandle value = Objects->DictGet(from, key);
  if (!IsNull(value)) PutCopy(to, key, value);
}

void CopyEntries(ObjectHandle dict, FieldNode source, bool resetLook, bool withInherited) {
  const ObjectHandle from = source->dict;
  if (!resetLook) {
    CopyEntry(from, dict, key::AP);
    CopyEntry(from, dict, key::MK);
  }
  CopyEntry(from, dict, key::AA);
  CopyEntry(from, dict, key::A);
  CopyMissingEntries(from, dict, resetLook ? &IsCopiedWithoutLook : &IsCopied);
  if (!withInherited) return;
  for (FieldNode above = source->parent; above != nullptr; above = above->parent) {
    CopyMissingEntries(above->dict, dict, &IsCopied);
  }
}

void RemoveAnnotEntries(ObjectHandle dict) {
  for (Atom key : {key::A, key::AA, key::AP, key::AppearanceState, key::Border, key::Rect,
                   key::Subtype, key::Type}) {
    RemoveEntry(dict, key);
  }
}

}  // namespace

std::uint32_t CopyWidgetField(ObjectHandle dict, FieldNode source, const char* name,
                              bool resetLook) {
  if (!IsKind(dict, ObjectKind::kDict) || !Objects->IsIndirect(dict)) return 1;
  if (!FieldNodeIsValid(source) || HasKids(source)) return 1;
  if (Objects->Equal(dict, source->dict)) return 1;
  const bool wasAnnot = Objects->DictKnown(dict, key::Subtype);
  const std::string oldName(FieldNodeName(source));
  const std::string newName(name != nullptr ? name : oldName);
  const bool renamed = newName != oldName;
  const bool elsewhere = Objects->DocumentOf(dict) != source->record->objectDoc;

  const auto copy = [&] { CopyEntries(dict, source, resetLook, renamed || elsewhere); };
  if (wasAnnot) {
    ChangeEntryOf(dict, key::Widget, copy);
  } else {
    copy();
  }
  if (renamed) RemoveEntry(dict, key::V);
  FieldNode placed = AddWidgetUnderName(dict, newName.c_str());
  if (!wasAnnot) RemoveAnnotEntries(dict);
  return placed != nullptr ? 0 : 1;
}

}  // namespace quillform
