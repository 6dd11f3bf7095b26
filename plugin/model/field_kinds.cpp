#include "plugin/model/field_kinds.h"

#include <vector>

#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// The oldest first; the records stay their makers'.
std::vector<const FieldTypeHandler*>& Handlers() {
  static std::vector<const FieldTypeHandler*> handlers;
  return handlers;
}

Atom KindOf(const FieldTypeHandler& handler) {
  return handler.GetKind != nullptr ? handler.GetKind() : kNoAtom;
}

Atom KindOfTypeAndFlags(Atom type, std::uint32_t flags) {
  if (type == key::Tx) return key::Text;
  if (type == key::Ch) return (flags & kFieldCombo) != 0 ? key::ComboBox : key::ListBox;
  if (type != key::Btn) return kNoAtom;
  if ((flags & kFieldPushButton) != 0) return key::Button;
  return (flags & kFieldRadio) != 0 ? key::RadioButton : key::CheckBox;
}

ObjectHandle InheritedOfDict(ObjectHandle dict, Atom key) {
  for (std::uint32_t level = 0; level < kMaxFieldDepth && IsKind(dict, ObjectKind::kDict);
       ++level) {
    const ObjectHandle value = Objects->DictGet(dict, key);
    if (!IsNull(value)) return value;
    dict = Objects->DictGet(dict, key::Parent);
  }
  return kNullObject;
}

// A push button works even where the form is not live: it may only perform an action.
bool IsPushButtonDict(ObjectHandle dict) {
  const ObjectHandle type = InheritedOfDict(dict, key::FT);
  if (!IsKind(type, ObjectKind::kName) || Objects->NameValue(type) != key::Btn) return false;
  const ObjectHandle flags = InheritedOfDict(dict, key::Ff);
  return IsKind(flags, ObjectKind::kInteger) &&
         (static_cast<std::uint32_t>(Objects->IntegerValue(flags)) & kFieldPushButton) != 0;
}

}  // namespace

Atom FieldKindOfNode(FieldNode node) {
  return FieldNodeIsValid(node) ? KindOfTypeAndFlags(node->type, node->flags[1]) : kNoAtom;
}

Atom FieldKindOf(AnnotHandle annot) {
  FieldNode node = FieldNodeOfWidget(annot);
  if (FieldNodeIsValid(node)) return FieldKindOfNode(node);
  return IsPushButtonDict(Document->AnnotDict(annot)) ? key::Button : kNoAtom;
}

void RegisterFieldTypeHandler(const FieldTypeHandler* handler) {
  if (handler == nullptr || handler->GetKindLabel == nullptr) return;
  const Atom kind = KindOf(*handler);
  std::erase_if(Handlers(), [kind](const FieldTypeHandler* old) { return KindOf(*old) == kind; });
  Handlers().push_back(handler);
}

const FieldTypeHandler* FindFieldTypeHandler(Atom kind) {
  for (auto at = Handlers().rbegin(); at != Handlers().rend(); ++at) {
    if (KindOf(**at) == kind) return *at;
  }
  return nullptr;
}

void ForEachFieldTypeHandler(void (*routine)(const FieldTypeHandler*, void*), void* clientData) {
  const std::vector<const FieldTypeHandler*> handlers = Handlers();
  for (auto at = handlers.rbegin(); at != handlers.rend(); ++at) routine(*at, clientData);
}

void ClearFieldTypeHandlers() { Handlers().clear(); }

}  // namespace quillform
