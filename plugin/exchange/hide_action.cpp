#include "plugin/exchange/hide_action.h"

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/action_dialogs.h"
#include "plugin/exchange/action_targets.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

bool ChangeHiddenFlag(AnnotHandle widget, const void* hides) {
  const std::uint32_t before = Document->AnnotFlags(widget);
  const std::uint32_t after = *static_cast<const bool*>(hides) ? before | quillon::kAnnotHidden
                                                               : before & ~quillon::kAnnotHidden;
  if (after == before) return false;
  Document->SetAnnotFlags(widget, after);
  return true;
}

void WriteHide(ActionHandle action, const HideSettings& settings) {
  const ObjectHandle dict = Document->ActionDict(action);
  const ObjectDoc doc = Objects->DocumentOf(dict);
  Objects->DictPut(dict, key::ActionTarget,
                   Objects->NewString(doc, false, settings.name.data(),
                                      static_cast<std::uint32_t>(settings.name.size())));
  if (!settings.hide) {
    Objects->DictPut(dict, key::ActionHide, Objects->NewBoolean(doc, false, 0));
  } else if (Objects->DictKnown(dict, key::ActionHide)) {
    Objects->DictRemove(dict, key::ActionHide);
  }
}

}  // namespace

bool ActionHides(ActionHandle action) {
  bool hides = true;
  // What cannot be read says nothing.
  DropFailures([&] {
    const ObjectHandle entry = EntryOf(Document->ActionDict(action), key::ActionHide);
    if (IsKind(entry, ObjectKind::kBoolean)) hides = Objects->BooleanValue(entry) != 0;
  });
  return hides;
}

std::string NameOfTarget(ActionHandle action) {
  std::string name;
  DropFailures([&] {
    const ObjectHandle target = ActionTarget(action);
    if (IsKind(target, ObjectKind::kString)) name = NameOfText(target);
    if (!IsKind(target, ObjectKind::kDict)) return;
    const HostPtr<char> full(FullNameOf(target));
    if (full != nullptr) name = full.get();
  });
  return name;
}

void PerformHide(ActionHandle action, DocView view) {
  const bool hides = ActionHides(action);
  ChangeTargets(action, view, &ChangeHiddenFlag, &hides);
}

void EditHide(ActionHandle action, DocView view) {
  if (actionDialogs.EditHide == nullptr) return;
  const HideSettings before{NameOfTarget(action), ActionHides(action)};
  HideSettings settings = before;
  if (!actionDialogs.EditHide(view, &settings)) return;
  if (settings.name == before.name && settings.hide == before.hide) return;
  WriteHide(action, settings);
}

}  // namespace quillform
