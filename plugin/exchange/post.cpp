#include "plugin/exchange/post.h"

#include <algorithm>
#include <cstdio>

#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"

namespace quillform {

namespace {

constexpr std::uint32_t kPieceSize = 1025;

OwnedFile OpenTarget(DocView view, ActionHandle action) {
  const ObjectHandle target = Objects->DictGet(Document->ActionDict(action), key::FileSpec);
  const quillon::FileSpecHandle spec = Document->FileSpecFromObject(target);
  if (spec == nullptr) Raise(ownErrors.openUrlFailed);
  const OwnedPath base(AcquireDocumentPath(Viewer->DocOf(view)));
  const OwnedPath url(Document->FileSpecAcquirePath(spec, base.get()));
  FileHandle opened = nullptr;
  if (url == nullptr || Support->OpenFile(url.get(), quillon::kOpenWrite, &opened) != 0) {
    Raise(ownErrors.openUrlFailed);
  }
  return OwnedFile(opened);
}

void ReadPiece(FileHandle file, char* bytes, std::uint32_t size) {
  if (Support->ReadFile(file, bytes, size) != size) Raise(quillon::kErrorReadFile);
}

void WritePiece(FileHandle file, const char* bytes, std::uint32_t size) {
  if (Support->WriteFile(file, bytes, size) != size) Raise(quillon::kErrorWriteFile);
}

// The header and as much of the body as fits behind it go out together, so that a short form is one
// write.
void WriteEverything(FileHandle file, const char* contentType, FileHandle target) {
  std::uint32_t left = Support->FileSize(file);
  char piece[kPieceSize];
  const int header =
      std::snprintf(piece, sizeof piece, "%s%s\n%s%ld\n\n", "Content-Type: ", contentType,
                    "Content-Length: ", static_cast<long>(left));
  const auto used = std::min(static_cast<std::uint32_t>(header), kPieceSize - 1);
  std::uint32_t size = std::min(left, kPieceSize - used);
  ReadPiece(file, piece + used, size);
  WritePiece(target, piece, used + size);
  for (left -= size; left > 0; left -= size) {
    size = std::min(left, kPieceSize);
    ReadPiece(file, piece, size);
    WritePiece(target, piece, size);
  }
}

}  // namespace

void PostFormData(DocView view, ActionHandle action, FileHandle file, const char* contentType) {
  OwnedFile target = OpenTarget(view, action);
  WriteEverything(file, contentType, target.get());
  const FailureCode failure = Support->CloseFile(target.release());
  if (failure != quillon::kErrorNone) Raise(failure);
}

}  // namespace quillform
