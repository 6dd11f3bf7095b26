#include "plugin/exchange/open_fdf.h"

#include <string>

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/file_choice.h"
#include "plugin/exchange/path_text.h"
#include "plugin/exchange/pending_imports.h"
#include "plugin/host/owned_files.h"
#include "plugin/host/win32.h"
#include "plugin/model/keys.h"
#include "plugin/resources/error_texts.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kNoFormNamed = 79;
constexpr std::uint32_t kFormNotFound = 83;
constexpr std::uint32_t kOtherVersion = 84;

Callback replacement = nullptr;

// Whether a form is being opened for an FDF. An FDF is no form, so one that names another (or
// itself) ends there.
bool openingForm = false;

struct OpeningForm {
  OpeningForm() { openingForm = true; }
  ~OpeningForm() { openingForm = false; }
  OpeningForm(const OpeningForm&) = delete;
  OpeningForm& operator=(const OpeningForm&) = delete;
};

// A view that was opened for the form, closed unless it turned out to be the right one.
struct OpenedForm {
  OpenedForm() = default;
  ~OpenedForm() { Close(); }
  OpenedForm(const OpenedForm&) = delete;
  OpenedForm& operator=(const OpenedForm&) = delete;

  DocView Release() { return std::exchange(view, nullptr); }
  void Close() {
    if (view != nullptr) DropFailures([this] { Viewer->CloseView(Release()); });
  }

  DocView view = nullptr;
};

bool IsUrl(const std::string& text) {
  return text.rfind("http:", 0) == 0 || text.rfind("https:", 0) == 0;
}

bool Exists(PathHandle path) {
  FileHandle opened = nullptr;
  const bool exists = Support->OpenFile(path, quillon::kOpenRead, &opened) == quillon::kErrorNone;
  const OwnedFile file(opened);
  return exists;
}

// The form's path as the FDF tells it; null when there is no such file.
PathHandle FindForm(ObjectHandle spec, const std::string& text, PathHandle fdfPath) {
  quillon::FileSystemHandle fileSystem = Support->FileSystemOf(fdfPath);
  if (IsKind(spec, ObjectKind::kDict)) {
    const ObjectHandle name = Objects->DictGet(spec, key::FS);
    if (IsKind(name, ObjectKind::kName)) {
      fileSystem = Support->FileSystemByName(Objects->NameValue(name));
      if (fileSystem == nullptr) return nullptr;
    }
  }
  OwnedPath path(Support->NewPath(fileSystem, text.c_str(), fdfPath));
  return path != nullptr && Exists(path.get()) ? path.release() : nullptr;
}

// A path of the user's choice, after a question; null for none.
PathHandle AskForForm(std::uint32_t question, const std::string& name) {
  const int answer = ShowMessage(MB_ICONEXCLAMATION, MB_YESNO, question, name.c_str());
  return answer == IDYES ? AskForFile(kChooseForm) : nullptr;
}

// The FDF that is opened, with what it says of its form.
struct FdfToOpen {
  PathHandle path;
  OwnedFdf fdf;
  ObjectHandle dict;
  ObjectHandle formSpec;
  std::string formText;
};

// Fills in a view that is open already. The file is done with when nothing but values was in it.
void ImportIntoOpenForm(FdfToOpen* data, DocView view) {
  CommitEditInProgress(view);
  const DocHandle doc = Viewer->DocOf(view);
  const bool valuesOnly = ImportFDF(doc, data->fdf.doc);
  data->fdf.Close();  // an open file cannot be deleted everywhere
  if (valuesOnly) {
    Support->DeleteFile(data->path);
  } else {
    AddPendingImport(doc, nullptr, Support->CopyPath(data->path), false, FileOwner::kUser);
  }
}

struct ViewSearch {
  const std::string* address;
  DocView found;
};

Boolean CompareAddress(DocView view, void* data) {
  auto& search = *static_cast<ViewSearch*>(data);
  const std::string address = DocumentPathText(Viewer->DocOf(view));
  if (lstrcmpA(address.c_str(), search.address->c_str()) != 0) return 1;
  search.found = view;
  return 0;
}

DocView OpenUrl(FdfToOpen* data) {
  if (Link == nullptr) return nullptr;
  ViewSearch search{&data->formText, nullptr};
  Viewer->EnumDocViews(Wrap<&CompareAddress>, &search);
  if (search.found != nullptr) {
    ImportIntoOpenForm(data, search.found);
    return search.found;
  }
  AddPendingImport(nullptr, data->formText.c_str(), Support->CopyPath(data->path), false,
                   FileOwner::kUser);
  data->fdf.Close();  // the form may open at once and use the file up
  const FailureCode failure = Link->OpenURL(nullptr, data->formText.c_str(), 0);
  if (failure != quillon::kErrorNone) Raise(failure);
  return nullptr;
}

DocView OpenForm(PathHandle path) {
  const OpeningForm opening;
  const DocView view = Viewer->OpenDocument(path, Support->FileSystemOf(path), nullptr, 0);
  if (view == nullptr) Raise(quillon::kErrorOpenDocument);
  return view;
}

DocView OpenLocalForm(const FdfToOpen& data) {
  if (data.formText.empty()) Raise(ownErrors.invalidFdf);
  OwnedPath path(FindForm(data.formSpec, data.formText, data.path));
  if (path == nullptr) {
    // Without a "/" the whole text is the name.
    const std::string name = data.formText.substr(data.formText.rfind('/') + 1);
    path.reset(AskForForm(kFormNotFound, name));
  }
  OpenedForm form;
  while (path != nullptr) {
    form.view = OpenForm(path.get());
    const DocHandle doc = Viewer->DocOf(form.view);
    if (FdfIsFor(data.dict, doc)) {
      CommitEditInProgress(form.view);
      ImportFDF(doc, data.fdf.doc);
      return form.Release();
    }
    const std::string name = DocumentPathText(doc);
    form.Close();
    path.reset(AskForForm(kOtherVersion, name));
  }
  return nullptr;
}

DocView OpenFormOf(PathHandle path) {
  FdfToOpen data{path, OwnedFdf(OpenFdf(path)), kNullObject, kNullObject, {}};
  data.dict = FdfDictOf(data.fdf.doc);
  data.formSpec = Objects->DictGet(data.dict, key::FileSpec);
  if (IsNull(data.formSpec)) {
    ShowMessage(MB_ICONEXCLAMATION, MB_OK, kNoFormNamed);
    return nullptr;
  }
  data.formText = TextOfFileSpec(data.formSpec);
  return IsUrl(data.formText) ? OpenUrl(&data) : OpenLocalForm(data);
}

using OpenDocumentRoutine = decltype(quillon::ViewerTable::OpenDocument);

DocView OpenAsBefore(PathHandle path, quillon::FileSystemHandle fileSystem, const char* title,
                     std::uint32_t flags) {
  const auto table = reinterpret_cast<quillon::TableHandle>(Viewer);
  const auto before = reinterpret_cast<OpenDocumentRoutine>(
      Support->CallReplaced(table, quillon::kViewerOpenDocumentSlot, replacement));
  return before != nullptr ? before(path, fileSystem, title, flags) : nullptr;
}

}  // namespace

DocView OpenFileWithFDF(PathHandle path, quillon::FileSystemHandle fileSystem, const char* title,
                        std::uint32_t flags) {
  if (path == nullptr || !FileIsFdf(path)) return OpenAsBefore(path, fileSystem, title, flags);
  if (openingForm) return nullptr;
  DocView view = nullptr;
  const FailureCode failure = CatchFailure([&] { view = OpenFormOf(path); });
  if (failure == quillon::kErrorNone) return view;
  ShowFdfFailure(failure);
  return nullptr;
}

void ReplaceOpenDocument() {
  replacement = MakeHostCallback<&OpenFileWithFDF>();
  Support->SetSlot(reinterpret_cast<quillon::TableHandle>(Viewer), quillon::kViewerOpenDocumentSlot,
                   replacement, 0);
}

}  // namespace quillform
