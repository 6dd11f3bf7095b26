#include "plugin/exchange/action_targets.h"

#include <vector>

#include "plugin/appearance/form_parts.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

// The widgets of a name are listed before the first is changed: those who listen to changes may
// take nodes away.
void AddWidgetsOfName(DocHandle doc, ObjectHandle name, std::vector<AnnotHandle>* widgets) {
  LoadAllFields(doc);
  const FieldNode found = FindFieldByName(doc, NameOfText(name).c_str());
  if (found == nullptr) return;
  for (FieldNode node = FirstOfName(found); node != nullptr; node = node->sameNameNext) {
    if (FieldNodeIsValid(node) && FieldNodeIsTerminal(node) && NodeIsWidget(node)) {
      widgets->push_back(AnnotOfNode(node));
    }
  }
}

void AddTarget(DocHandle doc, ObjectHandle target, std::vector<AnnotHandle>* widgets) {
  if (IsKind(target, ObjectKind::kString)) {
    AddWidgetsOfName(doc, target, widgets);
  } else if (IsKind(target, ObjectKind::kDict)) {
    widgets->push_back(Document->AnnotFromDict(target));
  }
}

bool ChangeTarget(DocHandle doc, ObjectHandle target, TargetProc change, const void* clientData) {
  std::vector<AnnotHandle> widgets;
  AddTarget(doc, target, &widgets);
  bool changed = false;
  for (const AnnotHandle widget : widgets) {
    if (Document->AnnotIsValid(widget)) changed = change(widget, clientData) || changed;
  }
  return changed;
}

bool ChangeAll(DocHandle doc, ObjectHandle target, TargetProc change, const void* clientData) {
  if (!IsKind(target, ObjectKind::kArray)) return ChangeTarget(doc, target, change, clientData);
  bool changed = false;
  for (std::uint32_t i = 0; i < Objects->ArrayLength(target); ++i) {
    changed = ChangeTarget(doc, Objects->ArrayGet(target, i), change, clientData) || changed;
  }
  return changed;
}

// The view's document; for an action without a view the one it stands in.
DocHandle DocumentOfAction(ActionHandle action, DocView view) {
  if (view != nullptr) return Viewer->DocOf(view);
  return Document->DocOfObjectDoc(Objects->DocumentOf(Document->ActionDict(action)));
}

}  // namespace

ObjectHandle ActionTarget(ActionHandle action) {
  ObjectHandle target = kNullObject;
  // What cannot be read names nothing.
  DropFailures([&] { target = EntryOf(Document->ActionDict(action), key::ActionTarget); });
  return target;
}

void ChangeTargets(ActionHandle action, DocView view, TargetProc change, const void* clientData) {
  const DocHandle doc = DocumentOfAction(action, view);
  const std::uint32_t before = Document->GetFlags(doc);
  if (!ChangeAll(doc, ActionTarget(action), change, clientData)) return;
  Document->ClearFlags(doc, Document->GetFlags(doc) & ~before);
  if (view != nullptr) Viewer->UpdateView(Viewer->DocPageView(view));
}

}  // namespace quillform
