#include "plugin/exchange/import_action.h"

#include <string>

#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/file_choice.h"
#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/host/win32.h"
#include "plugin/model/keys.h"
#include "plugin/resources/messages.h"

namespace quillform {

namespace {

constexpr std::uint32_t kFdfNotFound = 85;
constexpr DWORD kPathSize = 1025;

ObjectHandle FileOfAction(ActionHandle action) {
  if (Document->ActionType(action) != key::ImportData) return kNullObject;
  return Objects->DictGet(Document->ActionDict(action), key::FileSpec);
}

PathHandle FindBesideDocument(ObjectHandle file, DocView view) {
  const quillon::FileSpecHandle spec = Document->FileSpecFromObject(file);
  if (spec == nullptr) return nullptr;
  const OwnedPath document(AcquireDocumentPath(Viewer->DocOf(view)));
  return Document->FileSpecAcquirePath(spec, document.get());
}

PathHandle FindBySearchPath(const std::string& name) {
  if (name.empty()) return nullptr;
  char path[kPathSize];
  const DWORD length = SearchPathA(nullptr, name.c_str(), nullptr, sizeof path, path, nullptr);
  return length != 0 && length < sizeof path ? Support->PathFromPlatform(path) : nullptr;
}

PathHandle FindFile(ObjectHandle file, DocView view) {
  if (Viewer->DocIsExternal(view) == 0) {
    if (const PathHandle path = FindBesideDocument(file, view)) return path;
  }
  const std::string text = TextOfFileSpec(file);
  const std::string name = text.substr(text.rfind('/') + 1);
  if (const PathHandle path = FindBySearchPath(name)) return path;
  const int answer = ShowMessage(MB_ICONEXCLAMATION, MB_YESNO, kFdfNotFound, name.c_str());
  return answer == IDYES ? AskForFile(kChooseFdf) : nullptr;
}

void SetFileOfAction(ActionHandle action, DocView view, PathHandle path) {
  const DocHandle doc = Viewer->DocOf(view);
  const OwnedPath document(AcquireDocumentPath(doc));
  const quillon::FileSpecHandle spec = Document->FileSpecFromPath(doc, path, document.get());
  Objects->DictPut(Document->ActionDict(action), key::FileSpec, Document->FileSpecObject(spec));
}

}  // namespace

void PerformImportData(ActionHandle action, DocView view) {
  const ObjectHandle file = FileOfAction(action);
  if (view == nullptr || IsNull(file)) return;
  if (const PathHandle path = FindFile(file, view)) ImportFDFFile(view, path);
}

void EditImportData(ActionHandle action, DocView view) {
  for (;;) {
    const OwnedPath path(AskForFile(kChooseFdf));
    if (path == nullptr) return;
    if (FileIsFdf(path.get())) {
      SetFileOfAction(action, view, path.get());
      return;
    }
    ShowFdfFailure(quillon::kErrorBadHeader);
  }
}

}  // namespace quillform
