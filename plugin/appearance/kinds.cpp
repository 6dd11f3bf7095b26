#include "plugin/appearance/kinds.h"

#include "plugin/appearance/check_field.h"
#include "plugin/appearance/choice_field.h"
#include "plugin/appearance/push_button.h"
#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_look.h"
#include "plugin/model/field_kinds.h"
#include "plugin/model/keys.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

template <const Atom* kind>
Atom GetKind() {
  return *kind;
}

template <std::uint32_t label>
void GetKindLabel(const FieldTypeHandler*, char* buffer, std::uint32_t size) {
  LoadLocalString(label, buffer, size);
}

WidgetLook* ReadProperties(const FieldTypeHandler* handler, AnnotHandle annot) {
  std::unique_ptr<WidgetLook> look = ReadWidgetLook(annot);
  if (look != nullptr) ReadKindPart(annot, handler->GetKind(), look.get());
  return look.release();
}

void ApplyProperties(const FieldTypeHandler*, AnnotHandle annot, WidgetLook* look) {
  ApplyWidgetLook(annot, *look);
}

void FreeProperties(const FieldTypeHandler*, WidgetLook* look) {
  const std::unique_ptr<WidgetLook> freed(look);
}

void RebuildText(const FieldTypeHandler*, AnnotHandle annot, Atom, ObjectHandle value, bool) {
  BuildTextAppearance(annot, value);
}

void RebuildCombo(const FieldTypeHandler*, AnnotHandle annot, Atom, ObjectHandle value, bool) {
  BuildComboAppearance(annot, value);
}

void RebuildList(const FieldTypeHandler*, AnnotHandle annot, Atom, ObjectHandle, bool) {
  BuildListAppearance(annot);
}

void RebuildCheck(const FieldTypeHandler*, AnnotHandle annot, Atom state, ObjectHandle,
                  bool stale) {
  RefreshCheckWidget(annot, state, stale);
}

void RebuildButton(const FieldTypeHandler*, AnnotHandle annot, Atom, ObjectHandle, bool stale) {
  RefreshButtonWidget(annot, stale);
}

// Buttons of all kinds track a press and leave the focus where it is.
constexpr std::uint16_t kPressed = 1;

template <const Atom* kind, std::uint32_t label>
constexpr FieldTypeHandler KindRecord(std::uint16_t pressed, decltype(&RebuildText) rebuild) {
  FieldTypeHandler record{};
  record.size = sizeof(FieldTypeHandler);
  record.tracksPress = pressed;
  record.keepsFocus = pressed;
  record.GetKind = &GetKind<kind>;
  record.GetKindLabel = &GetKindLabel<label>;
  record.ReadProperties = &ReadProperties;
  record.ApplyProperties = &ApplyProperties;
  record.FreeProperties = &FreeProperties;
  record.RebuildAppearance = rebuild;
  return record;
}

constexpr FieldTypeHandler kKinds[] = {
    KindRecord<&key::Button, 53>(kPressed, &RebuildButton),
    KindRecord<&key::Text, 54>(0, &RebuildText),
    KindRecord<&key::ComboBox, 55>(0, &RebuildCombo),
    KindRecord<&key::ListBox, 56>(0, &RebuildList),
    KindRecord<&key::RadioButton, 57>(kPressed, &RebuildCheck),
    KindRecord<&key::CheckBox, 58>(kPressed, &RebuildCheck),
};

}  // namespace

void RegisterAppearanceKinds() {
  for (const FieldTypeHandler& record : kKinds) RegisterFieldTypeHandler(&record);
}

}  // namespace quillform
