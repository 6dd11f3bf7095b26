#include "plugin/model/field_values.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr std::uint32_t kInheritableBits[] = {kBitDV, kBitV, kBitDA, kBitOH, kBitDR, kBitQ};

// The flags that a dictionary holds itself, or others. What is no number counts as missing.
std::uint32_t FlagsOr(ObjectHandle dict, Atom key, std::uint32_t otherwise) {
  const ObjectHandle flags = Objects->DictGet(dict, key);
  if (!IsKind(flags, ObjectKind::kInteger) && !IsKind(flags, ObjectKind::kFixed)) return otherwise;
  return static_cast<std::uint32_t>(Objects->IntegerValue(flags));
}

Atom OwnTypeOf(ObjectHandle dict) {
  const ObjectHandle type = Objects->DictGet(dict, key::FT);
  return IsKind(type, ObjectKind::kName) ? Objects->NameValue(type) : kNoAtom;
}

bool HasFlagsByItself(FieldNode field, std::uint32_t value) {
  return field->parent != nullptr ? field->parent->flags[1] == value : value == 0;
}

void WriteFieldFlags(FieldNode node, std::uint32_t value) {
  FieldNode highest = HighestOfName(node);
  const bool kept = !HasFlagsByItself(highest, value);
  // What may fail comes before anything is taken away.
  if (kept) {
    const ObjectDoc doc = highest->record->objectDoc;
    Objects->DictPut(highest->dict, key::Ff,
                     Objects->NewInteger(doc, false, static_cast<std::int32_t>(value)));
  }
  VisitNodesOfName(node, [&](FieldNode bearer) {
    if (kept && bearer == highest) return;
    if (Objects->DictKnown(bearer->dict, key::Ff)) Objects->DictRemove(bearer->dict, key::Ff);
  });
  ReadFieldFlags(highest);
  VisitNodesOfName(node, [](FieldNode bearer) { ReadFieldFlags(bearer); });
}

}  // namespace

void ReadFieldFlags(FieldNode node) {
  node->flags[0] = FlagsOr(node->dict, key::F, 0);
  const std::uint32_t inherited = node->parent != nullptr ? node->parent->flags[1] : 0;
  const std::uint32_t before = node->flags[1];
  node->flags[1] = FlagsOr(node->dict, key::Ff, inherited);
  if (node->flags[1] != before) {
    for (FieldNode kid = node->firstKid; kid != nullptr; kid = kid->nextSibling) {
      if (FieldNodeIsValid(kid)) ReadFieldFlags(kid);
    }
  }
  if (Objects->DictKnown(node->dict, key::NeedAppearances)) {
    node->status |= kNodeStale;
    Objects->DictRemove(node->dict, key::NeedAppearances);
  }
}

void RecomputeOwnEntries(FieldNode node) {
  std::uint32_t entries = 0;
  for (std::uint32_t bit : kInheritableBits) {
    if (!IsNull(Objects->DictGet(node->dict, InheritableKey(bit)))) entries |= bit;
  }
  node->ownEntries = entries;
}

void InitFieldNode(FieldNode node) {
  ReadFieldFlags(node);
  RecomputeOwnEntries(node);
  node->type = OwnTypeOf(node->dict);
  if (node->type == kNoAtom && node->parent != nullptr) node->type = node->parent->type;
  node->status &= ~static_cast<std::uint32_t>(kNodeIncomplete);
}

std::uint32_t GetFieldFlags(FieldNode node, std::uint16_t index) {
  return FieldNodeIsValid(node) && index <= 1 ? node->flags[index] : 0;
}

void SetFieldFlags(FieldNode node, std::uint16_t index, std::uint32_t value) {
  if (!FieldNodeIsValid(node) || index > 1 || node->flags[index] == value) return;
  if (index == 1) {
    WriteFieldFlags(node, value);
    return;
  }
  NodePin pin(node);
  if (NodeIsWidget(node)) Document->SetAnnotFlags(AnnotOfNode(node), value);
  if (pin.node != nullptr) ReadFieldFlags(pin.node);
}

}  // namespace quillform
