#include "plugin/model/field_making.h"

#include "plugin/model/field_dicts.h"
#include "plugin/model/field_name_text.h"
#include "plugin/model/field_placing.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

void DiscardNode(FieldNode node) {
  UnlinkNode(node);
  FreeNode(node);
}

// Kids bring kids of other fields only in damaged files; there the chain must not outgrow the
// stack.
constexpr std::uint32_t kDeepestKidLoading = 16;

struct MakingScope {
  explicit MakingScope(FormRecord& made) : record(made) { ++record.makingDepth; }
  ~MakingScope() { --record.makingDepth; }
  MakingScope(const MakingScope&) = delete;
  MakingScope& operator=(const MakingScope&) = delete;

  FormRecord& record;
};

bool JoinParent(FieldNode node, ObjectHandle parentDict) {
  FieldNode parent =
      Objects->IsIndirect(parentDict) ? FindOrMakeNode(*node->record, parentDict) : nullptr;
  if (parent == nullptr || !FieldNodeIsValid(parent) || !LinkToParent(node, parent)) return false;
  if (parent->name != node->name) {
    parent->status |= kNodeNonTerminal;
  } else if (node->nextSibling == nullptr) {
    // The first widget brings the others: what is shown must be complete when a value is set.
    LoadKids(HighestOfName(node));
  }
  return true;
}

// The document's form, made when the catalog has nothing under its key.
ObjectHandle FormForNewField(const FormRecord& record) {
  if (IsNull(CatalogFormOf(record.objectDoc))) CreateFormDict(record.doc);
  return FormDictOfObjects(record.objectDoc);
}

bool MergesByName(ObjectHandle form, ObjectHandle dict) {
  return Objects->DictKnown(form, key::NeedAppearances) ||
         Objects->DictKnown(dict, key::NeedAppearances);
}

// A node at the top level. False when it has been deleted because its dictionary is none of its
// own; `answer` is then the node that the dictionary has instead, or null.
bool JoinTopLevel(FieldNode node, const NameText& name, FieldNode* answer) {
  FormRecord& record = *node->record;
  const ObjectHandle dict = node->dict;
  if (!Objects->DictKnown(dict, key::T)) Raise(quillon::kErrorBadObject);
  if (Objects->DictKnown(dict, key::Parent)) Objects->DictRemove(dict, key::Parent);

  const ObjectHandle form = FormForNewField(record);
  if (IsNull(form)) {
    DeleteNode(node);
    return false;
  }
  if (!MergesByName(form, dict)) return true;
  const ObjectHandle fields = Objects->DictGet(form, key::Fields);
  switch (FindInFields(record, fields, dict, name)) {
    case PlaceInFields::kStands:
      return true;
    case PlaceInFields::kMissing:
      AppendToArray(fields, dict);
      return true;
    case PlaceInFields::kBelongsElsewhere:
      DeleteNode(node);
      *answer = MoveUnderField(record, dict, name);
      return false;
  }
  return true;
}

FieldNode CompleteNode(FieldNode node, const NameText& name) {
  const ObjectHandle parent = Objects->DictGet(node->dict, key::Parent);
  if (IsKind(parent, ObjectKind::kDict)) {
    if (!JoinParent(node, parent)) {
      DeleteNode(node);
      return nullptr;
    }
  } else {
    FieldNode answer = nullptr;
    if (!JoinTopLevel(node, name, &answer)) return answer;
  }
  InitFieldNode(node);
  return node;
}

// A widget whose name is a path from the top, not a name.
bool IsPathWidget(ObjectHandle dict, const NameText& name) {
  if (ViewOf(name).find('.') == std::string_view::npos) return false;
  const ObjectHandle partial = Objects->DictGet(dict, key::T);
  return IsKind(partial, ObjectKind::kString) && NameOfText(partial).size() == name.length &&
         !Objects->DictKnown(dict, key::Kids) && DictIsWidget(dict);
}

FieldNode MakeNode(FormRecord& record, const NameText& name, ObjectHandle dict) {
  if (IsPathWidget(dict, name)) return PlaceWidget(record, dict, name);
  MakingScope scope(record);
  NodePin made(AddNode(record, ViewOf(name), dict));
  FieldNode answer = nullptr;
  const FailureCode failure = CatchFailure([&] { answer = CompleteNode(made.node, name); });
  if (failure != quillon::kErrorNone) {
    if (made.node != nullptr) DiscardNode(made.node);
    Raise(failure);
  }
  return answer;
}

// The elements that were not given their nodes before, from the last to the first.
std::vector<ObjectHandle> NewKids(const FormRecord& record, FieldNode field, ObjectHandle kids) {
  const auto known = record.loadedKids.find(field);
  const std::uint32_t loaded = known != record.loadedKids.end() ? known->second : 0;
  std::vector<ObjectHandle> elements;
  for (std::uint32_t i = Objects->ArrayLength(kids); i-- > loaded;) {
    elements.push_back(Objects->ArrayGet(kids, i));
  }
  return elements;
}

}  // namespace

void LoadKids(FieldNode field) {
  if ((field->status & kNodeLoadingKids) != 0) return;
  if (field->record->makingDepth > kDeepestKidLoading) return;
  const ObjectHandle kids = Objects->DictGet(field->dict, key::Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  NodePin pin(field);
  FormRecord& record = *field->record;
  field->status |= kNodeLoadingKids;
  const FailureCode failure = CatchFailure([&] {
    BulkScope bulk(&record);
    for (ObjectHandle kid : NewKids(record, field, kids)) LoadElement(record, kid);
    if (pin.node != nullptr) record.loadedKids[field] = Objects->ArrayLength(kids);
  });
  if (pin.node != nullptr) pin.node->status &= ~static_cast<std::uint32_t>(kNodeLoadingKids);
  if (failure != quillon::kErrorNone) Raise(failure);
}

FieldNode FindOrMakeNode(FormRecord& record, ObjectHandle dict) {
  if (record.recent != nullptr && Objects->Equal(record.recent->dict, dict)) return record.recent;
  NameText name;
  if (!FullNameTextOf(dict, &name)) return nullptr;
  if (const NameEntry* entry = FindNameEntry(record, ViewOf(name))) {
    record.recent = entry->first;
    if (FieldNode node = FindNode(record, *entry, dict)) {
      record.recent = node;
      return node;
    }
  }
  return MakeNode(record, name, dict);
}

void LoadElement(FormRecord& record, ObjectHandle dict) {
  if (!IsKind(dict, ObjectKind::kDict) || !Objects->IsIndirect(dict) || !IsLive(record)) return;
  const FailureCode failure = CatchFailure([&] { FindOrMakeNode(record, dict); });
  if (failure != quillon::kErrorNone && failure != quillon::kErrorBadStructure) Raise(failure);
}

}  // namespace quillform
