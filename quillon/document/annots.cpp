// Annotations: reading them.
#include "quillon/document/annots.h"

#include <algorithm>

#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"

namespace quillon::document {

std::uint32_t AnnotCount(PageHandle page) {
  const PageRecord& record = RecordOf(page);
  return static_cast<std::uint32_t>(AnnotsOnPage(record.doc, record.number).entries.size());
}

AnnotHandle AnnotAt(PageHandle page, std::uint32_t index) {
  const PageRecord& record = RecordOf(page);
  const ObjectHandle annot = AnnotOnPage(record.doc, record.number, index);
  if (IsNull(annot)) {
    Fail(kErrorBadParameter, "page " + std::to_string(record.number + 1) + " has no annotation " +
                                 std::to_string(index));
  }
  return AnnotOf(annot);
}

std::int32_t AnnotIndex(PageHandle page, AnnotHandle annot) {
  const PageRecord& record = RecordOf(page);
  const PageAnnots& annots = AnnotsOnPage(record.doc, record.number);
  if (!IsKind(DictOf(annot), ObjectKind::kDict)) return -1;
  std::optional<AnnotPlace> place = PlaceOfAnnot(record.doc, DictOf(annot));
  if (place && place->page == record.number) {
    const auto entry = std::lower_bound(annots.entries.begin(), annots.entries.end(), place->entry);
    return static_cast<std::int32_t>(entry - annots.entries.begin());
  }
  // It may stand on several pages, and the index knows one of them.
  for (std::size_t index = 0; place && index < annots.entries.size(); ++index) {
    if (objects::Equal(objects::ArrayGet(annots.array, annots.entries[index]), DictOf(annot))) {
      return static_cast<std::int32_t>(index);
    }
  }
  return -1;
}

AnnotHandle AnnotFromDict(ObjectHandle dict) {
  return IsKind(dict, ObjectKind::kDict) ? AnnotOf(dict) : kNoAnnot;
}

ObjectHandle AnnotDict(AnnotHandle annot) { return DictOf(annot); }

Atom AnnotSubtype(AnnotHandle annot) {
  return NameOr(EntryOf(DictOf(annot), Names().Subtype), kNoAtom);
}

void AnnotRect(AnnotHandle annot, FixedRect* rect) {
  if (rect == nullptr) Fail(kErrorBadParameter, "AnnotRect needs a rectangle");
  *rect = RectOf(EntryOf(DictOf(annot), Names().Rect)).value_or(FixedRect{0, 0, 0, 0});
}

std::uint32_t AnnotFlags(AnnotHandle annot) {
  return static_cast<std::uint32_t>(IntegerOr(EntryOf(DictOf(annot), Names().F), 0));
}

Boolean AnnotIsValid(AnnotHandle annot) {
  try {
    const ObjectHandle dict = DictOf(annot);
    if (!IsKind(dict, ObjectKind::kDict)) return 0;
    return objects::DictKnown(dict, Names().Subtype) != 0 ||
           objects::DictKnown(dict, Names().Rect) != 0;
  } catch (const HostFailure&) {
    return 0;  // its document is gone
  }
}

Boolean AnnotEqual(AnnotHandle a, AnnotHandle b) { return objects::Equal(DictOf(a), DictOf(b)); }

std::int32_t PageOfAnnot(AnnotHandle annot) {
  const ObjectHandle dict = DictOf(annot);
  if (!IsKind(dict, ObjectKind::kDict)) return -1;
  DocumentRecord* doc = RecordOfObject(dict);
  if (doc == nullptr) return -1;
  const auto place = PlaceOfAnnot(doc, dict);
  return place ? static_cast<std::int32_t>(place->page) : -1;
}

}  // namespace quillon::document
