#include "plugin/exchange/edit_in_progress.h"

namespace quillform {

namespace {

constexpr const char* kTextEditSelection = "QVTextEditSelection";

}  // namespace

void CommitEditInProgress(DocView view) {
  if (view == nullptr) return;
  const Atom type = Viewer->SelectionType(view);
  if (type == kNoAtom || type != Core->AtomFromName(kTextEditSelection)) return;
  Viewer->ClearSelection(view, 0);
}

}  // namespace quillform
