#include "quillon/document/document_record.h"

#include <algorithm>
#include <unordered_map>

#include "quillon/core/failure.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"

namespace quillon::document {
namespace {

struct Registry {
  std::vector<DocumentRecord*> order;  // newest last
  std::unordered_map<const void*, std::unique_ptr<DocumentRecord>> byHandle;
  std::unordered_map<ObjectDoc, DocumentRecord*> byObjects;
  std::unordered_map<const void*, std::unique_ptr<PageRecord>> pages;
  RecordPool<ActionRecord> looseActions;
  RecordPool<FileSpecRecord> looseFileSpecs;
};

Registry& TheRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

DocumentRecord& AddDocument(ObjectDoc objects) {
  Registry& registry = TheRegistry();
  auto record = std::make_unique<DocumentRecord>(objects);
  DocumentRecord* place = record.get();
  registry.byHandle.emplace(place, std::move(record));
  registry.byObjects.emplace(objects, place);
  registry.order.push_back(place);
  return *place;
}

void RemoveDocument(DocumentRecord* record) {
  Registry& registry = TheRegistry();
  std::erase_if(registry.pages, [&](const auto& entry) { return entry.second->doc == record; });
  std::erase(registry.order, record);
  registry.byObjects.erase(record->objects);
  registry.byHandle.erase(record);
}

DocHandle HandleOf(const DocumentRecord* record) {
  return reinterpret_cast<DocHandle>(const_cast<DocumentRecord*>(record));
}

DocumentRecord& RecordOf(DocHandle doc) {
  const auto place = TheRegistry().byHandle.find(doc);
  if (place == TheRegistry().byHandle.end()) Fail(kErrorBadParameter, "the document is not open");
  return *place->second;
}

PageRecord& RecordOf(PageHandle page) {
  const auto place = TheRegistry().pages.find(page);
  if (place == TheRegistry().pages.end()) Fail(kErrorBadParameter, "the page is not acquired");
  if (place->second->number == kNoPage) Fail(kErrorBadParameter, "the page was deleted");
  return *place->second;
}

void RenumberPages(DocumentRecord* doc) {
  for (const auto& [handle, page] : TheRegistry().pages) {
    if (page->doc != doc || page->number == kNoPage) continue;
    page->number = FindPage(&doc->pageTree, page->dict).value_or(kNoPage);
  }
}

DocumentRecord* RecordOfObjects(ObjectDoc objects) {
  const auto place = TheRegistry().byObjects.find(objects);
  return place == TheRegistry().byObjects.end() ? nullptr : place->second;
}

DocumentRecord* RecordOfObject(ObjectHandle object) {
  return RecordOfObjects(objects::DocumentOf(object));
}

std::vector<DocHandle> OpenDocuments() {
  std::vector<DocHandle> documents;
  for (const DocumentRecord* record : TheRegistry().order) documents.push_back(HandleOf(record));
  std::reverse(documents.begin(), documents.end());
  return documents;
}

RecordPool<ActionRecord>& ActionPool(ObjectHandle object) {
  DocumentRecord* record = RecordOfObject(object);
  return record != nullptr ? record->actions : TheRegistry().looseActions;
}

RecordPool<FileSpecRecord>& FileSpecPool(ObjectHandle object) {
  DocumentRecord* record = RecordOfObject(object);
  return record != nullptr ? record->fileSpecs : TheRegistry().looseFileSpecs;
}

PageHandle AcquirePage(DocHandle doc, std::uint32_t number) {
  DocumentRecord& record = RecordOf(doc);
  if (!ReachPage(&record.pageTree, number)) {
    Fail(kErrorBadParameter, "the document has no page " + std::to_string(number + 1));
  }
  auto page =
      std::make_unique<PageRecord>(PageRecord{&record, number, record.pageTree.pages[number].dict});
  PageRecord* place = page.get();
  TheRegistry().pages.emplace(place, std::move(page));
  return reinterpret_cast<PageHandle>(place);
}

void ReleasePage(PageHandle page) {
  if (TheRegistry().pages.erase(page) == 0) {
    Fail(kErrorBadParameter, "a page was released that is not acquired");
  }
}

}  // namespace quillon::document

namespace quillon {

std::size_t AcquiredPageCount() { return document::TheRegistry().pages.size(); }

}  // namespace quillon
