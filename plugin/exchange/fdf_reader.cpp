#include "plugin/exchange/fdf_reader.h"

#include <algorithm>
#include <cstring>

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_apply.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kFileIdSize = 133;
constexpr std::uint32_t kErrorTextSize = 133;
constexpr std::uint32_t kPlainText = 76;

// Identifiers are compared over the shorter one, and no further than a zero byte.
bool IdMatches(ObjectHandle id, DocHandle doc, std::uint16_t index) {
  char ofDocument[kFileIdSize];
  const std::uint32_t length = Document->GetFileID(doc, index, ofDocument, sizeof ofDocument);
  if (!IsKind(id, ObjectKind::kString)) return false;
  std::uint32_t idLength = 0;
  const char* bytes = Objects->StringValue(id, &idLength);
  return std::strncmp(bytes, ofDocument, std::min(length, idLength)) == 0;
}

}  // namespace

bool FileIsFdf(PathHandle path) {
  FileHandle opened = nullptr;
  if (Support->OpenFile(path, quillon::kOpenRead, &opened) != quillon::kErrorNone) return false;
  const OwnedFile file(opened);
  const std::size_t length = std::strlen(kFdfHeader);
  char start[16];
  return Support->ReadFile(opened, start, static_cast<std::uint32_t>(length)) == length &&
         std::memcmp(start, kFdfHeader, length) == 0;
}

ObjectDoc OpenFdf(PathHandle path) {
  quillon::OpenDocumentParams params{};
  params.size = sizeof params;
  params.mode = 1;
  params.path = path;
  params.header = kFdfHeader;
  return Objects->OpenDocument(&params);
}

ObjectHandle FdfDictOf(ObjectDoc fdf) {
  const ObjectHandle root = Objects->DocRoot(fdf);
  const bool hasRoot = IsKind(root, ObjectKind::kDict);
  const ObjectHandle dict = hasRoot ? Objects->DictGet(root, key::FDF) : kNullObject;
  if (!IsKind(dict, ObjectKind::kDict)) Raise(ownErrors.invalidFdf);
  return dict;
}

bool FdfIsFor(ObjectHandle fdfDict, DocHandle doc) {
  const ObjectHandle ids = Objects->DictGet(fdfDict, key::ID);
  if (!IsKind(ids, ObjectKind::kArray)) return true;
  return IdMatches(Objects->ArrayGet(ids, 0), doc, 0) &&
         IdMatches(Objects->ArrayGet(ids, 1), doc, 1);
}

void ShowFdfFailure(FailureCode failure) {
  char text[kErrorTextSize];
  Support->ErrorText(failure, text, sizeof text);
  char* const mark = failure == quillon::kErrorBadHeader ? std::strstr(text, "%PDF") : nullptr;
  if (mark != nullptr) mark[1] = 'F';
  ShowMessage(MB_ICONEXCLAMATION, MB_OK, kPlainText, text);
}

void ImportFDFFile(DocView view, PathHandle path) {
  const OwnedPath owned(path);
  const FailureCode failure = CatchFailure([&] {
    const OwnedFdf fdf(OpenFdf(path));
    CommitEditInProgress(view);
    ImportFDF(Viewer->DocOf(view), fdf.doc);
  });
  if (failure == quillon::kErrorNone) return;
  if (failure != quillon::kErrorBadHeader) Raise(failure);
  ShowFdfFailure(failure);
}

}  // namespace quillform
