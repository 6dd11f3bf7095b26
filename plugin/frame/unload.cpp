#include "plugin/frame/unload.h"

#include "plugin/exchange/pending_imports.h"
#include "plugin/frame/shared_ui.h"
#include "plugin/host/form_events.h"
#include "plugin/host/log.h"
#include "plugin/model/field_kinds.h"
#include "plugin/model/field_tree.h"

namespace quillform {

namespace {

// A release without a routine has its place and nothing to do yet.
struct Release {
  const char* name;
  void (*run)();
};

constexpr Release kReleases[] = {
    {"waiting imports of form data", &ReleasePendingImports},
    {"cursors of the widgets", nullptr},
    {"form tool", nullptr},
    {"form event lists", &DestroyFormEventLists},
    {"dialog fonts", &DeleteDialogFonts},
    {"shared record of the dialogs", &FreeSharedUi},
    {"field trees", &ReleaseFieldTrees},
    {"kinds of fields", &ClearFieldTypeHandlers},
};

}  // namespace

Boolean PlugInUnload() {
  if (sharedUi != nullptr) {
    for (const Release& release : kReleases) {
      // One that fails keeps none of the others from its turn.
      if (release.run != nullptr) DropFailures(release.run);
    }
  }
  CloseLog();
  return 1;
}

}  // namespace quillform
