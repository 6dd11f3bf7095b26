#include <utility>

#include "quillon/app/console.h"
#include "quillon/app/field_choices.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/form_keys.h"
#include "quillon/core/operations.h"
#include "quillon/document/annots.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"

namespace quillon::app {
namespace {

using document::IsKind;

enum KindBit : unsigned {
  kText = 1u << static_cast<unsigned>(FieldKind::kText),
  kCheckBox = 1u << static_cast<unsigned>(FieldKind::kCheckBox),
  kRadio = 1u << static_cast<unsigned>(FieldKind::kRadioButton),
  kCombo = 1u << static_cast<unsigned>(FieldKind::kComboBox),
  kList = 1u << static_cast<unsigned>(FieldKind::kListBox),
  kChoice = kCombo | kList,
  kEvery = ~0u,
};

// Flags that the kind does not already tell (ISO 32000-1, tables 221, 226, 228 and 230).
struct FlagWord {
  std::uint32_t bit;
  unsigned kinds;
  const char* word;
};
constexpr FlagWord kFlagWords[] = {
    {kFlagReadOnly, kEvery, "read-only"},
    {kFlagRequired, kEvery, "required"},
    {kFlagNoExport, kEvery, "no-export"},
    {kFlagMultiLine, kText, "multi-line"},
    {kFlagPassword, kText, "password"},
    {kFlagNoToggleToOff, kRadio, "no-toggle-to-off"},
    {0x40000, kCombo, "editable"},
    {0x80000, kChoice, "sorted"},
    {0x100000, kText, "file-select"},
    {0x200000, kList, "multi-select"},
    {0x400000, kText | kCombo, "no-spell-check"},
    {0x800000, kText, "no-scroll"},
    {0x1000000, kText, "comb"},
    {0x2000000, kText, "rich-text"},
    {0x2000000, kRadio, "in-unison"},
    {0x4000000, kChoice, "commit-on-change"},
};

std::string FixedText(Fixed value) {
  char buffer[32];
  const std::uint32_t length = support::FixedToText(value, buffer, sizeof buffer, 5);
  return {buffer, length};
}

// The text of a value that is no array; false for the null object and for containers.
bool SingleText(ObjectHandle object, std::string* text) {
  switch (objects::TypeOf(object)) {
    case ObjectKind::kString:
      *text = PdfTextToUtf8(document::BytesOf(object));
      return true;
    case ObjectKind::kName:
      *text = TextOfName(objects::NameValue(object));
      return true;
    case ObjectKind::kInteger:
      *text = std::to_string(objects::IntegerValue(object));
      return true;
    case ObjectKind::kFixed:
      *text = FixedText(objects::FixedValue(object));
      return true;
    case ObjectKind::kBoolean:
      *text = objects::BooleanValue(object) != 0 ? "true" : "false";
      return true;
    case ObjectKind::kStream:  // long texts (ISO 32000-1, 12.7.4.3)
      *text = PdfTextToUtf8(DecodedStream(object));
      return true;
    default:
      return false;
  }
}

// Programs expect lines to end with a line feed; files have carriage returns, or both.
std::string WithLineFeeds(const std::string& text) {
  std::string lines;
  lines.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
    lines += text[i] == '\r' ? '\n' : text[i];
  }
  return lines;
}

FieldValueText ValueText(ObjectHandle object, FieldKind kind) {
  FieldValueText value;
  const bool button = kind == FieldKind::kCheckBox || kind == FieldKind::kRadioButton;
  if (button && document::NameOr(object, kNoAtom) == Keys().Off) return value;
  if (IsKind(object, ObjectKind::kArray)) {
    value.present = value.list = true;
    for (std::uint32_t i = 0; i < objects::ArrayLength(object); ++i) {
      std::string text;
      if (SingleText(objects::ArrayGet(object, i), &text)) value.texts.push_back(std::move(text));
    }
    return value;
  }
  std::string text;
  value.present = SingleText(object, &text);
  if (value.present) value.texts.push_back(WithLineFeeds(text));
  return value;
}

std::vector<FieldOption> ReadOptions(ObjectHandle options) {
  std::vector<FieldOption> read;
  if (!IsKind(options, ObjectKind::kArray)) return read;
  for (std::uint32_t i = 0; i < objects::ArrayLength(options); ++i) {
    const ObjectHandle option = objects::ArrayGet(options, i);
    FieldOption entry;
    if (IsKind(option, ObjectKind::kArray)) {
      SingleText(objects::ArrayGet(option, 1), &entry.display);
      if (!SingleText(objects::ArrayGet(option, 0), &entry.exported))
        entry.exported = entry.display;
    } else {
      SingleText(option, &entry.display);
      entry.exported = entry.display;
    }
    read.push_back(std::move(entry));
  }
  return read;
}

WidgetPlace PlaceOf(ObjectHandle widget) {
  const AnnotHandle annot = document::AnnotFromDict(widget);
  WidgetPlace place{};
  place.page = document::PageOfAnnot(annot) + 1;
  document::AnnotRect(annot, &place.rect);
  constexpr std::uint32_t kUnseen = kAnnotHidden | document::kAnnotNoView;
  place.visible = place.page != 0 && (document::AnnotFlags(annot) & kUnseen) == 0;
  return place;
}

}  // namespace

FieldValueText ReadFieldValue(FieldNode node, FieldKind kind) {
  return ValueText(CallForms(&FormsTable::GetFieldValue, node), kind);
}

FieldDetails ReadFieldDetails(const FieldEntry& entry) {
  FieldDetails details;
  details.value = ReadFieldValue(entry.node, entry.kind);
  details.defaultValue = ValueText(InheritedFieldEntry(entry.dict, Keys().DV), entry.kind);
  const unsigned kindBit = 1u << static_cast<unsigned>(entry.kind);
  for (const FlagWord& flag : kFlagWords) {
    if ((entry.flags & flag.bit) != 0 && (flag.kinds & kindBit) != 0) {
      details.flags.emplace_back(flag.word);
    }
  }
  const bool button = entry.kind == FieldKind::kCheckBox || entry.kind == FieldKind::kRadioButton;
  std::vector<OnState> states;
  for (const ObjectHandle widget : entry.widgets) {
    details.widgets.push_back(PlaceOf(widget));
    if (button) AddOnStatesOfWidget(widget, &states);
  }
  for (OnState& state : states) details.states.push_back(std::move(state.text));
  const bool choice = entry.kind == FieldKind::kComboBox || entry.kind == FieldKind::kListBox;
  if (choice) details.options = ReadOptions(InheritedFieldEntry(entry.dict, Keys().Opt));
  if (entry.kind == FieldKind::kText) details.maxLength = MaxLengthOfField(entry.dict);
  return details;
}

}  // namespace quillon::app
