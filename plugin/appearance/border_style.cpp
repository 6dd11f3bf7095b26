#include <algorithm>

#include "plugin/appearance/border.h"
#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr Fixed kDashLength = 3 * kFixedOne;
constexpr std::uint32_t kBorderCapacity = 3;

struct StyleName {
  const Atom* name;
  BorderStyleCode style;
};
constexpr StyleName kStyleNames[] = {
    {&key::BorderDashed, kBorderDashed}, {&key::BorderBeveled, kBorderBeveled},
    {&key::BorderInset, kBorderInset},   {&key::BorderUnderlined, kBorderUnderlined},
    {&key::BorderSolid, kBorderSolid},
};

std::int32_t StyleOfName(ObjectHandle name) {
  if (!IsKind(name, ObjectKind::kName)) return kBorderSolid;
  const Atom atom = Objects->NameValue(name);
  for (const StyleName& entry : kStyleNames) {
    if (*entry.name == atom) return entry.style;
  }
  return kBorderSolid;
}

Atom NameOfStyle(std::int32_t style) {
  for (const StyleName& entry : kStyleNames) {
    if (entry.style == style) return *entry.name;
  }
  return key::BorderSolid;
}

void SetDash(BorderStyle& border) {
  border.dashCount = 1;
  border.dashes[0] = kDashLength;
}

void ReadBorderDict(ObjectHandle dict, BorderStyle& border) {
  border.style = StyleOfName(Objects->DictGet(dict, key::S));
  const ObjectHandle width = Objects->DictGet(dict, key::W);
  if (!IsNull(width)) border.width = Objects->IntegerValue(width);
  // The pattern's own lengths are not read: there is one dashed look.
  if (border.style == kBorderDashed && Objects->DictKnown(dict, key::DashArray)) SetDash(border);
}

void ReadBorderArray(ObjectHandle array, BorderStyle& border) {
  border.width = Objects->IntegerValue(Objects->ArrayGet(array, 2));
  if (Objects->ArrayLength(array) < 4) return;
  border.style = kBorderDashed;
  SetDash(border);
}

void PutBorderDict(AnnotHandle annot, const BorderStyle& border) {
  const ObjectHandle annotDict = Document->AnnotDict(annot);
  const ObjectDoc doc = Objects->DocumentOf(annotDict);
  ObjectHandle dict = Objects->DictGet(annotDict, key::BS);
  if (!IsKind(dict, ObjectKind::kDict)) {
    dict = Objects->NewDict(doc, false, kBorderCapacity);
    Objects->DictPut(annotDict, key::BS, dict);
  }
  Objects->DictPut(dict, key::W, Objects->NewInteger(doc, false, border.width));
  Objects->DictPut(dict, key::S, Objects->NewName(doc, false, NameOfStyle(border.style)));
  if (border.style == kBorderDashed) {
    const ObjectHandle dashes = Objects->NewArray(doc, false, 1);
    Objects->ArrayPut(dashes, 0, Objects->NewFixed(doc, false, kDashLength));
    Objects->DictPut(dict, key::DashArray, dashes);
  }
}

bool RemoveEntry(AnnotHandle annot, Atom entry) {
  const ObjectHandle dict = Document->AnnotDict(annot);
  if (!Objects->DictKnown(dict, entry)) return false;
  ChangeAnnot(annot, key::Border, [&] { Objects->DictRemove(dict, entry); });
  return true;
}

}  // namespace

bool ReadBorderStyle(AnnotHandle annot, BorderStyle* border) {
  *border = kDefaultBorder;
  BorderStyle read = kDefaultBorder;
  const FailureCode code = CatchFailure([&] {
    const ObjectHandle annotDict = Document->AnnotDict(annot);
    const ObjectHandle dict = Objects->DictGet(annotDict, key::BS);
    if (IsKind(dict, ObjectKind::kDict)) {
      ReadBorderDict(dict, read);
      return;
    }
    const ObjectHandle array = Objects->DictGet(annotDict, key::Border);
    if (IsKind(array, ObjectKind::kArray)) ReadBorderArray(array, read);
  });
  if (code == quillon::kErrorNone) *border = read;
  return border->width > 0;
}

bool BordersEqual(const BorderStyle& a, const BorderStyle& b) {
  if (a.style != b.style || a.width != b.width || a.dashCount != b.dashCount) return false;
  const auto count =
      std::min<std::size_t>(static_cast<std::size_t>(std::max(a.dashCount, 0)), a.dashes.size());
  return std::equal(a.dashes.begin(), a.dashes.begin() + static_cast<std::ptrdiff_t>(count),
                    b.dashes.begin());
}

void WriteBorderStyle(AnnotHandle annot, const BorderStyle* border) {
  bool changed = RemoveEntry(annot, key::Border);
  const bool plain = border == nullptr || (border->style == kBorderSolid && border->width == 1);
  if (plain) {
    changed = RemoveEntry(annot, key::BS) || changed;
  } else {
    BorderStyle current;
    ReadBorderStyle(annot, &current);
    if (!BordersEqual(current, *border)) {
      ChangeAnnot(annot, key::BS, [&] { PutBorderDict(annot, *border); });
      changed = true;
    }
  }
  if (changed) MarkAppearanceStale(FieldNodeOfWidget(annot));
}

std::int32_t ContentInset(const BorderStyle& border) {
  const bool deep = border.style == kBorderBeveled || border.style == kBorderInset;
  // Twice a width that no page could hold would leave the range.
  constexpr std::int32_t kWidest = 0x7FFF;
  const std::int32_t width = std::clamp(border.width, -kWidest, kWidest);
  return deep ? 2 * width : width;
}

FixedRect AreaInside(const FixedRect& widget, Fixed margin) {
  return {margin, FixedSub(FixedDistance(widget.top, widget.bottom), margin),
          FixedSub(FixedDistance(widget.right, widget.left), margin), margin};
}

}  // namespace quillform
