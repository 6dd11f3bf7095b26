// What the document room keeps for each open document, and the registry of them.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "quillon/document/annot_index.h"
#include "quillon/document/page_tree.h"
#include "quillon/objects/pdf_file.h"
#include "sdk/types.h"

namespace quillon::document {

struct DocumentRecord;

// An action dictionary or destination that was handed out.
struct ActionRecord {
  ObjectHandle object;
};

struct FileSpecRecord {
  ObjectHandle object;
};

// What was handed out, by the words of its object: the same object gives the same handle.
template <typename Record>
using RecordPool = std::map<std::pair<std::uint32_t, std::uint32_t>, std::unique_ptr<Record>>;

struct DocumentRecord {
  explicit DocumentRecord(ObjectDoc doc) : objects(doc), pageTree(doc) {}

  ObjectDoc objects;
  std::string path;                          // UTF-8; empty for a document without a file
  FileHandle file = nullptr;                 // opened when first asked for
  std::uint32_t flags = 0;                   // those set by hand
  std::optional<std::uint32_t> permissions;  // when they were given in another way than the file's
  PageTree pageTree;
  AnnotMap annots;
  RecordPool<ActionRecord> actions;
  RecordPool<FileSpecRecord> fileSpecs;
};

// The number of an acquired page that was deleted.
inline constexpr std::uint32_t kNoPage = 0xFFFFFFFF;

// A page that was acquired.
struct PageRecord {
  DocumentRecord* doc;
  std::uint32_t number;
  ObjectHandle dict;
};

DocumentRecord& AddDocument(ObjectDoc objects);
void RemoveDocument(DocumentRecord* record);

DocHandle HandleOf(const DocumentRecord* record);

// Throws kErrorBadParameter for a handle that is not open, and for a page that was deleted.
DocumentRecord& RecordOf(DocHandle doc);
PageRecord& RecordOf(PageHandle page);

// Gives the pages that were acquired the numbers that they have in the tree now.
void RenumberPages(DocumentRecord* doc);

// The record of the document that an object belongs to; null when none does.
DocumentRecord* RecordOfObject(ObjectHandle object);
DocumentRecord* RecordOfObjects(ObjectDoc objects);

// Newest first.
std::vector<DocHandle> OpenDocuments();

// The pool that an object's handles live in: its document's, or one for the life of the process for
// names, which belong to no document.
RecordPool<ActionRecord>& ActionPool(ObjectHandle object);
RecordPool<FileSpecRecord>& FileSpecPool(ObjectHandle object);

template <typename Record>
Record* PooledRecord(RecordPool<Record>* pool, ObjectHandle object) {
  std::unique_ptr<Record>& place = (*pool)[{object.first, object.second}];
  if (!place) place = std::make_unique<Record>(Record{object});
  return place.get();
}

}  // namespace quillon::document
