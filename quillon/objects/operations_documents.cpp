// Objects: documents of objects, and the table itself.
#include <algorithm>
#include <array>

#include "quillon/objects/load.h"
#include "quillon/objects/new_document.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/objects/writer.h"
#include "quillon/support/operations.h"

namespace quillon::objects {
namespace {

struct OpenedFile {
  FileHandle handle = nullptr;
  OpenedFile() = default;
  ~OpenedFile() {
    if (handle != nullptr) support::CloseFile(handle);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;
};

// Through the path's own file system, which need not be the disk.
std::string ReadWholeFile(PathHandle path) {
  OpenedFile file;
  const FailureCode code = support::OpenFile(path, kOpenRead, &file.handle);
  if (code != kErrorNone) Fail(code, "The file cannot be opened.");
  std::array<char, 16384> piece;
  std::string bytes;
  while (const std::uint32_t count = support::ReadFile(file.handle, piece.data(), piece.size())) {
    bytes.append(piece.data(), count);
  }
  return bytes;
}

}  // namespace

ObjectDoc NewDocument() { return NewFdf(); }

ObjectDoc OpenDocument(const OpenDocumentParams* params) {
  if (params == nullptr || params->path == nullptr || params->header == nullptr) {
    Fail(kErrorBadParameter, "Nothing is given to open.");
  }
  OpenOptions options;
  options.header = params->header;
  return OpenPdfBytes(ReadWholeFile(params->path), options, nullptr);
}

ObjectHandle DocRoot(ObjectDoc handle) {
  Document& doc = DocumentOfHandle(handle);
  return HandleOf(doc, EntryValue(doc, doc.trailer, "Root"));
}

void SaveDocument(ObjectDoc handle, FileHandle file, std::uint32_t options,
                  const SaveDocumentParams* params) {
  Document& doc = DocumentOfHandle(handle);
  if (options != kSaveWhole) Fail(kErrorNotOffered, "Only whole documents can be saved.");
  const bool named = params != nullptr && params->header != nullptr;
  Output out;
  out.pass = [file](std::string_view piece) {
    const auto size = static_cast<std::uint32_t>(piece.size());
    if (support::WriteFile(file, piece.data(), size) != size) {
      Fail(kErrorWriteFile, "The file cannot be written. Is the disk full?");
    }
  };
  WriteDocument(doc, named ? params->header : doc.header, out);
}

void CloseDocument(ObjectDoc doc) { ClosePdf(doc); }

#define QUILLON_FILL_OBJECTS_SLOT(slot, Return, Name, Params) \
  QUILLON_FILL_SLOT(::quillon::objects, *table, Name);

void FillTable(ObjectsTable* table) {
  table->slotCount = kObjectsTableSlots;
  QUILLON_OBJECTS_TABLE(QUILLON_FILL_OBJECTS_SLOT)
}

}  // namespace quillon::objects
