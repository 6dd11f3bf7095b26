// Finding, putting and moving the entries of a widget's appearance dictionary.
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::uint32_t kAppearanceCapacity = 3;

struct EntrySearch {
  Atom key;
  ObjectKind kind;
  ObjectHandle found;  // null until found
};

bool TakeEntry(ObjectHandle stream, EntrySearch& search) {
  if (!IsKind(stream, ObjectKind::kStream)) return false;
  const ObjectHandle entry = Objects->DictGet(stream, search.key);
  if (!IsKind(entry, search.kind)) return false;
  search.found = entry;
  return true;
}

Boolean SearchState(ObjectHandle, ObjectHandle stream, void* clientData) {
  return !TakeEntry(stream, *static_cast<EntrySearch*>(clientData));
}

// An entry of the normal appearance's stream, or of the first state's stream that has it.
ObjectHandle NormalAppearanceEntry(ObjectHandle annotDict, Atom key, ObjectKind kind) {
  const ObjectHandle normal = EntryOf(EntryOf(annotDict, key::AP), key::N);
  EntrySearch search{key, kind, kNullObject};
  if (IsKind(normal, ObjectKind::kDict)) {
    Objects->EnumDict(normal, Wrap<&SearchState>, &search);
  } else {
    TakeEntry(normal, search);
  }
  return search.found;
}

Boolean RemoveStateMK(ObjectHandle, ObjectHandle stream, void*) {
  if (IsKind(stream, ObjectKind::kStream)) {
    Objects->DictRemove(Objects->StreamDict(stream), key::MK);
  }
  return true;
}

// Older files keep MK in the appearance, which is about to be replaced.
void MoveMKToAnnot(ObjectHandle annotDict) {
  if (IsKind(EntryOf(annotDict, key::MK), ObjectKind::kDict)) return;
  const ObjectHandle mk = NormalAppearanceEntry(annotDict, key::MK, ObjectKind::kDict);
  if (IsNull(mk)) return;
  PutCopy(annotDict, key::MK, mk);
  const ObjectHandle normal = EntryOf(EntryOf(annotDict, key::AP), key::N);
  if (IsKind(normal, ObjectKind::kDict)) {
    Objects->EnumDict(normal, Wrap<&RemoveStateMK>, nullptr);
  } else {
    RemoveStateMK(kNullObject, normal, nullptr);
  }
}

void StoreAppearance(ObjectHandle annotDict, Atom which, Atom state, ObjectHandle stream) {
  const ObjectDoc doc = Objects->DocumentOf(annotDict);
  ObjectHandle holder = EnsureDict(annotDict, key::AP, doc, kAppearanceCapacity);
  if (state != kNoAtom) holder = EnsureDict(holder, which, doc, kAppearanceCapacity);
  Objects->DictPut(holder, state == kNoAtom ? which : state, stream);
}

std::uint16_t RotationOfMK(ObjectHandle mk) {
  const ObjectHandle entry = EntryOf(mk, key::Rotation);
  if (!IsNumber(entry)) return 0;
  const std::int32_t degrees = Objects->IntegerValue(entry) % 360;
  const std::int32_t turned = degrees < 0 ? degrees + 360 : degrees;
  return turned % 90 == 0 ? static_cast<std::uint16_t>(turned) : std::uint16_t{0};
}

std::uint16_t RotationOfMatrix(ObjectHandle matrix) {
  if (IsNull(matrix)) return 0;
  const ObjectHandle first = Objects->ArrayGet(matrix, 0);
  const ObjectHandle second = Objects->ArrayGet(matrix, 1);
  if (!IsNumber(first) || !IsNumber(second)) return 0;
  const Fixed a = Objects->FixedValue(first);
  if (a == 0) return Objects->FixedValue(second) > 0 ? 90 : 270;
  return a < 0 ? 180 : 0;
}

// OH is the height at which the widget is drawn; the viewer scales the drawing to the rectangle.
void ApplyDrawnHeight(ObjectHandle annotDict, FixedRect& rect) {
  const ObjectHandle entry = EntryOf(annotDict, key::OH);
  if (!IsNumber(entry)) return;
  const Fixed drawn = Objects->FixedValue(entry);
  const Fixed height = FixedSub(rect.top, rect.bottom);
  if (drawn <= 0 || height <= 0 || drawn == height) return;
  rect.top = FixedAdd(rect.bottom, drawn);
  rect.right = FixedAdd(rect.left, FixedScale(FixedSub(rect.right, rect.left), drawn, height));
}

}  // namespace

ObjectHandle AppearanceOf(AnnotHandle annot, Atom which, Atom state) {
  ObjectHandle result = kNullObject;
  DropFailures([&] {
    const ObjectHandle entry = EntryOf(EntryOf(Document->AnnotDict(annot), key::AP), which);
    const bool whole = state == kNoAtom || IsKind(entry, ObjectKind::kStream);
    result = whole ? entry : EntryOf(entry, state);
  });
  return result;
}

ObjectHandle WidgetMK(AnnotHandle annot) {
  const ObjectHandle annotDict = Document->AnnotDict(annot);
  const ObjectHandle mk = EntryOf(annotDict, key::MK);
  if (IsKind(mk, ObjectKind::kDict)) return mk;
  return NormalAppearanceEntry(annotDict, key::MK, ObjectKind::kDict);
}

WidgetFrame FrameOfWidget(AnnotHandle annot) {
  WidgetFrame frame;
  Document->AnnotRect(annot, &frame.rect);
  const ObjectHandle annotDict = Document->AnnotDict(annot);
  ApplyDrawnHeight(annotDict, frame.rect);
  const ObjectHandle mk = WidgetMK(annot);
  frame.rotation =
      IsNull(mk)
          ? RotationOfMatrix(NormalAppearanceEntry(annotDict, key::Matrix, ObjectKind::kArray))
          : RotationOfMK(mk);
  return frame;
}

void PutAppearance(AnnotHandle annot, Atom which, Atom state, ObjectHandle stream) {
  const ObjectHandle annotDict = Document->AnnotDict(annot);
  const ObjectHandle all = EntryOf(annotDict, key::AP);
  if (which == kNoAtom) {
    if (IsNull(all)) return;
    ChangeAnnot(annot, key::AP, [&] { Objects->DictRemove(annotDict, key::AP); });
    return;
  }
  const ObjectHandle holder = state == kNoAtom ? all : EntryOf(all, which);
  const Atom name = state == kNoAtom ? which : state;
  // A stream where states are wanted holds none; its own dictionary's entries are no appearances.
  const ObjectHandle present =
      IsKind(holder, ObjectKind::kDict) ? Objects->DictGet(holder, name) : kNullObject;
  if (Objects->Equal(present, stream)) return;
  ChangeAnnot(annot, key::AP, [&] {
    if (IsNull(stream)) {
      Objects->DictRemove(holder, name);
    } else {
      StoreAppearance(annotDict, which, state, stream);
    }
  });
}

void InstallAppearance(AnnotHandle annot, Atom state, ObjectHandle stream) {
  const ObjectHandle annotDict = Document->AnnotDict(annot);
  MoveMKToAnnot(annotDict);
  if (state == kNoAtom) {
    if (Objects->DictKnown(annotDict, key::AppearanceState)) {
      Objects->DictRemove(annotDict, key::AppearanceState);
    }
    const ObjectHandle all = EntryOf(annotDict, key::AP);
    if (IsNull(stream) && IsNull(EntryOf(all, key::AppearanceDown)) &&
        IsNull(EntryOf(all, key::R))) {
      PutAppearance(annot, kNoAtom, kNoAtom, kNullObject);
      return;
    }
  }
  PutAppearance(annot, key::N, state, stream);
}

}  // namespace quillform
