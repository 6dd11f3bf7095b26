#include <cstdlib>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/push_button.h"
#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/appearance/widget_look.h"
#include "plugin/appearance/widget_look_options.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::uint32_t kYesString = 19;

// A line feed is a soft line break of the editor, which conversions must not lose.
std::string FieldTextOf(const std::string& hostText) {
  std::string text = DocumentTextOf(hostText);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (hostText[i] == '\n') text[i] = '\n';
  }
  return text;
}

bool IsYes(const std::string& text) {
  char yes[133] = "";
  LoadLocalString(kYesString, yes, sizeof yes);
  return text[0] == yes[0];
}

ObjectHandle NewValue(ObjectDoc doc, ValueType type, const std::string& text) {
  switch (type) {
    case ValueType::kInteger:
      return Objects->NewInteger(doc, false, HoldFixed(std::strtoll(text.c_str(), nullptr, 10)));
    case ValueType::kFixed:
      return Objects->NewFixed(doc, false, Support->TextToFixed(text.c_str()));
    case ValueType::kBoolean:
      return Objects->NewBoolean(doc, false, IsYes(text));
    case ValueType::kName:
      return Objects->NewName(doc, false, Core->AtomFromName(DocumentTextOf(text).c_str()));
    case ValueType::kString:
      break;
  }
  const std::string bytes = FieldTextOf(text);
  return Objects->NewString(doc, false, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

void SetBits(std::uint32_t& flags, std::uint32_t bits, bool on) {
  flags = on ? flags | bits : flags & ~bits;
}

void CutText(std::string& text, std::int32_t length) {
  if (text.size() > static_cast<std::size_t>(length)) text.resize(static_cast<std::size_t>(length));
}

bool FromDialog(FieldNode node) { return (node->status & kNodeEdited) != 0; }

// Whether a look applied from the dialog brings the value along: an appearance that somebody else
// drew stays until something makes it out of date.
bool RedrawsValue(AnnotHandle annot, FieldNode node) {
  return IsKind(WidgetMK(annot), ObjectKind::kDict) || (node->status & kNodeStale) != 0;
}

void WriteDefaultText(AnnotHandle annot, FieldNode node, const std::string& text) {
  // A default whose text is unchanged keeps characters that the host's text cannot hold.
  const ObjectHandle current = GetFieldEntry(node, kBitDV);
  if (IsKind(current, ObjectKind::kString) && HostTextOf(ValueText(current)) == text) return;
  const NewObject value(text.empty() ? quillon::kNullObject
                                     : NewValue(ObjectDocOfAnnot(annot), ValueType::kString, text));
  SetDefaultValue(node, value.handle);
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, TextPart& part) {
  const std::uint32_t before = look.fieldFlags;
  SetBits(look.fieldFlags, kFieldMultiLine, part.multiLine);
  SetBits(look.fieldFlags, kFieldPassword, part.password);
  const bool changesLayout = look.fieldFlags != before;
  look.quadding = part.quadding;
  if (part.maxLen > 0) {
    CutText(part.defaultText, part.maxLen);
    CutText(look.valueText, part.maxLen);
  }
  WriteWidgetLook(annot, look);
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) return;
  if (changesLayout) MarkAppearanceStale(node);
  if (!FromDialog(node)) {
    if (part.multiLine) node->status |= kNodeMultiLineCommit;
    SetValueFromText(annot, ValueType::kString, look.valueText);
    return;
  }
  if (RedrawsValue(annot, node)) SetValueFromText(annot, ValueType::kString, look.valueText);
  PutInheritedCount(node, key::MaxLen, part.maxLen);
  WriteDefaultText(annot, node, part.defaultText);
}

void WriteDefaultOption(FieldNode node, std::int32_t index) {
  const ObjectHandle current = GetFieldEntry(node, kBitDV);
  const std::int32_t currentIndex = OptionOfExport(node, current);
  if (currentIndex < 0 && (node->ownEntries & kBitDV) != 0) {
    PutNodeEntry(node, key::DV, quillon::kNullObject);
  }
  if (currentIndex != index) SetDefaultValue(node, ExportOfOption(node, index));
}

// What combo boxes and list boxes have in common, after WriteWidgetLook.
void ApplyChoice(AnnotHandle annot, FieldNode node, const WidgetLook& look,
                 const OptionList& options, std::int32_t defaultIndex) {
  if (!FromDialog(node)) {
    if (look.valueText.empty()) {
      ResetFieldValue(node);
    } else {
      SetValueFromText(annot, ValueType::kString, look.valueText);
    }
    return;
  }
  // Unchanged options keep characters that the host's text cannot hold.
  if (!OptionListsEqual(ReadOptions(node), options)) {
    const NewObject array(NewOptionArray(ObjectDocOfAnnot(annot), options));
    SetFieldOptions(node, array.handle);
  }
  const auto count = static_cast<std::int64_t>(options.display.size());
  const bool known = defaultIndex >= 0 && defaultIndex < count;
  if (RedrawsValue(annot, node)) {
    if (look.valueText.empty()) {
      SelectOption(node, known ? defaultIndex : 0);
    } else {
      SetValueFromText(annot, ValueType::kString, look.valueText);
    }
  }
  WriteDefaultOption(node, known ? defaultIndex : -1);
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, ComboPart& part) {
  SetBits(look.fieldFlags, kFieldSorted, part.sorted);
  SetBits(look.fieldFlags, kFieldEditable, part.editable);
  WriteWidgetLook(annot, look);
  const FieldNode node = FieldNodeOfWidget(annot);
  if (FieldNodeIsValid(node)) ApplyChoice(annot, node, look, part.options, part.defaultIndex);
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, ListPart& part) {
  SetBits(look.fieldFlags, kFieldSorted, part.sorted);
  WriteWidgetLook(annot, look);
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) return;
  PutInheritedCount(node, key::TI, part.topIndex);
  ApplyChoice(annot, node, look, part.options, part.defaultIndex);
}

// The state lies in $On until the next build, which gives the appearances its name. On is what a
// widget has that names none.
void WriteOnState(AnnotHandle annot, FieldNode node, Atom onState) {
  const Atom wanted = onState == kNoAtom ? key::On : onState;
  const Atom before = OnStateOf(annot);
  const ObjectHandle dict = Document->AnnotDict(annot);
  const bool named = Objects->DictKnown(dict, key::DefaultOn);
  if (named && wanted == key::On) {
    ChangeAnnot(annot, key::DefaultOn, [&] { Objects->DictRemove(dict, key::DefaultOn); });
  }
  if (wanted != key::On || OnStateOf(annot) != wanted) {
    ChangeAnnot(annot, key::DefaultOn, [&] {
      Objects->DictPut(dict, key::DefaultOn,
                       Objects->NewName(Objects->DocumentOf(dict), false, wanted));
    });
  }
  if (before != wanted) MarkAppearanceStale(node);
}

void WriteDefaultState(FieldNode node, const CheckPart& part) {
  const Atom onState = part.onState == kNoAtom ? key::On : part.onState;
  ObjectHandle value = GetFieldEntry(node, kBitDV);
  if (part.onByDefault) {
    const NewObject on(Objects->NewName(Objects->DocumentOf(FieldNodeDict(node)), false, onState));
    SetDefaultValue(node, on.handle);
  } else {
    const bool namesOn = IsKind(value, ObjectKind::kName) && Objects->NameValue(value) == onState;
    SetDefaultValue(node, namesOn ? quillon::kNullObject : value);
  }
  ResetFieldValue(node);
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, CheckPart& part) {
  WriteWidgetLook(annot, look);
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) return;
  // A widget of a field with several has no name of its own.
  const bool namedByParent = node->parent != nullptr && node->parent->name == node->name;
  if (namedByParent && Objects->DictKnown(FieldNodeDict(node), key::T)) {
    PutNodeEntry(node, key::T, quillon::kNullObject);
  }
  PutMKObject(annot, key::IconNormal, part.icon);
  PutMKText(annot, key::CA, part.caption);
  WriteOnState(annot, node, part.onState);
  WriteDefaultState(node, part);
}

void WriteHighlight(AnnotHandle annot, Atom highlight) {
  const ObjectHandle dict = Document->AnnotDict(annot);
  const ObjectHandle entry = Objects->DictGet(dict, key::H);
  const Atom current =
      IsKind(entry, ObjectKind::kName) ? Objects->NameValue(entry) : key::HighlightInvert;
  if (current == highlight) return;
  ChangeAnnot(annot, key::H, [&] {
    Objects->DictPut(dict, key::H, Objects->NewName(Objects->DocumentOf(dict), false, highlight));
  });
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, ButtonPart& part) {
  WriteWidgetLook(annot, look);
  if (!FieldNodeIsValid(FieldNodeOfWidget(annot))) return;
  WriteHighlight(annot, part.highlight);
  PutMKText(annot, key::CA, part.caption);
  PutMKText(annot, key::AC, part.downCaption);
  PutMKObject(annot, key::IconNormal, part.icon);
  PutMKObject(annot, key::IX, part.downIcon);
  PutMKInteger(annot, key::TP, part.layout);
  BuildButton(annot, look);
}

void ApplyPart(AnnotHandle annot, WidgetLook& look, std::monostate) {
  WriteWidgetLook(annot, look);
}

}  // namespace

void ApplyWidgetLook(AnnotHandle annot, WidgetLook& look) {
  std::visit([&](auto& part) { ApplyPart(annot, look, part); }, look.kindPart);
}

void SetValueFromText(AnnotHandle annot, ValueType type, const std::string& text) {
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) return;
  if (text.empty()) {
    SetFieldValue(node, quillon::kNullObject);
    return;
  }
  if (type == ValueType::kName || type == ValueType::kString) {
    const std::int32_t option = OptionOfDisplay(node, FieldTextOf(text));
    if (option >= 0) {
      SelectOption(node, option);
      return;
    }
  }
  // A text that was shown and not changed keeps characters that the host's text cannot hold.
  const ObjectHandle current = GetFieldValue(node);
  if (type == ValueType::kString && IsKind(current, ObjectKind::kString) &&
      HostTextOf(ValueText(current)) == text) {
    SetFieldValue(node, current);
    return;
  }
  const NewObject value(NewValue(ObjectDocOfAnnot(annot), type, text));
  SetFieldValue(node, value.handle);
}

}  // namespace quillform
