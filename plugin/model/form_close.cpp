#include <vector>

#include "plugin/model/document_widgets.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "plugin/model/volatile_fields.h"

namespace quillform {
namespace {

constexpr std::uint32_t kUnplaced = quillon::kAnnotInvisible | quillon::kAnnotHidden;

// A widget of a field stays and its node is marked; one that is hidden because it found no place in
// the tree leaves its page. A widget whose node cannot be made now is left alone.
void SweepPages(DocHandle doc) {
  VisitWidgets(doc, [](PageHandle page, std::uint32_t index, AnnotHandle annot) {
    FieldNode node = nullptr;
    const FailureCode failure = CatchFailure([&] { node = FieldNodeOfWidget(annot); });
    if (failure != quillon::kErrorNone) return;
    if (FieldNodeIsValid(node)) {
      node->status |= kNodeSweepMark;
    } else if ((Document->AnnotFlags(annot) & kUnplaced) == kUnplaced) {
      Document->RemoveAnnot(page, index);
    }
  });
}

// The widgets in the tree that no page shows. Clears the marks.
std::vector<ObjectHandle> TakeUnshownWidgets(DocHandle doc) {
  std::vector<ObjectHandle> unshown;
  VisitFieldNodes(doc, false, false, [&](FieldNode node) -> Boolean {
    const bool marked = (node->status & kNodeSweepMark) != 0;
    node->status &= ~static_cast<std::uint32_t>(kNodeSweepMark);
    if (!marked && node->firstKid == nullptr && NodeIsWidget(node)) unshown.push_back(node->dict);
    return 1;
  });
  return unshown;
}

void SweepMergedWidgets(DocHandle doc, ObjectHandle form) {
  if (!Objects->DictKnown(form, key::WidgetsMerged)) return;
  const FailureCode failure = CatchFailure([&] { SweepPages(doc); });
  const std::vector<ObjectHandle> unshown = TakeUnshownWidgets(doc);
  if (failure != quillon::kErrorNone) Raise(failure);
  // By dictionary: deleting one node may take others (its empty parents) with it.
  for (ObjectHandle dict : unshown) DeleteFieldNode(ExistingNodeOf(dict));
  Objects->DictRemove(form, key::WidgetsMerged);
}

}  // namespace

void CloseForm(DocHandle doc) {
  const ObjectHandle form = FormDictOf(doc);
  if (IsNull(form)) return;
  FailureCode first = quillon::kErrorNone;
  const auto run = [&first](auto&& part) {
    const FailureCode failure = CatchFailure(part);
    if (first == quillon::kErrorNone) first = failure;
  };
  // Without a live form nothing has a node, and every widget would look unplaced.
  if (FormIsUsable(doc)) {
    run([&] { SweepMergedWidgets(doc, form); });
    run([&] { ClearVolatileValues(form); });
  }
  run([&] {
    if (Objects->DictKnown(form, key::MaxLen)) Objects->DictRemove(form, key::MaxLen);
  });
  if (first != quillon::kErrorNone) Raise(first);
}

}  // namespace quillform
