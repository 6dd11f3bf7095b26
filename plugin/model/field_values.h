// Kinds, flags, values and options of fields, read with inheritance and written so that every
// widget of the field follows.
#pragma once

#include "plugin/model/field_node.h"

namespace quillform {

// key::Button, CheckBox, RadioButton, Text, ComboBox or ListBox; kNoAtom for anything else.
Atom FieldKindOf(AnnotHandle annot);
Atom FieldKindOfNode(FieldNode node);

// Index 0 the annotation flags F, 1 the field flags Ff (inherited); 0 for any other. Setting Ff
// sets it for the whole field, at the highest dictionary of its name.
std::uint32_t GetFieldFlags(FieldNode node, std::uint16_t index);
void SetFieldFlags(FieldNode node, std::uint16_t index, std::uint32_t value);

// One inheritable entry (InheritableBit), or the null object. Values (V, DV) belong to one name: a
// check box or radio button without one has the name Off. The others come from the nearest ancestor
// or else from the form dictionary.
ObjectHandle GetFieldEntry(FieldNode node, std::uint32_t bit);
// Any key, from the node's dictionary or the nearest ancestor's that has it.
ObjectHandle GetInherited(FieldNode node, Atom key);

ObjectHandle GetFieldValue(FieldNode node);

// Announces form events 0 and 1, writes a copy of the value as V, refreshes every widget of the
// field. Nothing happens for a field with fields under it, for a push button, and while a value of
// the same field is being set. What a subscriber or the host raises reaches the caller.
void SetFieldValue(FieldNode node, ObjectHandle value);

// V from DV; without DV, a field with options takes the first of them.
void ResetFieldValue(FieldNode node);

// The value of option `index`, of option 0 for an index past the end; nothing for a negative one.
// A field without options is shown as empty instead.
void SelectOption(FieldNode node, std::int32_t index);

// A copy of the array becomes Opt; an empty array, or anything else, removes Opt. 0 done, 1 when
// the node is not valid.
std::uint32_t SetFieldOptions(FieldNode node, ObjectHandle options);

// Writes a copy as DV and resets the field to it: 0 written, 1 refused (not one of the options, or
// a push button).
std::uint32_t SetDefaultValue(FieldNode node, ObjectHandle value);

// Brings one widget's appearance in line with the field's value. `state` is the appearance state to
// build for; kNoAtom: the value's own name when it is a name.
void RefreshWidget(FieldNode node, ObjectHandle value, Atom state);
// The same for every widget of the field, with the field's value or another one.
void RefreshAllWidgets(FieldNode node);
void RefreshAllWidgetsWith(FieldNode node, ObjectHandle value);
// The next refresh of a widget rebuilds its appearance.
void MarkAppearanceStale(FieldNode node);
// Whether some widget of the field is out of date.
bool FieldIsStale(FieldNode node);

bool IsPushButton(FieldNode node);

// What is stored for a value: nothing for a check box or radio button that is Off.
ObjectHandle ValueToStore(FieldNode field, ObjectHandle value);

// Writes a copy of a value as the field's V or DV (kBitV, kBitDV), or removes it for the null
// object: one entry for all dictionaries of the name, in the highest. Announces nothing.
void StoreFieldEntry(FieldNode node, std::uint32_t bit, ObjectHandle value);

// Deep comparison as SetFieldValue uses it: same kind and value; arrays pairwise; other objects
// only when identical.
bool ValuesEqual(ObjectHandle a, ObjectHandle b);

// The export form of an option, and the display form of the option whose export form `value` is
// (`value` itself when there is none).
ObjectHandle OptionExport(ObjectHandle option);
ObjectHandle DisplayValue(FieldNode node, ObjectHandle value);

}  // namespace quillform
