// The selection of a view and the hand-over between those who own it.
//
// A view's selection is forgotten before its owner is told, so an owner that clears or sets the
// selection while it is told meets a view without one, and nothing is told or freed twice.
#include <cstring>
#include <exception>
#include <utility>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/registrations.h"
#include "quillon/viewer/view_record.h"

namespace quillon::viewer {
namespace {

constexpr int kMaxHandOvers = 8;

// Selections of this type hold an AnnotHandle; unless somebody else serves the type, the handler of
// the annotation is told.
Atom AnnotationType() { return core::AtomFromName("Annotation"); }

using SelectedRoutine = void (*)(const AnnotHandlerRecord* record, AnnotHandle annot,
                                 PageView view);

void TellAnnotHandler(DocView view, const void* data, Callback AnnotHandlerRecord::*routine) {
  AnnotHandle annot{};
  std::memcpy(&annot, data, sizeof(annot));
  const RegisteredAnnotHandler* handler = AnnotHandlerOf(document::AnnotSubtype(annot));
  if (handler == nullptr || handler->record->*routine == nullptr) return;
  const auto tell = reinterpret_cast<SelectedRoutine>(handler->record->*routine);
  CallGuarded([&] { tell(handler->record, annot, DocPageView(view)); });
}

void TellGained(DocView view, const ViewSelection& selection) {
  if (const RegisteredSelectionServer* server = SelectionServerOf(selection.type)) {
    if (server->record->gained == nullptr) return;
    CallGuarded([&] { server->record->gained(view, selection.data); });
  } else if (selection.type == AnnotationType() && selection.data != nullptr) {
    TellAnnotHandler(view, selection.data, &AnnotHandlerRecord::selected);
  }
}

void TellLost(DocView view, const ViewSelection& selection, Boolean highlighted) {
  if (const RegisteredSelectionServer* server = SelectionServerOf(selection.type)) {
    if (server->record->lost == nullptr) return;
    CallGuarded([&] { server->record->lost(view, selection.data, highlighted); });
  } else if (selection.type == AnnotationType() && selection.data != nullptr) {
    TellAnnotHandler(view, selection.data, &AnnotHandlerRecord::deselected);
  }
}

void DestroyData(DocView view, const ViewSelection& selection) {
  const RegisteredSelectionServer* server = SelectionServerOf(selection.type);
  if (server != nullptr && server->record->destroy != nullptr) {
    CallGuarded([&] { server->record->destroy(view, selection.data); });
  } else {
    support::Free(selection.data);
  }
}

}  // namespace

void SetSelection(DocView view, Atom type, void* data, Boolean highlighted) {
  if (type == kNoAtom) Fail(kErrorBadParameter, "a selection has a type");
  // A former owner may select something else while it is told.
  for (int turn = 0; RecordOf(view).selection.type != kNoAtom; ++turn) {
    if (turn == kMaxHandOvers) Fail(kErrorGeneral, "the selection does not come free");
    ClearSelection(view, highlighted);
  }
  const ViewSelection selection = {type, data};
  RecordOf(view).selection = selection;
  TellGained(view, selection);
}

void ClearSelection(DocView view, Boolean highlighted) {
  const ViewSelection former = std::exchange(RecordOf(view).selection, ViewSelection{});
  if (former.type == kNoAtom) return;
  try {
    TellLost(view, former, highlighted);
  } catch (const HostFailure&) {
    // The data must go even so; what the owner raised is what the caller gets to know.
    const std::exception_ptr failure = std::current_exception();
    DestroyData(view, former);
    std::rethrow_exception(failure);
  }
  DestroyData(view, former);
}

Atom SelectionType(DocView view) { return RecordOf(view).selection.type; }

void* SelectionData(DocView view) { return RecordOf(view).selection.data; }

}  // namespace quillon::viewer
