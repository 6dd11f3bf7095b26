#include "plugin/exchange/fdf_widget.h"

#include <vector>

#include "plugin/appearance/border.h"
#include "plugin/appearance/caption_icon.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

// How the widget frames an icon.
struct IconFrame {
  explicit IconFrame(AnnotHandle annot);

  ObjectDoc doc;
  WidgetFrame frame;
  BorderStyle border;
  ColourRec borderColour;
  ColourRec background;
};

IconFrame::IconFrame(AnnotHandle annot)
    : doc(ObjectDocOfAnnot(annot)), frame(FrameOfWidget(annot)), border(kDefaultBorder) {
  ReadBorderStyle(annot, &border);
  ReadWidgetColours(annot, &borderColour, &background);
}

// The appearance with `icon` inside it; the null object when there is nothing to draw.
ObjectHandle MakeIconAppearance(const IconFrame& look, ObjectHandle icon) {
  const Fixed margin = FixedOfWhole(ContentInset(look.border));
  ContentWriter content = NewContentWriter(look.frame.rect, look.frame.rotation);
  TextAppearance caption = DefaultTextAppearance();
  caption.fontSize = 12 * kFixedOne;  // none is drawn
  DrawCaptionAndIcon(content, margin, kIconOnly, icon, caption, "", false);

  ContentWriter writer = NewContentWriter(look.frame.rect, look.frame.rotation);
  DrawBorder(writer, nullptr, look.border.style, FixedOfWhole(look.border.width), look.borderColour,
             look.background, false);
  WriteClip(writer, AreaInside(look.frame.rect, margin));
  AppendWriter(writer, content);
  WriteRestore(writer);
  return MakeFormStream(look.doc, writer);
}

Boolean AddKey(ObjectHandle key, ObjectHandle, void* data) {
  static_cast<std::vector<Atom>*>(data)->push_back(Objects->NameValue(key));
  return 1;
}

void FrameIcon(const IconFrame& look, ObjectHandle container, Atom key) {
  const ObjectHandle made = MakeIconAppearance(look, Objects->DictGet(container, key));
  if (!IsNull(made)) Objects->DictPut(container, key, made);
}

// Frames the streams of an appearance dictionary, those of its states too.
void FrameIcons(const IconFrame& look, ObjectHandle appearances) {
  for (const Atom which : {key::N, key::AppearanceDown, key::R}) {
    const ObjectHandle appearance = Objects->DictGet(appearances, which);
    if (IsKind(appearance, ObjectKind::kStream)) {
      FrameIcon(look, appearances, which);
    } else if (IsKind(appearance, ObjectKind::kDict)) {
      std::vector<Atom> states;
      Objects->EnumDict(appearance, Wrap<&AddKey>, &states);
      for (const Atom state : states) {
        if (!IsKind(Objects->DictGet(appearance, state), ObjectKind::kStream)) continue;
        FrameIcon(look, appearance, state);
      }
    }
  }
}

void PutNewEntry(AnnotHandle annot, Atom key, NewObject* value) {
  ChangeAnnot(annot, key, [&] {
    Objects->DictPut(Document->AnnotDict(annot), key, value->handle);
    value->Release();
  });
}

void ApplyAppearances(AnnotHandle annot, ObjectHandle appearances) {
  const IconFrame look(annot);
  NewObject copy(Objects->CopyObject(appearances, look.doc));
  if (IsKind(copy.handle, ObjectKind::kDict)) FrameIcons(look, copy.handle);
  PutNewEntry(annot, key::AP, &copy);
}

void ApplyFlags(AnnotHandle annot, ObjectHandle entry) {
  std::optional<std::uint32_t> flags = FlagsEntry(entry, key::F);
  if (!flags) {
    flags = ChangedFlags(Document->AnnotFlags(annot), entry, key::SetF, key::ClrF);
  }
  if (flags) Document->SetAnnotFlags(annot, *flags);
}

}  // namespace

void ApplyToWidget(ObjectHandle widget, ObjectHandle entry) {
  const AnnotHandle annot = Document->AnnotFromDict(widget);
  const ObjectHandle appearances = Objects->DictGet(entry, key::AP);
  if (!IsNull(appearances)) ApplyAppearances(annot, appearances);
  for (const Atom key : {key::AppearanceState, key::A, key::AA}) {
    const ObjectHandle value = Objects->DictGet(entry, key);
    if (IsNull(value)) continue;
    NewObject copy(Objects->CopyObject(value, Objects->DocumentOf(widget)));
    PutNewEntry(annot, key, &copy);
  }
  ApplyFlags(annot, entry);
}

std::optional<std::uint32_t> FlagsEntry(ObjectHandle entry, Atom key) {
  const ObjectHandle flags = Objects->DictGet(entry, key);
  if (!IsKind(flags, ObjectKind::kInteger)) return std::nullopt;
  return static_cast<std::uint32_t>(Objects->IntegerValue(flags));
}

std::optional<std::uint32_t> ChangedFlags(std::uint32_t current, ObjectHandle entry, Atom setKey,
                                          Atom clearKey) {
  const std::optional<std::uint32_t> set = FlagsEntry(entry, setKey);
  const std::optional<std::uint32_t> cleared = FlagsEntry(entry, clearKey);
  if (!set && !cleared) return std::nullopt;
  return (current | set.value_or(0)) & ~cleared.value_or(0);
}

}  // namespace quillform
