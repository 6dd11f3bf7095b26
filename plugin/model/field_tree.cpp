#include "plugin/model/field_tree.h"

#include <string_view>

#include "plugin/model/field_making.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

FieldNode CompleteOrNull(FieldNode node) { return FieldNodeIsValid(node) ? node : nullptr; }

FormRecord* LiveRecordOf(DocHandle doc) {
  return doc != nullptr ? LiveFormRecord(Document->ObjectDocOf(doc)) : nullptr;
}

FieldNode FirstOfEntry(FormRecord& record, const NameEntry* entry) {
  if (entry == nullptr) return nullptr;
  record.recent = entry->first;
  return CompleteOrNull(entry->first);
}

}  // namespace

FieldNode FieldNodeOf(ObjectHandle dict) {
  if (!IsKind(dict, ObjectKind::kDict) || !Objects->IsIndirect(dict)) return nullptr;
  FormRecord* record = LiveFormRecord(Objects->DocumentOf(dict));
  return record != nullptr ? CompleteOrNull(FindOrMakeNode(*record, dict)) : nullptr;
}

FieldNode ExistingNodeOf(ObjectHandle dict) {
  if (!IsKind(dict, ObjectKind::kDict)) return nullptr;
  FormRecord* record = FindFormRecord(Objects->DocumentOf(dict));
  if (record == nullptr || !IsLive(*record)) return nullptr;
  const auto [begin, end] = record->nodesOfDict.equal_range(IdentityOf(dict));
  for (auto at = begin; at != end; ++at) {
    if (FieldNodeIsValid(at->second) && Objects->Equal(at->second->dict, dict)) return at->second;
  }
  return nullptr;
}

FieldNode FieldNodeOfWidget(AnnotHandle annot) {
  if (!Document->AnnotIsValid(annot) || Document->AnnotSubtype(annot) != key::Widget) {
    return nullptr;
  }
  return FieldNodeOf(Document->AnnotDict(annot));
}

FieldNode FindFieldByName(DocHandle doc, const char* name) {
  FormRecord* record = name != nullptr ? LiveRecordOf(doc) : nullptr;
  return record != nullptr ? FirstOfEntry(*record, FindNameEntry(*record, name)) : nullptr;
}

FieldNode FindFieldByNameEntry(DocHandle doc, const NameEntry* entry) {
  FormRecord* record = LiveRecordOf(doc);
  return record != nullptr ? FirstOfEntry(*record, entry) : nullptr;
}

bool FieldNodeIsValid(FieldNode node) {
  return node != nullptr && (node->status & kNodeIncomplete) == 0;
}

ObjectHandle FieldNodeDict(FieldNode node) {
  return FieldNodeIsValid(node) ? node->dict : kNullObject;
}

const char* FieldNodeName(FieldNode node) {
  return FieldNodeIsValid(node) ? NameTextOf(*node->name) : nullptr;
}

bool DictIsWidget(ObjectHandle dict) {
  if (!IsKind(dict, ObjectKind::kDict)) return false;
  const ObjectHandle subtype = Objects->DictGet(dict, key::Subtype);
  return IsKind(subtype, ObjectKind::kName) && Objects->NameValue(subtype) == key::Widget;
}

bool NodeIsWidget(FieldNode node) { return FieldNodeIsValid(node) && DictIsWidget(node->dict); }

bool FieldNodeIsTerminal(FieldNode node) {
  if (!FieldNodeIsValid(node) || (node->status & kNodeNonTerminal) != 0) return false;
  TerminalField& terminal = node->record->terminal;
  const FieldNode known = terminal.field == node ? terminal.kid : nullptr;
  bool complete = true;  // one that is not yet may still get kids
  for (FieldNode kid = node->firstKid; kid != known; kid = kid->nextSibling) {
    const bool valid = FieldNodeIsValid(kid);
    complete = complete && valid;
    if (kid->name == node->name && (!valid || FieldNodeIsTerminal(kid))) continue;
    node->status |= kNodeNonTerminal;
    return false;
  }
  if (complete && node->firstKid != nullptr) terminal = {node, node->firstKid};
  return true;
}

AnnotHandle AnnotOfNode(FieldNode node) {
  return FieldNodeIsValid(node) ? Document->AnnotFromDict(node->dict) : kNoAnnot;
}

FieldNode HighestOfName(FieldNode node) {
  while (node != nullptr && node->parent != nullptr && node->parent->name == node->name) {
    node = node->parent;
  }
  return node;
}

FieldNode FirstOfName(FieldNode node) {
  return FieldNodeIsValid(node) ? node->name->first : nullptr;
}

bool FormIsUsable(DocHandle doc) { return LiveRecordOf(doc) != nullptr; }

BulkLoad::BulkLoad(DocHandle doc) : scope(std::make_unique<BulkScope>(LiveRecordOf(doc))) {}
BulkLoad::~BulkLoad() = default;

}  // namespace quillform
