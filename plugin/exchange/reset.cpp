#include "plugin/exchange/reset.h"

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/field_collection.h"
#include "plugin/exchange/submit.h"
#include "plugin/model/field_tree.h"

namespace quillform {

void ResetFields(DocHandle doc, ObjectHandle list, bool inclusion) {
  LoadAllFields(doc);
  FieldCollection collection;
  collection.use = CollectionUse::kReset;
  SelectFields(doc, list, inclusion, &collection);
}

ResetRequest ReadResetRequest(ActionHandle action) {
  // Fields and the first bit of Flags mean the same there.
  const SubmitRequest request = ReadSubmitRequest(action);
  return {request.fields, request.inclusion};
}

void PerformResetForm(ActionHandle action, DocView view) {
  if (view == nullptr) return;
  const ResetRequest request = ReadResetRequest(action);
  CommitEditInProgress(view);
  ResetFields(Viewer->DocOf(view), request.fields, request.inclusion);
}

}  // namespace quillform
