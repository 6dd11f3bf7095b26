#include "quillon/viewer/open_view.h"

#include <algorithm>

#include "quillon/core/guard.h"
#include "quillon/document/notify.h"
#include "quillon/document/open_document.h"
#include "quillon/document/plugin_failure.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/notify.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_record.h"

namespace quillon {
namespace {

// What the owner of the selection raises must not keep the view from being saved or closed.
void DropSelection(DocView view) {
  try {
    viewer::ClearSelection(view, 0);
  } catch (const HostFailure& failure) {
    ReportPlugInFailure({"clearing the selection", 0, failure.code, failure.what()});
  }
}

DocView ShowDocument(DocHandle doc, bool external) {
  viewer::ViewRecord& record = viewer::AddView(doc);
  record.external = external;
  const DocView view = viewer::HandleOf(&record);
  viewer::SetActiveView(view);
  SendDocOpened(view, kErrorNone);
  return view;
}

bool IsShown(DocHandle doc) {
  const std::vector<DocView> views = viewer::OpenViews();
  return std::any_of(views.begin(), views.end(),
                     [&](DocView view) { return viewer::RecordOf(view).doc == doc; });
}

DocHandle OpenFromFileSystem(PathHandle path) {
  FileHandle file = nullptr;
  const FailureCode failure = support::OpenFile(path, kOpenRead, &file);
  if (failure != kErrorNone) Fail(failure, "the file cannot be opened");
  try {
    return OpenDocumentStream(file);
  } catch (const HostFailure&) {
    support::CloseFile(file);
    throw;
  }
}

}  // namespace

DocView OpenViewOfFile(const std::string& file, const OpenOptions& options) {
  return ShowDocument(OpenDocumentFile(file, options), false);
}

DocView OpenViewOfDocument(DocHandle doc) { return ShowDocument(doc, false); }

void PrepareSave(DocView view) {
  DropSelection(view);
  SendDocChanged(viewer::DocOf(view), 0);
}

void ResumeAfterSave(DocView view) { SendPermissionsChanged(viewer::DocOf(view)); }

void CloseAllViews() {
  for (const DocView view : viewer::OpenViews()) {
    if (viewer::IsOpen(view)) viewer::CloseView(view);
  }
}

namespace viewer {

// The caller learns only that it failed; why, the report tells.
DocView OpenDocument(PathHandle path, FileSystemHandle fileSystem, const char*, std::uint32_t) {
  if (path == nullptr) return nullptr;
  const FileSystemHandle local = support::FileSystemOf(nullptr);
  const bool external = (fileSystem != nullptr ? fileSystem : support::FileSystemOf(path)) != local;
  try {
    if (!external) return OpenViewOfFile(PathString(path));
    return ShowDocument(OpenFromFileSystem(path), true);
  } catch (const HostFailure& failure) {
    ReportPlugInFailure({"opening a document", 0, failure.code, failure.what()});
    return nullptr;
  }
}

void CloseView(DocView view) {
  const DocHandle doc = RecordOf(view).doc;
  // While everything is still live: ending an edit stores what was typed.
  DropSelection(view);
  SendViewClosing(view);
  if (!IsOpen(view)) return;
  RemoveView(&RecordOf(view));
  if (IsShown(doc)) return;
  CloseDocument(doc);
  SendDocClosed(doc);
}

}  // namespace viewer
}  // namespace quillon
