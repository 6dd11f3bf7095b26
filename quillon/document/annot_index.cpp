#include "quillon/document/annot_index.h"

#include <unordered_set>
#include <utility>

#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"

namespace quillon::document {
namespace {

ObjectHandle PageDictOf(const DocumentRecord& doc, std::uint32_t page) {
  return doc.pageTree.pages[page].dict;
}

const PageAnnots& IndexPage(DocumentRecord* doc, std::uint32_t page) {
  PageAnnots annots{};
  annots.array = AnnotsArray(PageDictOf(*doc, page));
  annots.length = IsNull(annots.array) ? 0 : objects::ArrayLength(annots.array);
  std::unordered_set<std::uint32_t> listed;
  for (std::uint32_t entry = 0; entry < annots.length; ++entry) {
    const ObjectHandle annot = objects::ArrayGet(annots.array, entry);
    if (!IsKind(annot, ObjectKind::kDict)) {
      WarnOfPdf(PageDictOf(*doc, page), "An entry of a page's annotations was none.");
      continue;
    }
    const std::uint32_t number = ObjectNumberOf(annot);
    if (number != 0 && !listed.insert(number).second) {
      WarnOfPdf(PageDictOf(*doc, page), "An annotation was listed twice on its page.");
      continue;
    }
    annots.entries.push_back(entry);
    if (number != 0) doc->annots.places.insert_or_assign(number, AnnotPlace{page, entry});
  }
  annots.changes = PdfChangeCount(doc->objects);
  // Only a whole index is kept: half of one would hide annotations from then on.
  return doc->annots.pages.insert_or_assign(page, std::move(annots)).first->second;
}

bool StandsAt(const DocumentRecord& doc, const AnnotPlace& place, ObjectHandle annot) {
  const ObjectHandle array = AnnotsArray(PageDictOf(doc, place.page));
  return !IsNull(array) && objects::Equal(objects::ArrayGet(array, place.entry), annot);
}

std::optional<AnnotPlace> KnownPlace(const DocumentRecord& doc, std::uint32_t number,
                                     ObjectHandle annot) {
  const auto place = doc.annots.places.find(number);
  if (place == doc.annots.places.end() || !StandsAt(doc, place->second, annot)) return std::nullopt;
  return place->second;
}

// An annotation without an object number stands in its Annots array itself.
std::optional<AnnotPlace> SearchDirect(DocumentRecord* doc, ObjectHandle annot) {
  const std::uint32_t pages = CountPages(&doc->pageTree);
  for (std::uint32_t page = 0; page < pages; ++page) {
    for (const std::uint32_t entry : AnnotsOnPage(doc, page).entries) {
      if (StandsAt(*doc, {page, entry}, annot)) return AnnotPlace{page, entry};
    }
  }
  return std::nullopt;
}

}  // namespace

ObjectHandle AnnotsArray(ObjectHandle page) {
  const ObjectHandle array = objects::DictGet(page, Names().Annots);
  return IsKind(array, ObjectKind::kArray) ? array : kNullObject;
}

const PageAnnots& AnnotsOnPage(DocumentRecord* doc, std::uint32_t page) {
  const auto known = doc->annots.pages.find(page);
  const bool fresh =
      known != doc->annots.pages.end() && known->second.changes == PdfChangeCount(doc->objects);
  return fresh ? known->second : IndexPage(doc, page);
}

ObjectHandle AnnotOnPage(DocumentRecord* doc, std::uint32_t page, std::uint32_t index) {
  const auto known = doc->annots.pages.find(page);
  if (known != doc->annots.pages.end() && index < known->second.entries.size()) {
    // Most changes leave the array alone; going over all of it after each one would make a loop
    // that changes every annotation quadratic.
    const PageAnnots& annots = known->second;
    const ObjectHandle array = AnnotsArray(PageDictOf(*doc, page));
    if (!IsNull(array) && objects::Equal(array, annots.array) &&
        objects::ArrayLength(array) == annots.length) {
      const ObjectHandle annot = objects::ArrayGet(array, annots.entries[index]);
      if (IsKind(annot, ObjectKind::kDict)) return annot;
    }
  }
  const PageAnnots& annots = AnnotsOnPage(doc, page);
  if (index >= annots.entries.size()) return kNullObject;
  return objects::ArrayGet(annots.array, annots.entries[index]);
}

std::optional<AnnotPlace> PlaceOfAnnot(DocumentRecord* doc, ObjectHandle annot) {
  const std::uint32_t number = ObjectNumberOf(annot);
  if (number == 0) return SearchDirect(doc, annot);
  if (const auto place = KnownPlace(*doc, number, annot)) return place;
  const ObjectHandle page = EntryOf(annot, Names().P);
  if (IsKind(page, ObjectKind::kDict)) {
    if (const auto pageNumber = FindPage(&doc->pageTree, page)) {
      AnnotsOnPage(doc, *pageNumber);
      if (const auto place = KnownPlace(*doc, number, annot)) return place;
    }
  }
  const std::uint64_t changes = PdfChangeCount(doc->objects);
  const auto sought = doc->annots.nowhere.find(number);
  if (sought != doc->annots.nowhere.end() && sought->second == changes) return std::nullopt;
  const std::uint32_t pages = CountPages(&doc->pageTree);
  for (std::uint32_t each = 0; each < pages; ++each) AnnotsOnPage(doc, each);
  const auto place = KnownPlace(*doc, number, annot);
  if (!place) doc->annots.nowhere.insert_or_assign(number, changes);
  return place;
}

}  // namespace quillon::document
