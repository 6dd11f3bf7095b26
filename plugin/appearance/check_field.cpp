#include "plugin/appearance/check_field.h"

#include <algorithm>

#include "plugin/appearance/caption_icon.h"
#include "plugin/appearance/check_styles.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr ColourRec kWhiteRGB{1, kFixedOne, kFixedOne, kFixedOne, 0};

// One widget whose four appearances are being made.
struct CheckBuild {
  AnnotHandle annot;
  const WidgetLook& look;
  WidgetFrame frame;
  Fixed margin;
  Fixed borderWidth;
  Atom onState;
  bool round;
  bool pushesMark;  // the mark moves with a pressed bevel
};

ContentWriter WriterFor(const CheckBuild& build) {
  return NewContentWriter(build.frame.rect, build.frame.rotation);
}

void DrawDot(ContentWriter& writer, const CheckBuild& build) {
  const Fixed width = BoxWidth(writer);
  const Fixed height = BoxHeight(writer);
  const Fixed space = FixedSub(FixedHalf(std::min(width, height)), build.margin);
  SetColour(writer, build.look.textColour, true);
  WriteCircle(writer, FixedHalf(width), FixedHalf(height), FixedHalf(space), 'f');
}

// The caption's character is a code of the mark's font, as the document holds it.
ContentWriter MarkOf(const CheckBuild& build, const CheckPart& part) {
  ContentWriter mark = WriterFor(build);
  if (build.round) {
    DrawDot(mark, build);
  } else {
    DrawCaptionAndIcon(mark, build.margin, kTextOnly, part.icon,
                       CaptionAppearance(build.look, key::ZapfDingbats),
                       DocumentTextOf(part.caption).c_str(), true);
  }
  return mark;
}

ContentWriter FrameFor(const CheckBuild& build, bool down) {
  const WidgetLook& look = build.look;
  const bool lacksBackground = look.background.space == kNoColour.space;
  const ColourRec& background = down && lacksBackground ? kWhiteRGB : look.background;
  ContentWriter writer = WriterFor(build);
  const auto draw = build.round ? &DrawRoundBorder : &DrawBorder;
  draw(writer, nullptr, look.border.style, build.borderWidth, look.borderColour, background, down);
  return writer;
}

void AddMark(ContentWriter& writer, const CheckBuild& build, const ContentWriter& mark,
             bool pushed) {
  if (build.round) {
    AppendWriter(writer, mark);
    return;
  }
  WriteClip(writer, AreaInside(build.frame.rect, build.margin));
  if (pushed) {
    WriteOp(writer, "1 0 0 1 %f %f cm", build.borderWidth, FixedSub(0, build.borderWidth));
  }
  AppendWriter(writer, mark);
  WriteRestore(writer);
}

// Null where nothing is to be seen. What the host could not make is an error: a widget without one
// of its states would show the other one.
ObjectHandle StreamOfState(const CheckBuild& build, bool down, bool on, const ContentWriter& mark) {
  ContentWriter writer = FrameFor(build, down);
  if (on) AddMark(writer, build, mark, down && build.pushesMark);
  const ObjectHandle stream = MakeFormStream(ObjectDocOfAnnot(build.annot), writer);
  if (IsNull(stream) && writer.lost) Raise(quillon::kErrorNoMemory);
  if (IsNull(stream) && !writer.text.empty()) Raise(quillon::kErrorGeneral);
  return stream;
}

// MK in its older place would go with the appearances. Other widgets may share them, so that each
// gets a copy of its own.
void KeepMK(AnnotHandle annot) {
  const ObjectHandle dict = Document->AnnotDict(annot);
  const ObjectHandle mk = WidgetMK(annot);
  if (IsNull(mk) || IsKind(Objects->DictGet(dict, key::MK), ObjectKind::kDict)) return;
  ChangeAnnot(annot, key::MK, [&] {
    NewObject copy(Objects->CopyObject(mk, Objects->DocumentOf(dict)));
    Objects->DictPut(dict, key::MK, copy.handle);
    copy.Release();
  });
}

void BuildStates(AnnotHandle annot, const WidgetLook& look, bool radio) {
  const CheckPart* part = std::get_if<CheckPart>(&look.kindPart);
  if (part == nullptr) return;
  const bool bevelled = look.border.style == kBorderBeveled;
  const CheckBuild build{annot,
                         look,
                         FrameOfWidget(annot),
                         FixedOfWhole(ContentInset(look.border)),
                         FixedOfWhole(look.border.width),
                         part->onState,
                         radio && part->caption[0] == kCircleMark,
                         !radio && bevelled};
  // What may fail comes before anything is taken away.
  const ContentWriter mark = MarkOf(build, *part);
  NewObject on(StreamOfState(build, false, true, mark));
  NewObject off(StreamOfState(build, false, false, mark));
  NewObject downOn(StreamOfState(build, true, true, mark));
  NewObject downOff(StreamOfState(build, true, false, mark));
  KeepMK(annot);
  PutAppearance(annot, kNoAtom, kNoAtom, quillon::kNullObject);
  InstallAppearance(annot, build.onState, on.Release());
  InstallAppearance(annot, key::Off, off.Release());
  PutAppearance(annot, key::AppearanceDown, build.onState, downOn.Release());
  PutAppearance(annot, key::AppearanceDown, key::Off, downOff.Release());
}

bool HasState(AnnotHandle annot, Atom state) {
  return state != kNoAtom &&
         IsKind(EntryOf(AppearanceOf(annot, key::N, kNoAtom), state), ObjectKind::kStream);
}

void ShowState(AnnotHandle annot, Atom state) {
  const ObjectHandle dict = Document->AnnotDict(annot);
  const ObjectHandle shown = Objects->DictGet(dict, key::AppearanceState);
  if (IsKind(shown, ObjectKind::kName) && Objects->NameValue(shown) == state) return;
  ChangeAnnot(annot, key::AP, [&] {
    Objects->DictPut(dict, key::AppearanceState,
                     Objects->NewName(Objects->DocumentOf(dict), false, state));
  });
}

void Rebuild(AnnotHandle annot) {
  const std::unique_ptr<WidgetLook> look = ReadWidgetLook(annot);
  if (look == nullptr) return;
  ReadKindPart(annot, look->kind, look.get());
  BuildStates(annot, *look, look->kind == key::RadioButton);
}

}  // namespace

void BuildCheckAppearance(AnnotHandle annot, const WidgetLook& look) {
  BuildStates(annot, look, false);
}

void BuildRadioAppearance(AnnotHandle annot, const WidgetLook& look) {
  BuildStates(annot, look, true);
}

void RefreshCheckWidget(AnnotHandle annot, Atom state, bool rebuild) {
  if (rebuild && IsKind(WidgetMK(annot), ObjectKind::kDict)) Rebuild(annot);
  // From here on the appearances tell the on state.
  const ObjectHandle dict = Document->AnnotDict(annot);
  if (Objects->DictKnown(dict, key::DefaultOn)) Objects->DictRemove(dict, key::DefaultOn);
  ShowState(annot, HasState(annot, state) ? state : key::Off);
}

}  // namespace quillform
