#include "quillon/app/widget_action.h"

#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"

namespace quillon::app {
namespace {

ObjectHandle EntryOf(ObjectHandle dict, const char* name) {
  return document::EntryOf(dict, core::AtomFromName(name));
}

}  // namespace

ActionHandle ActionOfWidget(ObjectHandle widget, const std::string& trigger) {
  if (trigger == "U") {
    for (const char* own : {"Dest", "A"}) {
      const ActionHandle action = document::ActionFromObject(EntryOf(widget, own));
      if (action != nullptr) return action;
    }
  }
  return document::ActionFromObject(EntryOf(EntryOf(widget, "AA"), trigger.c_str()));
}

}  // namespace quillon::app
