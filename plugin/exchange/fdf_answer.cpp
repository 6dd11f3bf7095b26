#include "plugin/exchange/fdf_answer.h"

#include <string>

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/path_text.h"
#include "plugin/exchange/pending_imports.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kSubmissionFailed = 87;
constexpr std::uint32_t kShortestFdf = 74;  // no FDF that says anything is shorter

quillon::DataHandlerRecord fdfHandler{};

enum class Outcome { kNothing, kFilledIn, kFormOpened };

void WriteData(PathHandle path, const void* data, std::uint32_t length) {
  FileHandle opened = nullptr;
  if (Support->OpenFile(path, quillon::kOpenReadWrite, &opened) != quillon::kErrorNone) {
    Raise(quillon::kErrorOpenFile);
  }
  OwnedFile file(opened);
  const bool whole = Support->WriteFile(opened, data, length) == length;
  if (Support->CloseFile(file.release()) != quillon::kErrorNone || !whole) {
    Raise(quillon::kErrorWriteFile);
  }
}

// The full text of the path of the form that the data is for, empty when it names none. A name
// without a file system of its own stands for a file where the document came from: a server's data
// does not point into this machine's files.
std::string AddressOfForm(ObjectHandle spec, DocHandle doc) {
  const NewObject copy(Objects->CopyObject(spec, Document->ObjectDocOf(doc)));
  const quillon::FileSpecHandle fileSpec = Document->FileSpecFromObject(copy.handle);
  if (fileSpec == nullptr) Raise(ownErrors.invalidFdf);
  const OwnedPath base(AcquireDocumentPath(doc));
  const bool named = IsKind(spec, ObjectKind::kDict) && Objects->DictKnown(spec, key::FS);
  const std::string text = TextOfFileSpec(spec);
  const OwnedPath path(
      named || base == nullptr
          ? Document->FileSpecAcquirePath(fileSpec, base.get())
          : Support->NewPath(Support->FileSystemOf(base.get()), text.c_str(), base.get()));
  return path != nullptr ? TextOfPath(path.get()) : std::string();
}

// The data goes on waiting for the form, which it is asked to be opened.
void OpenFormFor(TemporaryFile* file, const std::string& address, DocView view) {
  AddPendingImport(nullptr, address.c_str(), file->path.release(), false);
  const FailureCode failure = Link->OpenURL(view, address.c_str(), 0);
  if (failure != quillon::kErrorNone) ShowFdfFailure(failure);
}

Outcome UseData(TemporaryFile* file, DocView view) {
  OwnedFdf fdf(OpenFdf(file->path.get()));
  const ObjectHandle spec = Objects->DictGet(FdfDictOf(fdf.doc), key::FileSpec);
  const DocHandle doc = Viewer->DocOf(view);
  if (!IsNull(spec)) {
    const std::string address = AddressOfForm(spec, doc);
    if (address.empty()) return Outcome::kNothing;
    fdf.Close();
    OpenFormFor(file, address, view);
    return Outcome::kFormOpened;
  }
  const bool valuesOnly = ImportFDF(doc, fdf.doc);
  fdf.Close();
  if (!valuesOnly) AddPendingImport(doc, nullptr, file->path.release(), false);
  return Outcome::kFilledIn;
}

}  // namespace

Boolean FDFDataHandler(const void* data, std::uint32_t length, DocView view) {
  if (length < kShortestFdf || view == nullptr) {
    ShowMessage(MB_ICONEXCLAMATION, MB_OK, kSubmissionFailed);
    return 0;
  }
  Outcome outcome = Outcome::kNothing;
  const FailureCode failure = CatchFailure([&] {
    TemporaryFile file;
    WriteData(file.path.get(), data, length);
    outcome = UseData(&file, view);
  });
  if (failure != quillon::kErrorNone) {
    ShowFdfFailure(failure);
  } else if (outcome == Outcome::kNothing) {
    ShowMessage(MB_ICONEXCLAMATION, MB_OK, kSubmissionFailed);
  }
  return failure == quillon::kErrorNone && outcome != Outcome::kNothing ? 1 : 0;
}

void RegisterFdfDataHandler() {
  fdfHandler.size = sizeof fdfHandler;
  fdfHandler.open = reinterpret_cast<decltype(fdfHandler.open)>(
      MakeHostCallback<&FDFDataHandler, OnFailure::kDrop>());
  Viewer->RegisterDataHandler(Extension, key::FDF, &fdfHandler);
}

}  // namespace quillform
