#include "plugin/exchange/pending_imports.h"

#include <list>
#include <new>
#include <optional>
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

// The list owns plain handles, so that nothing calls the host when the process ends without an
// unload.
struct WaitingFile {
  PathHandle path;
  FileOwner owner;
};

struct PendingImport {
  DocHandle doc;  // while the form is open
  std::optional<std::string> address;
  std::vector<WaitingFile> files;
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

void Delete(PathHandle path) {
  DropFailures([path] { Support->DeleteFile(path); });
}

// For a file that was never used.
void LetGo(const WaitingFile& file) {
  const OwnedPath path(file.path);
  if (path != nullptr && file.owner == FileOwner::kPlugIn) Delete(file.path);
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
  const std::vector<WaitingFile> files = std::exchange(pending->files, {});
  std::vector<WaitingFile> kept;
  for (const WaitingFile& file : files) {
    if (ApplyFile(view, file.path)) {
      kept.push_back(file);
    } else {
      const OwnedPath path(file.path);
      Delete(file.path);
    }
  }
  // Those that were added meanwhile are newer.
  pending->files.insert(pending->files.begin(), kept.begin(), kept.end());
}

PathHandle WriteValues(DocHandle doc) {
  TemporaryFile file;
  const ObjectDoc fdf = CreateFDFFromForm(doc, kNullObject, true, false, true, false, nullptr);
  const FailureCode failure = Support->CloseFile(WriteFDF(fdf, file.path.get()));
  if (failure != quillon::kErrorNone) Raise(failure);
  return file.path.release();
}

bool IsModified(DocHandle doc) { return (Document->GetFlags(doc) & quillon::kDocModified) != 0; }

// The handle may come to stand for another document.
void Detach(DocHandle doc) {
  for (PendingImport& pending : PendingList()) {
    if (pending.doc == doc) pending.doc = nullptr;
  }
}

}  // namespace

void AddPendingImport(DocHandle doc, const char* address, PathHandle file, bool detach,
                      FileOwner owner) {
  const WaitingFile waiting{file, owner};
  try {
    PendingImport* const known = doc != nullptr && file != nullptr ? PendingOf(doc) : nullptr;
    if (known != nullptr) {
      known->files.push_back(waiting);
      if (detach) known->doc = nullptr;
      return;
    }
    PendingImport pending{doc, std::nullopt, {}};
    if (address != nullptr) pending.address = address;
    if (file != nullptr) pending.files.push_back(waiting);
    PendingList().push_front(std::move(pending));
  } catch (const std::bad_alloc&) {
    LetGo(waiting);
    throw;
  }
}

void RunPendingImports(DocView view) {
  if (Viewer->DocIsExternal(view) == 0) return;
  const DocHandle doc = Viewer->DocOf(view);
  const std::string address = DocumentPathText(doc);
  std::vector<PendingImport*> waiting;
  for (PendingImport& pending : PendingList()) {
    if (pending.address && lstrcmpA(pending.address->c_str(), address.c_str()) == 0) {
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
  const DocHandle doc = Viewer->DocOf(view);
  if (Viewer->DocIsExternal(view) != 0 && IsModified(doc)) {
    DropFailures([&] {
      CommitEditInProgress(view);
      const std::string address = DocumentPathText(doc);
      AddPendingImport(doc, address.c_str(), WriteValues(doc), true);
    });
  }
  Detach(doc);
}

void ReleasePendingImports() {
  for (const PendingImport& pending : PendingList()) {
    for (const WaitingFile& file : pending.files) LetGo(file);
  }
  PendingList().clear();
}

void ConnectPendingImports() { exchangeHooks = {&RunPendingImports, &KeepValuesOfClosing}; }

}  // namespace quillform
