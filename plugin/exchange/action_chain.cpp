#include "plugin/exchange/action_chain.h"

#include <algorithm>
#include <list>

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/triggers.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

struct ChainWalk {
  ActionProc proc;
  void* clientData;
  std::vector<ObjectHandle> met;
};

bool Contains(const std::vector<ObjectHandle>& objects, ObjectHandle wanted) {
  return std::any_of(objects.begin(), objects.end(),
                     [wanted](ObjectHandle object) { return Objects->Equal(object, wanted) != 0; });
}

bool WalkActions(ChainWalk* walk, ActionHandle action);

bool WalkNext(ChainWalk* walk, ObjectHandle next) {
  switch (Objects->TypeOf(next)) {
    case ObjectKind::kDict:
      return WalkActions(walk, Document->ActionFromObject(next));
    case ObjectKind::kArray:
      for (std::uint32_t i = 0; i < Objects->ArrayLength(next); ++i) {
        const ObjectHandle element = Objects->ArrayGet(next, i);
        if (!WalkActions(walk, Document->ActionFromObject(element))) return false;
      }
      return true;
    default:
      return true;
  }
}

bool WalkActions(ChainWalk* walk, ActionHandle action) {
  if (action == nullptr || walk->met.size() >= kMostActions) return true;
  const ObjectHandle object = Document->ActionDict(action);
  if (Contains(walk->met, object)) return true;
  walk->met.push_back(object);
  return walk->proc(action, walk->clientData) && WalkNext(walk, EntryOf(object, key::Next));
}

// The dictionary that goes to a destination, which has no place for a Next of its own.
ObjectHandle NewGoTo(ObjectDoc doc, ObjectHandle destination) {
  NewObject action(Objects->NewDict(doc, false, 2));
  Objects->DictPut(action.handle, key::S, Objects->NewName(doc, false, Core->AtomFromName("GoTo")));
  PutCopy(action.handle, Core->AtomFromName("D"), destination);
  return action.Release();
}

// The objects of a list on their way into the document: the actions' own where they are indirect,
// otherwise copies, which do not notice what happens to the originals.
struct ChainObjects {
  std::list<NewObject> copies;
  std::vector<ObjectHandle> objects;
};

void AddObject(ChainObjects* chain, ObjectDoc doc, ObjectHandle object, bool alone) {
  const bool dict = IsKind(object, ObjectKind::kDict);
  const bool usable = Objects->IsIndirect(object) && Objects->DocumentOf(object) == doc &&
                      !Contains(chain->objects, object);
  if (usable && (dict || alone)) {
    chain->objects.push_back(object);
    return;
  }
  const ObjectHandle made = dict || alone ? Objects->CopyObject(object, doc) : NewGoTo(doc, object);
  chain->copies.emplace_back(made);
  chain->objects.push_back(made);
}

ChainObjects ObjectsToLink(ObjectDoc doc, const std::vector<ActionHandle>& actions) {
  ChainObjects chain;
  for (const ActionHandle action : actions) {
    AddObject(&chain, doc, Document->ActionDict(action), actions.size() == 1);
  }
  return chain;
}

void SetNext(ObjectHandle object, ObjectHandle next) {
  if (!IsKind(object, ObjectKind::kDict)) return;
  if (!IsNull(next)) {
    Objects->DictPut(object, key::Next, next);
  } else if (Objects->DictKnown(object, key::Next)) {
    Objects->DictRemove(object, key::Next);
  }
}

// From the last to the first, so that a copy is whole when it becomes part of the one before.
void LinkObjects(ObjectHandle owner, const ActionList& list, ChainObjects* chain, bool useA) {
  ObjectHandle next = kNullObject;
  for (std::size_t i = chain->objects.size(); i-- > 0;) {
    SetNext(chain->objects[i], next);
    next = chain->objects[i];
  }
  PutTriggerObject(owner, list.trigger, next, useA);
  for (NewObject& copy : chain->copies) copy.Release();
}

}  // namespace

bool ForEachActionInChain(ActionHandle action, ActionProc proc, void* clientData) {
  ChainWalk walk{proc, clientData, {}};
  return WalkActions(&walk, action);
}

ActionList GetTriggerActions(ObjectHandle owner, Atom trigger, const std::string& name, bool useA) {
  ActionList list{trigger, name, {}, true};
  const auto add = [](ActionHandle action, void* data) {
    static_cast<std::vector<ActionHandle>*>(data)->push_back(action);
    return true;
  };
  const FailureCode failure = CatchFailure(
      [&] { ForEachActionInChain(GetTriggerAction(owner, trigger, useA), add, &list.actions); });
  list.valid = failure == quillon::kErrorNone;
  return list;
}

void SetTriggerActions(ObjectHandle owner, ActionList* list, bool useA) {
  if (list->actions.empty()) return SetTriggerAction(owner, list->trigger, nullptr, useA);
  ChainObjects chain = ObjectsToLink(Objects->DocumentOf(owner), list->actions);
  LinkObjects(owner, *list, &chain, useA);
  for (std::size_t i = 0; i < chain.objects.size(); ++i) {
    list->actions[i] = Document->ActionFromObject(chain.objects[i]);
  }
}

void PerformAction(ActionHandle action, DocView view) {
  DropFailures([&] { Viewer->PerformAction(action, view); });
}

}  // namespace quillform
