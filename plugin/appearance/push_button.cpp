#include "plugin/appearance/push_button.h"

#include "plugin/appearance/caption_icon.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/text_field.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::size_t kLongestCaption = 256;

struct ButtonBuild {
  AnnotHandle annot;
  const WidgetLook& look;
  const ButtonPart& part;
  WidgetFrame frame;
  Fixed margin;
  Fixed borderWidth;
};

ContentWriter WriterFor(const ButtonBuild& build) {
  return NewContentWriter(build.frame.rect, build.frame.rotation);
}

ContentWriter CaptionAndIcon(const ButtonBuild& build, Atom captionKey, ObjectHandle icon) {
  const std::string text =
      ValueText(EntryOf(WidgetMK(build.annot), captionKey)).substr(0, kLongestCaption);
  ContentWriter writer = WriterFor(build);
  DrawCaptionAndIcon(writer, build.margin, build.part.layout, icon,
                     CaptionAppearance(build.look, build.look.baseFont), text.c_str(), false);
  return writer;
}

ObjectHandle MakeButtonStream(const ButtonBuild& build, const ContentWriter& content, bool down) {
  const WidgetLook& look = build.look;
  ContentWriter writer = WriterFor(build);
  DrawBorder(writer, nullptr, look.border.style, build.borderWidth, look.borderColour,
             look.background, down);
  WriteClip(writer, AreaInside(build.frame.rect, build.margin));
  if (down) {
    WriteOp(writer, "1 0 0 1 %f %f cm", build.borderWidth, FixedSub(0, build.borderWidth));
  }
  AppendWriter(writer, content);
  WriteRestore(writer);
  return MakeFormStream(ObjectDocOfAnnot(build.annot), writer);
}

// The content while pressed: the alternate caption and icon, where there are any.
ContentWriter DownContent(const ButtonBuild& build, const ContentWriter& normal) {
  const ButtonPart& part = build.part;
  const bool otherCaption = !part.downCaption.empty() && part.downCaption != part.caption;
  const bool otherIcon = !IsNull(part.downIcon) && !Objects->Equal(part.downIcon, part.icon);
  if (!otherCaption && !otherIcon) return normal;
  return CaptionAndIcon(build, otherCaption ? key::AC : key::CA,
                        otherIcon ? part.downIcon : part.icon);
}

void BuildAppearances(AnnotHandle annot, const WidgetLook& look, bool pushed) {
  const ButtonPart* part = std::get_if<ButtonPart>(&look.kindPart);
  if (part == nullptr) return;
  const ButtonBuild build{annot,
                          look,
                          *part,
                          FrameOfWidget(annot),
                          FixedOfWhole(ContentInset(look.border)),
                          FixedOfWhole(look.border.width)};
  const ContentWriter content = CaptionAndIcon(build, key::CA, part->icon);
  const ContentWriter downContent = pushed ? DownContent(build, content) : WriterFor(build);
  InstallAppearance(annot, kNoAtom, MakeButtonStream(build, content, false));
  if (!pushed) return;
  PutAppearance(annot, key::AppearanceDown, kNoAtom, MakeButtonStream(build, downContent, true));
}

}  // namespace

void BuildButtonAppearance(AnnotHandle annot, const WidgetLook& look) {
  BuildAppearances(annot, look, false);
}

void BuildPushButtonAppearances(AnnotHandle annot, const WidgetLook& look) {
  BuildAppearances(annot, look, true);
}

void BuildButton(AnnotHandle annot, const WidgetLook& look) {
  const ButtonPart* part = std::get_if<ButtonPart>(&look.kindPart);
  const bool pushed = part != nullptr && part->highlight == key::P;
  BuildAppearances(annot, look, pushed);
}

void RefreshButtonWidget(AnnotHandle annot, bool rebuild) {
  if (!rebuild || !IsKind(WidgetMK(annot), ObjectKind::kDict)) return;
  const std::unique_ptr<WidgetLook> look = ReadWidgetLook(annot);
  if (look == nullptr) return;
  ReadKindPart(annot, key::Button, look.get());
  BuildButton(annot, *look);
}

}  // namespace quillform
