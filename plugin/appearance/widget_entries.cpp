#include "plugin/appearance/widget_entries.h"

#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_field.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::uint32_t kMKCapacity = 5;

std::uint32_t Length(const std::string& text) { return static_cast<std::uint32_t>(text.size()); }

// A byte of the document's encoding has at most one byte of host text, and the other way round.
using Conversion = std::uint32_t (*)(const char*, std::uint32_t, char*, std::uint32_t);
std::string Convert(Conversion conversion, const std::string& text) {
  std::string converted(text.size() + 1, '\0');
  const std::uint32_t length =
      conversion(text.data(), Length(text), converted.data(), Length(converted));
  converted.resize(length);
  return converted;
}

void PutDictEntry(ObjectHandle dict, Atom key, ObjectHandle value) {
  if (IsNull(value)) {
    Objects->DictRemove(dict, key);
  } else {
    Objects->DictPut(dict, key, value);
  }
}

}  // namespace

ObjectDoc ObjectDocOfAnnot(AnnotHandle annot) {
  return Objects->DocumentOf(Document->AnnotDict(annot));
}

DocHandle DocOfAnnot(AnnotHandle annot) {
  return Document->DocOfObjectDoc(ObjectDocOfAnnot(annot));
}

std::string HostTextOf(const std::string& documentText) {
  return Convert(Document->PDFToHostText, documentText);
}

std::string DocumentTextOf(const std::string& hostText) {
  return Convert(Document->HostToPDFText, hostText);
}

void PutNodeEntry(FieldNode node, Atom key, ObjectHandle value) {
  const ObjectHandle dict = FieldNodeDict(node);
  if (NodeIsWidget(node)) {
    ChangeAnnot(Document->AnnotFromDict(dict), key, [&] { PutDictEntry(dict, key, value); });
  } else {
    PutDictEntry(dict, key, value);
  }
  RecomputeOwnEntries(node);
}

std::int32_t InheritedCount(FieldNode node, Atom key) {
  const ObjectHandle value = GetInherited(node, key);
  return IsKind(value, ObjectKind::kInteger) ? Objects->IntegerValue(value) : 0;
}

void PutInheritedCount(FieldNode node, Atom key, std::int32_t count) {
  if (!FieldNodeIsValid(node) || count < 0 || InheritedCount(node, key) == count) return;
  const ObjectHandle dict = FieldNodeDict(node);
  const bool removes = count == 0 && Objects->DictKnown(dict, key);
  PutNodeEntry(node, key,
               removes ? quillon::kNullObject
                       : Objects->NewInteger(Objects->DocumentOf(dict), false, count));
  MarkAppearanceStale(node);
}

void PutMKEntry(AnnotHandle annot, Atom key, ObjectHandle value) {
  ChangeAnnot(annot, key::MK, [&] {
    const ObjectHandle mk = WidgetMK(annot);
    if (IsKind(mk, ObjectKind::kDict)) {
      PutDictEntry(mk, key, value);
    } else if (!IsNull(value)) {
      // Filled before it is attached: an MK, even an empty one, changes how the widget is drawn.
      const ObjectHandle made = Objects->NewDict(ObjectDocOfAnnot(annot), false, kMKCapacity);
      Objects->DictPut(made, key, value);
      Objects->DictPut(Document->AnnotDict(annot), key::MK, made);
    }
  });
  MarkAppearanceStale(FieldNodeOfWidget(annot));
}

void PutMKText(AnnotHandle annot, Atom key, const std::string& hostText) {
  if (HostTextOf(ValueText(EntryOf(WidgetMK(annot), key))) == hostText) return;
  ObjectHandle value = quillon::kNullObject;
  if (!hostText.empty()) {
    const std::string text = DocumentTextOf(hostText);
    value = Objects->NewString(ObjectDocOfAnnot(annot), false, text.data(), Length(text));
  }
  PutMKEntry(annot, key, value);
}

void PutMKInteger(AnnotHandle annot, Atom key, std::int32_t value) {
  const ObjectHandle current = EntryOf(WidgetMK(annot), key);
  const std::int32_t old =
      IsKind(current, ObjectKind::kInteger) ? Objects->IntegerValue(current) : 0;
  if (old == value) return;
  PutMKEntry(annot, key,
             value == 0 ? quillon::kNullObject
                        : Objects->NewInteger(ObjectDocOfAnnot(annot), false, value));
}

void PutMKObject(AnnotHandle annot, Atom key, ObjectHandle value) {
  if (Objects->Equal(EntryOf(WidgetMK(annot), key), value)) return;
  PutMKEntry(annot, key, value);
}

}  // namespace quillform
