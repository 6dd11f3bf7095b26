#include "plugin/exchange/triggers.h"

#include "plugin/appearance/form_parts.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::uint32_t kUsualTriggers = 4;

bool MeansOwnAction(Atom trigger, bool useA) { return useA && trigger == key::TriggerUp; }

ObjectHandle TriggerObject(ObjectHandle owner, Atom trigger, bool useA) {
  if (!MeansOwnAction(trigger, useA)) return EntryOf(EntryOf(owner, key::AA), trigger);
  const ObjectHandle destination = EntryOf(owner, key::Dest);
  return IsNull(destination) ? EntryOf(owner, key::A) : destination;
}

void RemoveEntry(ObjectHandle container, Atom key) {
  if (!IsNull(EntryOf(container, key))) Objects->DictRemove(container, key);
}

void RemoveTriggerObject(ObjectHandle owner, Atom trigger, bool useA) {
  if (MeansOwnAction(trigger, useA)) {
    RemoveEntry(owner, key::Dest);
    RemoveEntry(owner, key::A);
  } else {
    RemoveEntry(EntryOf(owner, key::AA), trigger);
  }
}

}  // namespace

bool HasTriggerAction(ObjectHandle owner, Atom trigger, bool useA) {
  if (trigger == kAnyTrigger) {
    return !IsNull(EntryOf(owner, key::Dest)) || !IsNull(EntryOf(owner, key::A)) ||
           !IsNull(EntryOf(owner, key::AA));
  }
  return !IsNull(TriggerObject(owner, trigger, useA));
}

ActionHandle GetTriggerAction(ObjectHandle owner, Atom trigger, bool useA) {
  const ObjectHandle object = TriggerObject(owner, trigger, useA);
  return IsNull(object) ? nullptr : Document->ActionFromObject(object);
}

void PutTriggerObject(ObjectHandle owner, Atom trigger, ObjectHandle object, bool useA) {
  if (MeansOwnAction(trigger, useA)) {
    const bool action = IsKind(object, ObjectKind::kDict);
    Objects->DictPut(owner, action ? key::A : key::Dest, object);
    // Only one of the two may be there, and the other one could hide this one.
    RemoveEntry(owner, action ? key::Dest : key::A);
  } else {
    const ObjectDoc doc = Objects->DocumentOf(owner);
    Objects->DictPut(EnsureDict(owner, key::AA, doc, kUsualTriggers), trigger, object);
  }
}

void SetTriggerAction(ObjectHandle owner, Atom trigger, ActionHandle action, bool useA) {
  if (action == nullptr) return RemoveTriggerObject(owner, trigger, useA);
  const ObjectHandle object = Document->ActionDict(action);
  const ObjectDoc doc = Objects->DocumentOf(owner);
  if (Objects->IsIndirect(object) && Objects->DocumentOf(object) == doc) {
    return PutTriggerObject(owner, trigger, object, useA);
  }
  NewObject copy(Objects->CopyObject(object, doc));
  PutTriggerObject(owner, trigger, copy.handle, useA);
  copy.Release();
}

}  // namespace quillform
