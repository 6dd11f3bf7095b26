// Where the model calls rooms above it: records of routines that those rooms fill in at start-up.
// They are called from the plug-in's own code only, so they may throw HostError. What an empty
// routine means stands at each record.
#pragma once

#include "plugin/model/field_node.h"

namespace quillform {

// Placing widgets under names, which the field tree needs when it meets a widget whose name is a
// path, and dissolving subtrees that belong to an existing field. An empty AddWidgetUnderName
// counts as a failed placement (the widget is hidden); an empty ReparentKids leaves the subtree
// alone.
struct FieldPlacement {
  FieldNode (*AddWidgetUnderName)(ObjectHandle widget, const char* name);
  std::uint32_t (*MergeWidgetIntoField)(FieldNode field, ObjectHandle widget);
  void (*ReparentKids)(ObjectHandle dict);
  // Null node, or 1, when the change is refused. The old node is gone after a rename.
  FieldNode (*RenameWidgetField)(FieldNode node, const char* name);
  std::uint32_t (*ChangeFieldType)(FieldNode node, Atom type);
};
extern FieldPlacement fieldPlacement;

// The appearance side. Without it a new form dictionary has no defaults.
struct AppearanceHooks {
  // Gives a new form dictionary its default text appearance and resources.
  void (*SetDefaultFormAppearance)(ObjectHandle formDict);
};
extern AppearanceHooks appearanceHooks;

// The data exchange side. Without it nothing waits for a document and nothing is kept of one.
struct ExchangeHooks {
  void (*RunPendingImports)(DocView view);    // a document has opened
  void (*KeepValuesOfClosing)(DocView view);  // a view is closing
};
extern ExchangeHooks exchangeHooks;

}  // namespace quillform
