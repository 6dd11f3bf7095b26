#include "plugin/model/field_dicts.h"
#include "plugin/model/field_making.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// The flags that mean the same for every type.
constexpr std::uint32_t kCommonFlags = 0xFFF;

bool IsFieldEntry(Atom key) { return key != key::Kids && key != key::Parent; }

// The only widget of a field takes the field's place and entries.
void JoinWithField(const NodePin& widget) {
  FieldNode field = widget.node->parent;
  const ObjectHandle fieldDict = field->dict;
  const ObjectHandle dict = widget.node->dict;
  const ObjectHandle form = FormDictOfObjects(field->record->objectDoc);
  CopyMissingEntries(fieldDict, dict, &IsFieldEntry);
  const ObjectHandle above = Objects->DictGet(fieldDict, key::Parent);
  ReplaceInArray(ContainerOf(fieldDict, form), fieldDict, dict);
  if (IsKind(above, ObjectKind::kDict)) {
    Objects->DictPut(dict, key::Parent, above);
  } else {
    RemoveEntry(dict, key::Parent);
  }
  LinkToParent(widget.node, field->parent);
  RemoveEntry(fieldDict, key::Kids);
  DeleteFieldNode(field);
  if (widget.node != nullptr) InitFieldNode(widget.node);
}

// Answers whether the node stands alone with its type afterwards.
bool LeaveSharedType(const NodePin& pin) {
  FieldNode field = pin.node->parent;
  if (pin.node->type == kNoAtom || field == nullptr || field->name != pin.node->name) return true;
  LoadKids(field);
  const ObjectHandle kids = KidsOf(field->dict);
  if (pin.node == nullptr || (!IsNull(kids) && Objects->ArrayLength(kids) > 1)) return false;
  JoinWithField(pin);
  return pin.node != nullptr;
}

// A node's type is a copy of what it inherits.
void SpreadType(FieldNode node) {
  for (FieldNode kid = node->firstKid; kid != nullptr; kid = kid->nextSibling) {
    if (!FieldNodeIsValid(kid) || Objects->DictKnown(kid->dict, key::FT)) continue;
    kid->type = node->type;
    MarkAppearanceStale(kid);
    SpreadType(kid);
  }
}

}  // namespace

std::uint32_t ChangeFieldType(FieldNode node, Atom type) {
  if (!FieldNodeIsValid(node) || type == kNoAtom) return 1;
  if (node->type == type) return 0;
  NodePin pin(node);
  if (!LeaveSharedType(pin)) return 1;
  const ObjectHandle dict = pin.node->dict;
  ChangeEntryOf(dict, key::FT, [&] {
    Objects->DictPut(dict, key::FT, Objects->NewName(Objects->DocumentOf(dict), false, type));
  });
  if (pin.node == nullptr) return 1;
  pin.node->type = type;
  SpreadType(pin.node);
  SetFieldFlags(pin.node, 1, pin.node->flags[1] & kCommonFlags);
  MarkAppearanceStale(pin.node);
  return 0;
}

}  // namespace quillform
