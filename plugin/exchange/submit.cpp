#include "plugin/exchange/submit.h"

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/exchange/post.h"
#include "plugin/exchange/url_encoding.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr const char* kUrlEncodedType = "application/x-www-form-urlencoded";
constexpr const char* kFdfType = "application/vnd.fdf";

constexpr std::uint32_t kNotInBrowser = 82;
constexpr std::uint32_t kPlainText = 76;
constexpr std::uint32_t kErrorTextSize = 133;
constexpr std::uint16_t kBusyCursor = 0x458;

// The busy cursor for its own lifetime.
struct BusyCursor {
  BusyCursor() : saved(Viewer->CurrentCursor()) {
    DropFailures([] { Viewer->SetCursor(Viewer->GetCursor(kBusyCursor)); });
  }
  ~BusyCursor() {
    DropFailures([this] { Viewer->SetCursor(saved); });
  }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;

  quillon::CursorHandle saved;
};

OwnedFile WritePairs(DocHandle doc, const SubmitRequest& request, PathHandle path) {
  FileHandle opened = nullptr;
  if (Support->OpenFile(path, quillon::kOpenReplace, &opened) != quillon::kErrorNone) {
    Raise(quillon::kErrorOpenFile);
  }
  OwnedFile file(opened);
  const OwnedStream stream(Support->OpenFileStream(opened));
  WriteURLEncoded(doc, request.fields, request.inclusion, request.includeEmpty, stream.get());
  return file;
}

OwnedFile WriteFormData(DocHandle doc, const SubmitRequest& request, PathHandle path) {
  const ObjectDoc fdf = CreateFDFFromForm(doc, request.fields, request.inclusion,
                                          request.includeEmpty, false, true, nullptr);
  return OwnedFile(WriteFDF(fdf, path));
}

void Submit(ActionHandle action, DocView view, PathHandle path) {
  const SubmitRequest request = ReadSubmitRequest(action);
  CommitEditInProgress(view);
  const DocHandle doc = Viewer->DocOf(view);
  const OwnedFile file =
      request.urlEncoded ? WritePairs(doc, request, path) : WriteFormData(doc, request, path);
  Support->SetFilePosition(file.get(), 0);
  PostFormData(view, action, file.get(), request.urlEncoded ? kUrlEncodedType : kFdfType);
}

void ShowFailure(FailureCode failure) {
  // Its own message has told of it, with the field's name.
  if (failure == ownErrors.requiredFieldEmpty) return;
  char text[kErrorTextSize];
  Support->ErrorText(failure, text, sizeof text);
  ShowMessage(MB_ICONEXCLAMATION, MB_OK, kPlainText, text);
}

}  // namespace

SubmitRequest ReadSubmitRequest(ActionHandle action) {
  const ObjectHandle dict = Document->ActionDict(action);
  const ObjectHandle flagsEntry = Objects->DictGet(dict, key::Flags);
  const bool hasFlags = IsKind(flagsEntry, ObjectKind::kInteger);
  const std::int32_t flags = hasFlags ? Objects->IntegerValue(flagsEntry) : 0;
  const bool exclusion = !Objects->DictKnown(dict, key::Fields) || (flags & kExcludeListed) != 0;
  return {Objects->DictGet(dict, key::Fields), !exclusion, (flags & kIncludeEmpty) != 0,
          (flags & kUrlEncoded) != 0};
}

void PerformSubmitForm(ActionHandle action, DocView view) {
  if (view == nullptr || Viewer->DocIsExternal(view) == 0) {
    ShowMessage(MB_ICONEXCLAMATION, MB_OK, kNotInBrowser);
    return;
  }
  const TemporaryFile file;
  const BusyCursor busy;
  const FailureCode failure = CatchFailure([&] { Submit(action, view, file.path.get()); });
  if (failure != quillon::kErrorNone) ShowFailure(failure);
}

}  // namespace quillform
