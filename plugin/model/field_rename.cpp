#include <cstring>
#include <string>
#include <vector>

#include "plugin/model/field_dicts.h"
#include "plugin/model/field_name_text.h"
#include "plugin/model/field_placement.h"
#include "plugin/model/field_placing.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

bool IsFieldEntry(Atom key) { return !IsPlaceKey(key); }

// What a field takes over from fields of other names above it.
bool IsInheritable(Atom key) {
  for (Atom inherited :
       {key::FT, key::Ff, key::DA, key::DR, key::Q, key::OH, key::MaxLen, key::Opt, key::TI}) {
    if (key == inherited) return true;
  }
  return false;
}

// The widget's dictionary comes to hold what its fields gave it, so that it can leave them.
void TakeInherited(FieldNode node) {
  for (FieldNode above = node->parent; above != nullptr; above = above->parent) {
    const bool ofName = above->name == node->name;
    CopyMissingEntries(above->dict, node->dict, ofName ? &IsFieldEntry : &IsInheritable);
  }
}

void RemovePartialName(ObjectHandle widget) {
  if (!Objects->DictKnown(widget, key::T)) return;
  ChangeEntryOf(widget, key::T, [&] { Objects->DictRemove(widget, key::T); });
}

void CheckRename(FieldNode node, const char* name) {
  if (!FieldNodeIsValid(node) || HasKids(node) || name == nullptr || *name == '\0') {
    Raise(quillon::kErrorBadParameter);
  }
}

FieldNode PlaceRenamed(ObjectHandle widget, const std::string& name, const std::string& oldName) {
  FieldNode placed = nullptr;
  const FailureCode failure =
      CatchFailure([&] { placed = AddWidgetUnderName(widget, name.c_str()); });
  if (placed != nullptr) return placed;
  AddWidgetUnderName(widget, oldName.c_str());
  if (failure != quillon::kErrorNone) Raise(failure);
  return nullptr;
}

std::vector<ObjectHandle> TakeKids(ObjectHandle dict) {
  std::vector<ObjectHandle> kids;
  const ObjectHandle array = KidsOf(dict);
  if (IsNull(array)) return kids;
  for (ObjectHandle kid : ElementsFromEnd(array)) {
    if (IsKind(kid, ObjectKind::kDict) && Objects->IsIndirect(kid)) kids.push_back(kid);
  }
  // First of all, so that a circle of kids ends.
  Objects->DictRemove(dict, key::Kids);
  return kids;
}

void Dissolve(ObjectHandle dict, const std::string& name, std::uint32_t depth) {
  if (depth > kMaxFieldDepth) return;
  for (ObjectHandle kid : TakeKids(dict)) {
    std::string path = name;
    std::string partial;
    if (PartialNameOf(kid, &partial)) path += "." + partial;
    DeleteFieldNode(ExistingNodeOf(kid));
    RemoveEntry(kid, key::Parent);
    CopyMissingEntries(dict, kid, &IsFieldEntry);
    if (!IsNull(KidsOf(kid))) {
      Dissolve(kid, path, depth + 1);
      RemoveEntry(kid, key::T);
      continue;
    }
    RemoveEntry(kid, key::Kids);
    const ObjectDoc doc = Objects->DocumentOf(kid);
    ChangeEntryOf(kid, key::T, [&] {
      Objects->DictPut(
          kid, key::T,
          Objects->NewString(doc, false, path.data(), static_cast<std::uint32_t>(path.size())));
    });
  }
}

}  // namespace

FieldNode RenameWidgetField(FieldNode node, const char* name) {
  CheckRename(node, name);
  if (std::strcmp(name, FieldNodeName(node)) == 0) return node;
  const DocHandle doc = node->record->doc;
  const std::string newName(name);
  const std::string oldName(FieldNodeName(node));
  NodePin pin(node);
  LoadAllFields(doc);
  if (pin.node == nullptr) return nullptr;
  FieldNode existing = FindFieldByName(doc, newName.c_str());
  if (existing != nullptr && !FieldNodeIsTerminal(existing)) Raise(quillon::kErrorBadParameter);

  const ObjectHandle widget = node->dict;
  const std::uint32_t mark = node->status & kNodeEdited;
  TakeInherited(node);
  RemovePartialName(widget);
  // Who objects to the old name going does not keep the widget from getting its new one.
  DropFailures([&] { DeleteFieldNode(pin.node); });
  FieldNode placed = PlaceRenamed(widget, newName, oldName);
  if (placed != nullptr) placed->status |= mark;
  return placed;
}

void ReparentKids(ObjectHandle dict) {
  NameText name;
  if (!IsKind(dict, ObjectKind::kDict) || !FullNameTextOf(dict, &name)) return;
  FormRecord* record = LiveFormRecord(Objects->DocumentOf(dict));
  if (record == nullptr) return;
  RemoveEntry(dict, key::T);
  Dissolve(dict, name.text, 0);
  DeleteFieldNode(ExistingNodeOf(dict));
  // An element without a name and without kids is nothing.
  const ObjectHandle form = FormDictOfObjects(record->objectDoc);
  if (!IsNull(form)) RemoveFromArray(Objects->DictGet(form, key::Fields), dict);
  MarkMerged(*record);
}

}  // namespace quillform
