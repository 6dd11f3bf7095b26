#include "plugin/appearance/text_field.h"

#include <algorithm>
#include <array>

#include "plugin/appearance/border.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_layout.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::size_t kValueCapacity = 133;
constexpr std::uint16_t kValuePrecision = 9;
constexpr std::uint32_t kYesString = 19;
constexpr std::uint32_t kNoString = 20;

std::string FixedValueText(ObjectHandle value) {
  std::array<char, kValueCapacity> buffer{};
  const std::uint32_t length = Support->FixedToText(Objects->FixedValue(value), buffer.data(),
                                                    kValueCapacity, kValuePrecision);
  return std::string(buffer.data(), length);
}

std::string LocalText(std::uint32_t id) {
  std::array<char, kValueCapacity> buffer{};
  LoadLocalString(id, buffer.data(), buffer.size());
  return buffer.data();
}

// Content streams show the document's one-byte encoding, so the two-byte form is brought into it.
std::string StringText(ObjectHandle value) {
  std::uint32_t length = 0;
  const char* bytes = Objects->StringValue(value, &length);
  std::string text(bytes, length);
  if (text.rfind("\xFE\xFF", 0) == 0) text = DocumentTextOf(HostTextOf(text));
  return text;
}

// One widget's text, as the layout needs it.
struct FieldText {
  std::string text;
  TextAppearance look;
  bool multiLine;
  Fixed margin;
  FixedRect inner;  // in unrotated widget coordinates
};

FieldText PrepareText(AnnotHandle annot, FieldNode node, const WidgetFrame& frame,
                      const TextAppearance& look, ObjectHandle value) {
  const std::uint32_t flags = GetFieldFlags(node, 1);
  BorderStyle border;
  ReadBorderStyle(annot, &border);
  const Fixed margin = FixedOfWhole(ContentInset(border));
  const Fixed width = FixedDistance(frame.rect.right, frame.rect.left);
  const Fixed height = FixedDistance(frame.rect.top, frame.rect.bottom);
  FieldText field{ValueText(value),
                  look,
                  (flags & kFieldMultiLine) != 0,
                  margin,
                  {margin, FixedSub(height, margin), FixedSub(width, margin), margin}};
  if ((flags & kFieldPassword) != 0) std::fill(field.text.begin(), field.text.end(), '*');
  return field;
}

// Inside an existing appearance the author's own clip applies.
void DrawFieldText(ContentWriter& writer, const FieldText& field, bool clips) {
  BeginMarkedContent(writer, key::Tx);
  if (clips) WriteClip(writer, field.inner);
  if (field.multiLine) {
    std::string lines = field.text;
    std::erase(lines, '\n');
    WriteMultiLine(writer, true, field.margin, field.look, lines.c_str());
  } else {
    WriteSingleLine(writer, field.margin, field.look, field.text.c_str());
  }
  if (clips) WriteRestore(writer);
  EndMarkedContent(writer);
}

// The stream for a widget with a field: the existing one brought up to date, or a new one.
ObjectHandle BuildStream(AnnotHandle annot, FieldNode node, ObjectHandle value) {
  const WidgetFrame frame = FrameOfWidget(annot);
  ContentWriter writer = NewContentWriter(frame.rect, frame.rotation);
  const ObjectHandle existing = BeginWidgetAppearance(annot, writer);
  const bool updates = !IsNull(existing);
  TextAppearance look;
  FieldTextAppearance(node, &look);
  const FieldText field = PrepareText(annot, node, frame, look, value);
  const bool hasText = !field.text.empty();
  if (hasText) DrawFieldText(writer, field, !updates);
  if (hasText && field.multiLine) node->status &= ~std::uint32_t{kNodeMultiLineCommit};

  if (updates) {
    const ObjectHandle merged =
        MergeMarkedContent(existing, writer, look, GetFieldEntry(node, kBitDR));
    if (!IsNull(merged)) return merged;
    // An appearance without a marked section has no place for the text: it is replaced.
    writer = NewContentWriter(frame.rect, frame.rotation);
    if (hasText) DrawFieldText(writer, field, true);
  }
  return MakeFormStream(ObjectDocOfAnnot(annot), writer);
}

}  // namespace

std::string ValueText(ObjectHandle value) {
  switch (Objects->TypeOf(value)) {
    case ObjectKind::kString:
      return StringText(value);
    case ObjectKind::kName:
      return Core->NameFromAtom(Objects->NameValue(value));
    case ObjectKind::kInteger:
      return std::to_string(Objects->IntegerValue(value));
    case ObjectKind::kFixed:
      return FixedValueText(value);
    case ObjectKind::kBoolean:
      return LocalText(Objects->BooleanValue(value) != 0 ? kYesString : kNoString);
    default:
      return {};
  }
}

ObjectHandle BeginWidgetAppearance(AnnotHandle annot, ContentWriter& writer) {
  if (IsKind(WidgetMK(annot), ObjectKind::kDict)) {
    BorderStyle border;
    ReadBorderStyle(annot, &border);
    ColourRec borderColour;
    ColourRec background;
    ReadWidgetColours(annot, &borderColour, &background);
    DrawBorder(writer, nullptr, border.style, FixedOfWhole(border.width), borderColour, background,
               false);
    return quillon::kNullObject;
  }
  const ObjectHandle normal = AppearanceOf(annot, key::N, kNoAtom);
  const bool usable =
      IsKind(normal, ObjectKind::kStream) && Objects->DocumentOf(normal) == ObjectDocOfAnnot(annot);
  return usable ? normal : quillon::kNullObject;
}

void BuildTextAppearance(AnnotHandle annot, ObjectHandle value) {
  const FieldNode node = FieldNodeOfWidget(annot);
  const ObjectHandle stream =
      FieldNodeIsValid(node) ? BuildStream(annot, node, value) : quillon::kNullObject;
  InstallAppearance(annot, kNoAtom, stream);
}

}  // namespace quillform
