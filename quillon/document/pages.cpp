// Pages: counting, identity, and the entries that they inherit (ISO 32000-1, 7.7.3.4).
#include <algorithm>

#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"

namespace quillon::document {
namespace {

// US Letter, for a page that tells no size.
constexpr FixedRect kDefaultBox = {0, 792 * kFixedOne, 612 * kFixedOne, 0};

bool IsEmpty(const FixedRect& box) { return box.left >= box.right || box.bottom >= box.top; }

std::optional<FixedRect> InheritedBox(PageRecord& page, Atom key) {
  const auto box = RectOf(InheritedEntry(&page.doc->pageTree, page.number, key));
  return box && !IsEmpty(*box) ? box : std::nullopt;
}

FixedRect Intersection(const FixedRect& a, const FixedRect& b) {
  return {std::max(a.left, b.left), std::min(a.top, b.top), std::min(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

}  // namespace

std::uint32_t PageCount(DocHandle doc) { return CountPages(&RecordOf(doc).pageTree); }

DocHandle PageDoc(PageHandle page) { return HandleOf(RecordOf(page).doc); }

std::uint32_t PageNumber(PageHandle page) { return RecordOf(page).number; }

ObjectHandle PageDict(PageHandle page) { return RecordOf(page).dict; }

std::uint16_t PageRotation(PageHandle page) {
  PageRecord& record = RecordOf(page);
  const std::int32_t angle =
      IntegerOr(InheritedEntry(&record.doc->pageTree, record.number, Names().Rotate), 0) % 360;
  if (angle % 90 != 0) return 0;
  return static_cast<std::uint16_t>(angle < 0 ? angle + 360 : angle);
}

void PageBox(PageHandle page, FixedRect* box) {
  if (box == nullptr) Fail(kErrorBadParameter, "PageBox needs a rectangle");
  PageRecord& record = RecordOf(page);
  const FixedRect media = InheritedBox(record, Names().MediaBox).value_or(kDefaultBox);
  const FixedRect crop = InheritedBox(record, Names().CropBox).value_or(media);
  // What lies outside the medium is not there to be shown (ISO 32000-1, 14.11.2.1).
  const FixedRect visible = Intersection(crop, media);
  *box = IsEmpty(visible) ? media : visible;
}

}  // namespace quillon::document
