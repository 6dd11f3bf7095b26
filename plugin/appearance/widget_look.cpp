#include "plugin/appearance/widget_look.h"

#include <new>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::size_t kLongestName = 256;
constexpr ColourRec kRed{1, kFixedOne, 0, 0, 0};

// Text is drawn at the height OH and scaled to the rectangle; the look tells what users see.
Fixed ShownSize(AnnotHandle annot, Fixed size) {
  const ObjectHandle entry = Objects->DictGet(Document->AnnotDict(annot), key::OH);
  const bool isNumber = IsKind(entry, ObjectKind::kFixed) || IsKind(entry, ObjectKind::kInteger);
  const Fixed drawn = isNumber ? Objects->FixedValue(entry) : 0;
  if (drawn <= 0) return size;
  FixedRect rect;
  Document->AnnotRect(annot, &rect);
  return FixedScale(size, FixedSub(rect.top, rect.bottom), drawn);
}

void TakeTextLook(const TextAppearance& text, WidgetLook* look) {
  look->textColour = text.fillColour;
  look->baseFont = text.baseFont;
  look->quadding = text.quadding;
  look->fontSize = text.fontSize;
}

void ReadFieldLook(AnnotHandle annot, FieldNode node, WidgetLook* look) {
  look->kind = FieldKindOf(annot);
  look->name = HostTextOf(FieldNodeName(node)).substr(0, kLongestName);
  look->markColour = kRed;
  look->fieldFlags = GetFieldFlags(node, 1);
  look->annotFlags = GetFieldFlags(node, 0);
  ReadBorderStyle(annot, &look->border);
  ReadWidgetColours(annot, &look->borderColour, &look->background);
  TextAppearance text;
  FieldTextAppearance(node, &text);
  TakeTextLook(text, look);
  look->fontSize = ShownSize(annot, text.fontSize);
}

}  // namespace

std::unique_ptr<WidgetLook> ReadWidgetLook(AnnotHandle annot) {
  std::unique_ptr<WidgetLook> look(new (std::nothrow) WidgetLook{});
  if (look == nullptr) return nullptr;
  const FieldNode node = FieldNodeOfWidget(annot);
  if (FieldNodeIsValid(node)) {
    ReadFieldLook(annot, node, look.get());
  } else {
    DefaultWidgetLook(DocOfAnnot(annot), look.get());
    look->annotFlags = Document->AnnotFlags(annot);
  }
  const WidgetFrame frame = FrameOfWidget(annot);
  look->rect = frame.rect;
  look->rotation = frame.rotation;
  return look;
}

void DefaultWidgetLook(DocHandle doc, WidgetLook* look) {
  *look = WidgetLook{};
  look->border = kDefaultBorder;
  look->markColour = kRed;
  look->kind = key::Text;
  look->borderColour = kNoColour;
  look->background = kNoColour;
  TextAppearance text = DefaultTextAppearance();
  if (DocumentHasForm(doc)) FormTextAppearance(FormDictOf(doc), &text);
  TakeTextLook(text, look);
}

}  // namespace quillform
