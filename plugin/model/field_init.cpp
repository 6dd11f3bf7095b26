#include "plugin/model/field_dicts.h"
#include "plugin/model/field_name_text.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// What outlives the reading anew of a node: the table's own marks and what is still to be done.
constexpr std::uint32_t kKeptStatus =
    kNodeNameShared | kNodeNonTerminal | kNodeStale | kNodeMoving | kNodeEdited;

bool HasPartialName(ObjectHandle dict, const char* name) {
  std::string partial;
  return IsKind(Objects->DictGet(dict, key::T), ObjectKind::kString) &&
         PartialNameOf(dict, &partial) && partial == name;
}

void RemovePartialName(ObjectHandle dict) {
  if (!Objects->DictKnown(dict, key::T)) return;
  ChangeEntryOf(dict, key::T, [&] { Objects->DictRemove(dict, key::T); });
}

// A name that is there already keeps its form, which may be UTF-16.
void PutPartialName(ObjectHandle dict, const char* name) {
  if (HasPartialName(dict, name)) return;
  ChangeEntryOf(dict, key::T, [&] {
    const std::string_view text(name);
    const ObjectHandle value = Objects->NewString(Objects->DocumentOf(dict), false, text.data(),
                                                  static_cast<std::uint32_t>(text.size()));
    Objects->DictPut(dict, key::T, value);
  });
}

void SetPartialName(FormRecord& record, ObjectHandle dict, const char* name, ObjectHandle form) {
  if (name == nullptr) {
    RemovePartialName(dict);
  } else {
    PutPartialName(dict, name);
  }
  if (record.bulkDepth == 0) return;
  const ObjectHandle parent = Objects->DictGet(dict, key::Parent);
  const ObjectHandle container =
      IsKind(parent, ObjectKind::kDict) ? KidsOf(parent) : Objects->DictGet(form, key::Fields);
  if (IsKind(container, ObjectKind::kArray)) NoteRenamed(record, container, dict);
}

bool BearsItsName(FieldNode node) {
  NameText name;
  return FullNameTextOf(node->dict, &name) && ViewOf(name) == NameTextOf(*node->name);
}

bool Rejoin(FieldNode node) {
  const ObjectHandle above = Objects->DictGet(node->dict, key::Parent);
  FieldNode parent = nullptr;
  if (IsKind(above, ObjectKind::kDict)) {
    parent = FieldNodeOf(above);
    if (parent == nullptr) return false;
  }
  if (!LinkToParent(node, parent)) return false;
  if (parent != nullptr && parent->name != node->name) parent->status |= kNodeNonTerminal;
  InitFieldNode(node);
  return true;
}

// A node that exists, as if it were new.
FieldNode ReadAnew(FieldNode node) {
  node->status = (node->status & kKeptStatus) | kNodeIncomplete;
  node->type = kNoAtom;
  node->flags[0] = node->flags[1] = 0;
  node->ownEntries = 0;
  NodePin pin(node);
  bool joined = false;
  const FailureCode failure = CatchFailure([&] { joined = Rejoin(node); });
  if (joined) return pin.node;
  if (pin.node != nullptr) ForgetNodes(pin.node);
  if (failure != quillon::kErrorNone) Raise(failure);
  return nullptr;
}

// What the node would have if its own dictionary had no such entry. The defaults of the form do not
// count: an entry that equals them may be there to stay when they change.
ObjectHandle InheritedEntry(FieldNode node, std::uint32_t bit) {
  const bool ofName = bit == kBitV || bit == kBitDV;
  for (FieldNode above = node->parent; above != nullptr; above = above->parent) {
    if (ofName && above->name != node->name) break;
    if ((above->ownEntries & bit) != 0) return Objects->DictGet(above->dict, InheritableKey(bit));
  }
  return kNullObject;
}

void RemoveInherited(FieldNode node) {
  for (std::uint32_t bit = kBitQ; bit != 0; bit >>= 1) {
    if ((node->ownEntries & bit) == 0) continue;
    const Atom key = InheritableKey(bit);
    const ObjectHandle inherited = InheritedEntry(node, bit);
    if (IsNull(inherited) || !ValuesEqual(Objects->DictGet(node->dict, key), inherited)) continue;
    Objects->DictRemove(node->dict, key);
  }
  RecomputeOwnEntries(node);
  if (node->parent->type == node->type) RemoveEntry(node->dict, key::FT);
  if (node->parent->flags[1] == node->flags[1]) RemoveEntry(node->dict, key::Ff);
}

void Normalise(const NodePin& pin) {
  FieldNode node = pin.node;
  if (node->parent == nullptr) return;
  RemoveInherited(node);
  const std::uint32_t flags = node->flags[0] | node->parent->flags[0];
  if (NodeIsWidget(node)) SetFieldFlags(node, 0, flags);
}

}  // namespace

void ForgetNodes(FieldNode node) {
  while (node->firstKid != nullptr) ForgetNodes(node->firstKid);
  UnlinkNode(node);
  FreeNode(node);
}

FieldNode InitFieldDict(ObjectHandle dict, const char* partialName) {
  if (!IsKind(dict, ObjectKind::kDict) || !Objects->IsIndirect(dict)) return nullptr;
  if (Objects->DictKnown(dict, key::Subtype) && !DictIsWidget(dict)) return nullptr;
  FormRecord* record = LiveFormRecord(Objects->DocumentOf(dict));
  if (record == nullptr) return nullptr;
  const ObjectHandle form = FormDictOfObjects(record->objectDoc);
  if (IsNull(form)) return nullptr;

  SetPartialName(*record, dict, partialName, form);
  NodePin pin(ExistingNodeOf(dict));
  if (pin.node != nullptr && !BearsItsName(pin.node)) ForgetNodes(pin.node);
  const bool hasParent = IsKind(Objects->DictGet(dict, key::Parent), ObjectKind::kDict);
  if (partialName == nullptr && !hasParent) return nullptr;
  pin.node = pin.node != nullptr ? ReadAnew(pin.node) : FieldNodeOf(dict);
  if (!FieldNodeIsValid(pin.node)) return nullptr;
  Normalise(pin);
  if (!FieldNodeIsValid(pin.node)) return nullptr;
  MoveToEnd(ContainerOf(dict, form), dict);
  return pin.node;
}

}  // namespace quillform
