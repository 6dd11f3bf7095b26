// Documents: enumeration, identity, flags and permissions.
#include <algorithm>
#include <cstring>

#include "quillon/core/guard.h"
#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/notify.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/document/permissions.h"
#include "quillon/objects/operations.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"

namespace quillon::document {
namespace {

bool IsOpen(DocHandle doc) {
  const std::vector<DocHandle> open = OpenDocuments();
  return std::find(open.begin(), open.end(), doc) != open.end();
}

}  // namespace

void EnumDocuments(DocEnumProc proc, void* clientData) {
  if (proc == nullptr) Fail(kErrorBadParameter, "EnumDocuments needs a routine");
  for (const DocHandle doc : OpenDocuments()) {
    if (!IsOpen(doc)) continue;
    if (CallGuarded([&] { return proc(doc, clientData); }) == 0) return;
  }
}

ObjectDoc ObjectDocOf(DocHandle doc) { return doc == nullptr ? nullptr : RecordOf(doc).objects; }

DocHandle DocOfObjectDoc(ObjectDoc doc) {
  const DocumentRecord* record = RecordOfObjects(doc);
  return record == nullptr ? nullptr : HandleOf(record);
}

FileHandle FileOf(DocHandle doc) {
  DocumentRecord& record = RecordOf(doc);
  if (record.file == nullptr && !record.path.empty()) {
    const PathHandle path = PathOf(record.path);
    // A file that is gone by now is the same to the caller as none.
    if (support::OpenFile(path, kOpenRead, &record.file) != kErrorNone) record.file = nullptr;
    support::ReleasePath(path);
  }
  return record.file;
}

std::uint32_t GetFileID(DocHandle doc, std::uint16_t index, char* buffer, std::uint32_t size) {
  const ObjectHandle trailer = TrailerOf(RecordOf(doc).objects);
  if (buffer == nullptr || size == 0) return 0;
  buffer[0] = '\0';
  const ObjectHandle identifiers = EntryOf(trailer, Names().ID);
  if (index > 1 || !IsKind(identifiers, ObjectKind::kArray)) return 0;
  const std::string bytes = BytesOf(objects::ArrayGet(identifiers, index));
  const auto length = std::min(static_cast<std::uint32_t>(bytes.size()), size - 1);
  std::memcpy(buffer, bytes.data(), length);
  buffer[length] = '\0';
  return length;
}

std::uint32_t GetFlags(DocHandle doc) {
  const DocumentRecord& record = RecordOf(doc);
  return record.flags | (PdfModified(record.objects) ? kDocModified : 0);
}

void SetFlags(DocHandle doc, std::uint32_t flags) { RecordOf(doc).flags |= flags; }

void ClearFlags(DocHandle doc, std::uint32_t flags) {
  DocumentRecord& record = RecordOf(doc);
  record.flags &= ~flags;
  if ((flags & kDocModified) != 0) ClearPdfModified(record.objects);
}

std::uint32_t GetPermissions(DocHandle doc) {
  const DocumentRecord& record = RecordOf(doc);
  if (record.permissions) return *record.permissions;
  const ObjectHandle encryption = EntryOf(TrailerOf(record.objects), Names().Encrypt);
  if (!HasEntries(encryption) || OpenedAsOwner(record.objects)) return kPermitEverything;
  return PermissionsFromP(IntegerOr(EntryOf(encryption, Names().P), -1),
                          IntegerOr(EntryOf(encryption, Names().R), 0));
}

}  // namespace quillon::document

namespace quillon {

std::vector<DocHandle> OpenDocuments() { return document::OpenDocuments(); }

void SetPermissions(DocHandle doc, std::uint32_t permissions) {
  document::RecordOf(doc).permissions = permissions;
  SendPermissionsChanged(doc);
}

}  // namespace quillon
