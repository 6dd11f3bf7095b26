#include "plugin/appearance/widget_entries.h"
#include "plugin/appearance/widget_look.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

// What a kind means for the field: its type, the flags that make it that kind, and the flags beyond
// the common ones (the low twelve) that have a meaning for it.
struct KindFlags {
  const Atom* kind;
  const Atom* type;
  std::uint32_t set;
  std::uint32_t clear;
  std::uint32_t own;
};
constexpr std::uint32_t kCommonFlags = 0xFFF;
constexpr std::uint32_t kButtonFlags = kFieldPushButton | kFieldNoExport;
constexpr std::uint32_t kRadioFlags = kFieldRadio | kFieldNoToggleOff;
constexpr std::uint32_t kAllButtonFlags = kFieldPushButton | kRadioFlags;
constexpr KindFlags kKindFlags[] = {
    {&key::Button, &key::Btn, kButtonFlags, kRadioFlags, kAllButtonFlags},
    {&key::CheckBox, &key::Btn, 0, kButtonFlags | kRadioFlags, kAllButtonFlags},
    {&key::RadioButton, &key::Btn, kRadioFlags, kButtonFlags, kAllButtonFlags},
    {&key::ComboBox, &key::Ch, kFieldCombo, 0, kFieldCombo | kFieldEditable | kFieldSorted},
    {&key::ListBox, &key::Ch, 0, kFieldCombo, kFieldSorted},
    {&key::Text, &key::Tx, 0, 0, kFieldMultiLine | kFieldPassword},
};

const KindFlags* FlagsOfKind(Atom kind) {
  for (const KindFlags& entry : kKindFlags) {
    if (*entry.kind == kind) return &entry;
  }
  return nullptr;
}

Atom TypeOfKind(Atom kind) {
  const KindFlags* flags = FlagsOfKind(kind);
  return flags == nullptr ? kNoAtom : *flags->type;
}

void ChangeType(FieldNode node, Atom type) {
  if (fieldPlacement.ChangeFieldType == nullptr) Raise(quillon::kErrorNotOffered);
  if (fieldPlacement.ChangeFieldType(node, type) == 0) return;
  const bool shared = (node->status & kNodeNameShared) != 0;
  Raise(shared ? quillon::kErrorFieldExists : quillon::kErrorBadParameter);
}

// An author's change of kind. Flags of another type's kinds are dropped: their bits mean something
// else, or nothing, for the new one.
void WriteKind(AnnotHandle annot, FieldNode node, WidgetLook& look) {
  const Atom current = FieldKindOf(annot);
  const KindFlags* flags = FlagsOfKind(look.kind);
  if (current == look.kind || flags == nullptr) return;
  if (TypeOfKind(current) != *flags->type) {
    ChangeType(node, *flags->type);
    look.fieldFlags &= kCommonFlags | flags->own;
  }
  look.fieldFlags = (look.fieldFlags & ~flags->clear) | flags->set;
}

// The node of the widget under the look's name: made, renamed or as it was.
FieldNode PlaceUnderName(AnnotHandle annot, const std::string& hostName) {
  const FieldNode node = FieldNodeOfWidget(annot);
  const std::string name = DocumentTextOf(hostName);
  if (!FieldNodeIsValid(node)) {
    if (fieldPlacement.AddWidgetUnderName == nullptr) Raise(quillon::kErrorNotOffered);
    const FieldNode made =
        fieldPlacement.AddWidgetUnderName(Document->AnnotDict(annot), name.c_str());
    if (!FieldNodeIsValid(made)) Raise(quillon::kErrorGeneral);
    made->status |= kNodeEdited;
    return made;
  }
  // A name with characters that the host cannot hold is not changed by having been shown.
  const std::string current = FieldNodeName(node);
  if (current == name || HostTextOf(current) == hostName) return node;
  if (fieldPlacement.RenameWidgetField == nullptr) Raise(quillon::kErrorNotOffered);
  const FieldNode renamed = fieldPlacement.RenameWidgetField(node, name.c_str());
  if (!FieldNodeIsValid(renamed)) Raise(quillon::kErrorGeneral);
  return renamed;
}

void WriteTextLook(FieldNode node, const WidgetLook& look) {
  TextAppearance text;
  FieldTextAppearance(node, &text);
  text.fillColour = look.textColour;
  text.baseFont = look.baseFont;
  text.fontSize = look.fontSize;
  text.quadding = look.quadding;
  SetFieldTextAppearance(node, &text);
}

}  // namespace

void WriteWidgetLook(AnnotHandle annot, WidgetLook& look) {
  if (!FormIsUsable(DocOfAnnot(annot))) return;
  if (look.name.empty()) Raise(quillon::kErrorBadParameter);
  const FieldNode node = PlaceUnderName(annot, look.name);
  WriteKind(annot, node, look);
  WriteWidgetColours(annot, look.borderColour, look.background);
  WriteBorderStyle(annot, &look.border);
  if ((node->ownEntries & kBitOH) != 0) {
    PutNodeEntry(node, key::OH, quillon::kNullObject);
    MarkAppearanceStale(node);
  }
  WriteTextLook(node, look);
  SetFieldFlags(node, 1, look.fieldFlags);
  SetFieldFlags(node, 0, look.annotFlags);
}

}  // namespace quillform
