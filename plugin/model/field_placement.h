// Authoring the field tree: widgets are placed under names, merged into fields, renamed and
// retyped, and dictionaries become fields. All of it works on the document's dictionaries and keeps
// the nodes in step; while the document's form is not live, nothing is done.
#pragma once

#include "plugin/model/field_node.h"

namespace quillform {

// Places a widget under a fully qualified name: the levels that are missing are made, and a field
// that has the name already takes the widget in. The widget's node; null when the name cannot be
// given (a level above is a terminal field, the field of the name refuses the widget, the name is
// too long). The widget then has neither T nor Parent, as after a failure that is raised.
FieldNode AddWidgetUnderName(ObjectHandle widget, const char* name);

// Makes a widget one more widget of a field; a field that is its own only widget is split into a
// field and two widgets, which is announced (form event 5). 0 merged, 1 refused: types, flags or a
// subscriber are against it. Raises kErrorBadParameter for a field with fields under it. The caller
// completes the widget with InitFieldDict.
std::uint32_t MergeWidgetIntoField(FieldNode field, ObjectHandle widget);

// Makes a dictionary a field or a widget of its Parent: sets T, or removes it for null; drops
// entries that are inherited alike; puts the dictionary at the end of its parent's Kids, or of the
// form's Fields; makes its node or reads it anew. Null when it cannot be a field. A failure deletes
// the node and is raised.
FieldNode InitFieldDict(ObjectHandle dict, const char* partialName);

// Frees the node and those below it, without touching their dictionaries.
void ForgetNodes(FieldNode node);

// Gives a field another type (Btn, Tx or Ch). The only widget of a field is joined with it first.
// Flags that belong to the old type go. 0 done, 1 refused: the field has further widgets.
std::uint32_t ChangeFieldType(FieldNode node, Atom type);

// Gives a widget that is a field of its own, or one widget of a field, another full name; it keeps
// what it inherited. The widget's node, an other one than before; null when the name cannot be
// given: the widget then has its old name again. Raises kErrorBadParameter for a node with kids, an
// empty name, and the name of a field that has fields under it.
FieldNode RenameWidgetField(FieldNode node, const char* name);

// Dissolves a dictionary with Kids: what is below it becomes top-level dictionaries whose T is the
// path they had, so that they are placed under that path when they are next met.
void ReparentKids(ObjectHandle dict);

// Fills fieldPlacement (form_hooks.h) with these routines.
void ConnectFieldPlacement();

}  // namespace quillform
