#include "plugin/exchange/pending_imports.h"

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/host/win32.h"
#include "plugin/model/form_hooks.h"

namespace quillform {

namespace {

// A file that is deleted with its owner, unless it is released. The list itself owns plain handles,
// so that nothing calls the host when the process ends without an unload.
struct DeleteAndRelease {
  void operator()(PathHandle path) const {
    DropFailures([path] { Support->DeleteFile(path); });
    ReleasePath{}(path);
  }
};
using WaitingFile = std::unique_ptr<std::remove_pointer_t<PathHandle>, DeleteAndRelease>;

struct PendingImport {
  DocHandle doc;  // while the form is open
  bool hasAddress;
  std::string address;
  std::vector<PathHandle> files;
};

// Newest first. A list, since applying a file may lead to more of them.
std::list<PendingImport>& PendingList() {
  static std::list<PendingImport> list;
  return list;
}

PendingImport* PendingOf(DocHandle doc) {
  for (PendingImport& pending : PendingList()) {
    if (pending.doc == doc) return &pending;
  }
  return nullptr;
}

// True when the file is to be applied again.
bool ApplyFile(DocView view, PathHandle file) {
  bool valuesOnly = true;
  DropFailures([&] {
    const OwnedFdf fdf(OpenFdf(file));
    const DocHandle doc = Viewer->DocOf(view);
    if (!FdfIsFor(FdfDictOf(fdf.doc), doc)) return;
    CommitEditInProgress(view);
    valuesOnly = ImportFDF(doc, fdf.doc);
  });
  return !valuesOnly;
}

void Apply(PendingImport* pending, DocView view) {
  const std::vector<PathHandle> files = std::exchange(pending->files, {});
  std::vector<PathHandle> kept;
  for (const PathHandle path : files) {
    WaitingFile file(path);
    if (ApplyFile(view, path)) kept.push_back(file.release());
  }
  // Those that were added meanwhile are newer.
  pending->files.insert(pending->files.begin(), kept.begin(), kept.end());
}

WaitingFile WriteValues(DocHandle doc) {
  WaitingFile file(Support->TempPath(Support->FileSystemOf(nullptr)));
  const ObjectDoc fdf = CreateFDFFromForm(doc, kNullObject, true, false, true, false, nullptr);
  const FailureCode failure = Support->CloseFile(WriteFDF(fdf, file.get()));
  if (failure != quillon::kErrorNone) Raise(failure);
  return file;
}

bool IsModified(DocHandle doc) { return (Document->GetFlags(doc) & quillon::kDocModified) != 0; }

// The handle may come to stand for another document.
void Detach(DocHandle doc) {
  for (PendingImport& pending : PendingList()) {
    if (pending.doc == doc) pending.doc = nullptr;
  }
}

}  // namespace

void AddPendingImport(DocHandle doc, const char* address, PathHandle file, bool detach) {
  WaitingFile owned(file);
  PendingImport* const known = doc != nullptr && file != nullptr ? PendingOf(doc) : nullptr;
  if (known != nullptr) {
    known->files.push_back(file);
    static_cast<void>(owned.release());
    if (detach) known->doc = nullptr;
    return;
  }
  PendingImport pending{doc, address != nullptr, address != nullptr ? address : "", {}};
  if (file != nullptr) pending.files.push_back(file);
  PendingList().push_front(std::move(pending));
  static_cast<void>(owned.release());
}

void RunPendingImports(DocView view) {
  if (Viewer->DocIsExternal(view) == 0) return;
  const DocHandle doc = Viewer->DocOf(view);
  const std::string address = DocumentPathText(doc);
  std::vector<PendingImport*> waiting;
  for (PendingImport& pending : PendingList()) {
    if (pending.hasAddress && lstrcmpA(pending.address.c_str(), address.c_str()) == 0) {
      waiting.push_back(&pending);
    }
  }
  for (PendingImport* pending : waiting) {
    pending->doc = doc;
    Apply(pending, view);
  }
  // For the values of this view to wait in, once it closes.
  if (waiting.empty()) AddPendingImport(doc, address.c_str(), nullptr, false);
}

void KeepValuesOfClosing(DocView view) {
  if (Viewer->DocIsExternal(view) == 0) return;
  const DocHandle doc = Viewer->DocOf(view);
  if (IsModified(doc)) {
    DropFailures([&] {
      CommitEditInProgress(view);
      const std::string address = DocumentPathText(doc);
      AddPendingImport(doc, address.c_str(), WriteValues(doc).release(), true);
    });
  }
  Detach(doc);
}

void ReleasePendingImports() {
  for (const PendingImport& pending : PendingList()) {
    for (const PathHandle path : pending.files) WaitingFile{path};
  }
  PendingList().clear();
}

void ConnectPendingImports() { exchangeHooks = {&RunPendingImports, &KeepValuesOfClosing}; }

}  // namespace quillform
