#include "plugin/exchange/set_state_action.h"

#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/exchange/action_targets.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

Atom StateIn(ObjectHandle dict) {
  const ObjectHandle state = EntryOf(dict, key::AppearanceState);
  return IsKind(state, ObjectKind::kName) ? Objects->NameValue(state) : kNoAtom;
}

void PutState(ObjectHandle widget, Atom state) {
  if (state == kNoAtom) return Objects->DictRemove(widget, key::AppearanceState);
  const ObjectDoc doc = Objects->DocumentOf(widget);
  Objects->DictPut(widget, key::AppearanceState, Objects->NewName(doc, false, state));
}

bool ChangeState(AnnotHandle widget, const void* wanted) {
  const Atom state = *static_cast<const Atom*>(wanted);
  const ObjectHandle dict = Document->AnnotDict(widget);
  if (FieldKindOf(widget) != key::Button || StateIn(dict) == state) return false;
  ChangeAnnot(widget, key::AppearanceState, [&] { PutState(dict, state); });
  return true;
}

}  // namespace

Atom StateOfAction(ActionHandle action) {
  Atom state = kNoAtom;
  DropFailures([&] { state = StateIn(Document->ActionDict(action)); });
  return state;
}

void PerformSetState(ActionHandle action, DocView view) {
  const Atom state = StateOfAction(action);
  ChangeTargets(action, view, &ChangeState, &state);
}

}  // namespace quillform
