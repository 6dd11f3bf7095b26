// The widgets that a document's pages show. The model's own.
#pragma once

#include "plugin/host/host.h"
#include "plugin/model/keys.h"

namespace quillform {

// An acquired page for its own lifetime.
struct PageScope {
  PageScope(DocHandle doc, std::uint32_t number) : page(Document->AcquirePage(doc, number)) {}
  ~PageScope() {
    DropFailures([this] { Document->ReleasePage(page); });
  }
  PageScope(const PageScope&) = delete;
  PageScope& operator=(const PageScope&) = delete;

  PageHandle page;
};

// Calls `visit` (page, index, annotation) for every widget of an acquired page from the last to the
// first, so that it may remove the one it was called with.
template <typename Visit>
void VisitPageWidgets(PageHandle page, Visit&& visit) {
  for (std::uint32_t i = Document->AnnotCount(page); i-- > 0;) {
    const AnnotHandle annot = Document->AnnotAt(page, i);
    if (Document->AnnotIsValid(annot) && Document->AnnotSubtype(annot) == key::Widget) {
      visit(page, i, annot);
    }
  }
}

// The same for every page of a document.
template <typename Visit>
void VisitWidgets(DocHandle doc, Visit&& visit) {
  const std::uint32_t pages = Document->PageCount(doc);
  for (std::uint32_t number = 0; number < pages; ++number) {
    PageScope scope(doc, number);
    VisitPageWidgets(scope.page, visit);
  }
}

inline bool HasWidgets(PageHandle page) {
  bool found = false;
  VisitPageWidgets(page, [&](PageHandle, std::uint32_t, AnnotHandle) { found = true; });
  return found;
}

}  // namespace quillform
