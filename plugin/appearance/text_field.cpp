#include "plugin/appearance/text_field.h"

#include <algorithm>
#include <array>

#include "plugin/appearance/border.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_layout.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_dicts.h"
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

void DrawSection(ContentWriter& writer, const WidgetFrame& frame, const WidgetContent& content,
                 bool clips) {
  BeginMarkedContent(writer, key::Tx);
  if (clips) WriteClip(writer, AreaInside(frame.rect, content.margin));
  content.draw(writer);
  if (clips) WriteRestore(writer);
  EndMarkedContent(writer);
}

struct BuiltStream {
  ObjectHandle stream;
  ObjectHandle donor;  // the appearance whose resources have gone over to it; null for none
};

BuiltStream BuildStream(AnnotHandle annot, FieldNode node, const WidgetContent& content) {
  const WidgetFrame frame = FrameOfWidget(annot);
  ContentWriter writer = NewContentWriter(frame.rect, frame.rotation);
  const ObjectHandle existing = BeginWidgetAppearance(annot, writer);
  const bool updates = !IsNull(existing);
  if (!content.isEmpty) DrawSection(writer, frame, content, !updates);
  if (updates) {
    const bool gives = IsKind(Objects->DictGet(existing, key::Resources), ObjectKind::kDict);
    const ObjectHandle merged =
        MergeMarkedContent(existing, writer, content.look, GetFieldEntry(node, kBitDR));
    if (!IsNull(merged)) return {merged, gives ? existing : quillon::kNullObject};
    // An appearance without a marked section has no place for the content: it is replaced.
    writer = NewContentWriter(frame.rect, frame.rotation);
    if (!content.isEmpty) DrawSection(writer, frame, content, true);
  }
  return {MakeFormStream(ObjectDocOfAnnot(annot), writer), quillon::kNullObject};
}

// For an appearance that stays because the new one could not be installed.
void GiveResourcesBack(AnnotHandle annot, const BuiltStream& built) {
  if (IsNull(built.donor) || Objects->Equal(AppearanceOf(annot, key::N, kNoAtom), built.stream)) {
    return;
  }
  MoveEntry(Objects->StreamDict(built.stream), Objects->StreamDict(built.donor), key::Resources);
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

Fixed MarginInside(AnnotHandle annot) {
  BorderStyle border;
  ReadBorderStyle(annot, &border);
  return FixedOfWhole(ContentInset(border));
}

void BuildWithContent(AnnotHandle annot, FieldNode node, const WidgetContent& content) {
  const BuiltStream built = BuildStream(annot, node, content);
  const FailureCode failure =
      CatchFailure([&] { InstallAppearance(annot, kNoAtom, built.stream); });
  if (failure == quillon::kErrorNone) return;
  DropFailures([&] { GiveResourcesBack(annot, built); });
  Raise(failure);
}

void BuildValueAppearance(AnnotHandle annot, ObjectHandle value, std::uint32_t layoutFlags) {
  const FieldNode node = FieldNodeOfWidget(annot);
  if (!FieldNodeIsValid(node)) {
    InstallAppearance(annot, kNoAtom, quillon::kNullObject);
    return;
  }
  const std::uint32_t flags = GetFieldFlags(node, 1) & layoutFlags;
  const bool multiLine = (flags & kFieldMultiLine) != 0;
  TextAppearance look;
  FieldTextAppearance(node, &look);
  const Fixed margin = MarginInside(annot);
  std::string text = ValueText(value);
  if ((flags & kFieldPassword) != 0) std::fill(text.begin(), text.end(), '*');
  const auto draw = [&](ContentWriter& writer) {
    if (multiLine) {
      std::string lines = text;
      std::erase(lines, '\n');
      WriteMultiLine(writer, true, margin, look, lines.c_str());
    } else {
      WriteSingleLine(writer, margin, look, text.c_str());
    }
  };
  BuildWithContent(annot, node, {look, margin, text.empty(), draw});
  if (multiLine && !text.empty()) node->status &= ~std::uint32_t{kNodeMultiLineCommit};
}

void BuildTextAppearance(AnnotHandle annot, ObjectHandle value) {
  BuildValueAppearance(annot, value, kFieldMultiLine | kFieldPassword);
}

}  // namespace quillform
