#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/appearance/widget_look.h"
#include "plugin/appearance/widget_look_options.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

std::string MKText(AnnotHandle annot, Atom key) {
  return HostTextOf(ValueText(EntryOf(WidgetMK(annot), key)));
}

Boolean FindOnState(ObjectHandle key, ObjectHandle, void* clientData) {
  const Atom state = Objects->NameValue(key);
  if (state == key::Off) return true;
  *static_cast<Atom*>(clientData) = state;
  return false;
}

void ReadValueText(FieldNode node, WidgetLook* look) {
  look->valueText = HostTextOf(ValueText(GetFieldValue(node)));
}

void ReadTextPart(AnnotHandle, FieldNode node, WidgetLook* look) {
  TextPart part{};
  part.quadding = look->quadding;
  part.fontSize = look->fontSize;
  part.multiLine = (look->fieldFlags & kFieldMultiLine) != 0;
  part.password = (look->fieldFlags & kFieldPassword) != 0;
  part.maxLen = InheritedCount(node, key::MaxLen);
  part.defaultText = HostTextOf(ValueText(GetFieldEntry(node, kBitDV)));
  look->kindPart = std::move(part);
  ReadValueText(node, look);
}

void ReadComboPart(AnnotHandle, FieldNode node, WidgetLook* look) {
  ComboPart part{};
  part.sorted = (look->fieldFlags & kFieldSorted) != 0;
  part.editable = (look->fieldFlags & kFieldEditable) != 0;
  part.defaultIndex = OptionOfExport(node, GetFieldEntry(node, kBitDV));
  part.options = ReadOptions(node);
  look->kindPart = std::move(part);
  ReadValueText(node, look);
}

void ReadListPart(AnnotHandle, FieldNode node, WidgetLook* look) {
  ListPart part{};
  part.sorted = (look->fieldFlags & kFieldSorted) != 0;
  part.defaultIndex = OptionOfExport(node, GetFieldEntry(node, kBitDV));
  part.topIndex = InheritedCount(node, key::TI);
  part.options = ReadOptions(node);
  look->kindPart = std::move(part);
  ReadValueText(node, look);
}

void ReadCheckPart(AnnotHandle annot, FieldNode node, WidgetLook* look) {
  CheckPart part{};
  part.icon = EntryOf(WidgetMK(annot), key::IconNormal);
  part.caption = MKText(annot, key::CA);
  part.onState = OnStateOf(annot);
  const ObjectHandle byDefault = GetFieldEntry(node, kBitDV);
  part.onByDefault =
      IsKind(byDefault, ObjectKind::kName) && Objects->NameValue(byDefault) == part.onState;
  look->kindPart = std::move(part);
}

void ReadButtonPart(AnnotHandle annot, FieldNode, WidgetLook* look) {
  ButtonPart part{};
  part.caption = MKText(annot, key::CA);
  part.downCaption = MKText(annot, key::AC);
  part.icon = EntryOf(WidgetMK(annot), key::IconNormal);
  part.downIcon = EntryOf(WidgetMK(annot), key::IX);
  const ObjectHandle layout = EntryOf(WidgetMK(annot), key::TP);
  if (IsKind(layout, ObjectKind::kInteger)) part.layout = Objects->IntegerValue(layout);
  const ObjectHandle highlight = Objects->DictGet(Document->AnnotDict(annot), key::H);
  part.highlight =
      IsKind(highlight, ObjectKind::kName) ? Objects->NameValue(highlight) : key::HighlightInvert;
  look->kindPart = std::move(part);
}

struct PartReader {
  const Atom* kind;
  void (*read)(AnnotHandle annot, FieldNode node, WidgetLook* look);
};
constexpr PartReader kPartReaders[] = {
    {&key::Text, &ReadTextPart},     {&key::ComboBox, &ReadComboPart},
    {&key::ListBox, &ReadListPart},  {&key::CheckBox, &ReadCheckPart},
    {&key::Button, &ReadButtonPart}, {&key::RadioButton, &ReadCheckPart},
};

}  // namespace

Atom OnStateOf(AnnotHandle annot) {
  const ObjectHandle named = Objects->DictGet(Document->AnnotDict(annot), key::DefaultOn);
  if (IsKind(named, ObjectKind::kName)) return Objects->NameValue(named);
  Atom state = key::On;
  const ObjectHandle states = AppearanceOf(annot, key::N, kNoAtom);
  if (IsKind(states, ObjectKind::kDict)) {
    Objects->EnumDict(states, Wrap<&FindOnState>, &state);
  }
  return state;
}

void ReadKindPart(AnnotHandle annot, Atom kind, WidgetLook* look) {
  for (const PartReader& reader : kPartReaders) {
    if (*reader.kind == kind) reader.read(annot, FieldNodeOfWidget(annot), look);
  }
}

}  // namespace quillform
