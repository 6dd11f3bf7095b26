#include "plugin/model/field_kinds.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

bool HasNormalAppearance(ObjectHandle widget, Atom state) {
  const ObjectHandle appearances = Objects->DictGet(widget, key::AP);
  if (!IsKind(appearances, ObjectKind::kDict)) return false;
  const ObjectHandle normal = Objects->DictGet(appearances, key::N);
  return IsKind(normal, ObjectKind::kDict) &&
         IsKind(Objects->DictGet(normal, state), ObjectKind::kStream);
}

bool ShowsState(ObjectHandle widget, Atom state) {
  const ObjectHandle shown = Objects->DictGet(widget, key::AppearanceState);
  return IsKind(shown, ObjectKind::kName) && Objects->NameValue(shown) == state;
}

void ShowState(FieldNode node, Atom state) {
  const ObjectHandle widget = node->dict;
  if (ShowsState(widget, state)) return;
  const ObjectDoc doc = node->record->objectDoc;
  const AnnotHandle annot = AnnotOfNode(node);
  Document->AnnotWillChange(annot, key::AppearanceState);
  const FailureCode failure = CatchFailure(
      [&] { Objects->DictPut(widget, key::AppearanceState, Objects->NewName(doc, false, state)); });
  Document->AnnotDidChange(annot, key::AppearanceState, failure);
  if (failure != quillon::kErrorNone) Raise(failure);
}

}  // namespace

void RefreshWidget(FieldNode node, ObjectHandle value, Atom state) {
  if (!NodeIsWidget(node)) return;
  const ObjectHandle shown = DisplayValue(node, value);
  if (state == kNoAtom && IsKind(shown, ObjectKind::kName)) state = Objects->NameValue(shown);
  const bool stale = (node->status & kNodeStale) != 0;
  if (!stale && state != kNoAtom && HasNormalAppearance(node->dict, state)) {
    ShowState(node, state);
    return;
  }
  const FieldTypeHandler* handler = FindFieldTypeHandler(FieldKindOfNode(node));
  if (handler == nullptr || handler->RebuildAppearance == nullptr) return;
  NodePin pin(node);
  handler->RebuildAppearance(handler, AnnotOfNode(node), state, shown, stale);
  if (pin.node != nullptr) pin.node->status &= ~static_cast<std::uint32_t>(kNodeStale);
}

void RefreshAllWidgetsWith(FieldNode node, ObjectHandle value) {
  if (!FieldNodeIsValid(node)) return;
  VisitNodesOfName(node, [&](FieldNode bearer) { RefreshWidget(bearer, value, kNoAtom); });
}

void RefreshAllWidgets(FieldNode node) { RefreshAllWidgetsWith(node, GetFieldValue(node)); }

void MarkAppearanceStale(FieldNode node) {
  if (NodeIsWidget(node)) node->status |= kNodeStale;
}

bool FieldIsStale(FieldNode node) {
  bool stale = false;
  if (FieldNodeIsValid(node)) {
    VisitNodesOfName(
        node, [&](FieldNode bearer) { stale = stale || (bearer->status & kNodeStale) != 0; });
  }
  return stale;
}

}  // namespace quillform
