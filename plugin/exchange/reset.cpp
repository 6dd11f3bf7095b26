#include "plugin/exchange/reset.h"

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/field_collection.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::int32_t kExcludeListed = 0x1;  // a bit of a ResetForm action's Flags

}  // namespace

void ResetFields(DocHandle doc, ObjectHandle list, bool inclusion) {
  LoadAllFields(doc);
  FieldCollection collection;
  collection.use = CollectionUse::kReset;
  SelectFields(doc, list, inclusion, &collection);
}

ResetRequest ReadResetRequest(ActionHandle action) {
  const ObjectHandle dict = Document->ActionDict(action);
  const ObjectHandle flags = Objects->DictGet(dict, key::Flags);
  const bool excludes =
      IsKind(flags, ObjectKind::kInteger) && (Objects->IntegerValue(flags) & kExcludeListed) != 0;
  const bool hasList = Objects->DictKnown(dict, key::Fields) != 0;
  return {Objects->DictGet(dict, key::Fields), hasList && !excludes};
}

void PerformResetForm(ActionHandle action, DocView view) {
  if (view == nullptr) return;
  const ResetRequest request = ReadResetRequest(action);
  CommitEditInProgress(view);
  ResetFields(Viewer->DocOf(view), request.fields, request.inclusion);
}

}  // namespace quillform
