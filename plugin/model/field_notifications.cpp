#include "plugin/host/form_events.h"
#include "plugin/model/document_widgets.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "sdk/notifications.h"

namespace quillform {
namespace {

bool AsksForAppearances(ObjectHandle form) {
  const ObjectHandle asks = Objects->DictGet(form, key::NeedAppearances);
  return IsKind(asks, ObjectKind::kBoolean) && Objects->BooleanValue(asks);
}

// One widget that cannot be built does not keep the others from being built.
void BuildAllAppearances(DocHandle doc) {
  BulkLoad bulk(doc);
  VisitWidgets(doc, [](PageHandle, std::uint32_t, AnnotHandle annot) {
    DropFailures([&] {
      FieldNode node = FieldNodeOfWidget(annot);
      MarkAppearanceStale(node);
      RefreshWidget(node, GetFieldValue(node), kNoAtom);
    });
  });
}

// What the document asked for is done, or cannot be done; either way it is not asked for again.
void SettleAppearances(DocHandle doc, ObjectHandle form) {
  if (AsksForAppearances(form)) DropFailures([&] { BuildAllAppearances(doc); });
  if (Objects->DictKnown(form, key::NeedAppearances)) {
    Objects->DictRemove(form, key::NeedAppearances);
  }
}

void OnDocOpened(DocView view, FailureCode error, void*) {
  if (error != quillon::kErrorNone) return;
  const DocHandle doc = Viewer->DocOf(view);
  const ObjectDoc objectDoc = Document->ObjectDocOf(doc);
  FormRecord* record = FindOrMakeFormRecord(objectDoc);
  if (record == nullptr || !record->usable) return;
  record->closing = false;
  const ObjectHandle form = FormDictOf(doc);
  if (!IsNull(form)) {
    DropFailures([&] { SettleAppearances(doc, form); });
  } else if (!IsNull(CatalogFormOf(objectDoc))) {
    record->usable = false;
  }
  if (exchangeHooks.RunPendingImports != nullptr) exchangeHooks.RunPendingImports(view);
}

void OnViewClosing(DocView view, void*) {
  const DocHandle doc = Viewer->DocOf(view);
  DropFailures([&] { CloseForm(doc); });
  DropFailures([&] {
    if (exchangeHooks.KeepValuesOfClosing != nullptr) exchangeHooks.KeepValuesOfClosing(view);
  });
  FormRecord* record = FindFormRecord(Document->ObjectDocOf(doc));
  if (record == nullptr) return;
  EmptyFormRecord(*record);
  record->closing = true;
}

void OnDocClosed(DocHandle, void*) {
  ForgetFormDict();  // another document may come to use its handle
  FreeClosingRecords();
}

void OnPermissionsChanged(DocHandle doc, void*) {
  FormRecord* record = FindFormRecord(Document->ObjectDocOf(doc));
  if (record != nullptr) RecomputeUsable(*record);
}

void OnDocChanged(DocHandle doc, std::uint32_t flags, void*) {
  DropFailures([&] { CloseForm(doc); });
  DropFailures([&] {
    const DocView view = Viewer->ActiveDocView();
    if (view != nullptr && Viewer->DocOf(view) == doc) Viewer->ClearSelection(view, 1);
  });
  if ((flags & quillon::kDocChangeObjects) != 0) ForgetFormDict();
  FormRecord* record = FindOrMakeFormRecord(Document->ObjectDocOf(doc));
  if (record == nullptr) return;
  if ((flags & quillon::kDocChangeObjects) != 0) EmptyFormRecord(*record);
  record->usable = false;
}

// Whether a field has the entry from nowhere but the form's defaults.
bool ReadsFormDefault(FieldNode node, std::uint32_t bit) {
  if (bit == kBitV || bit == kBitDV) return false;
  for (FieldNode holder = node; holder != nullptr; holder = holder->parent) {
    RecomputeOwnEntries(holder);
    if ((holder->ownEntries & bit) != 0) return false;
  }
  return true;
}

bool ReadsChangedDefault(FieldNode node, std::uint32_t mask) {
  for (std::uint32_t bit = kBitQ; bit != 0; bit >>= 1) {
    if ((mask & bit) != 0 && ReadsFormDefault(node, bit)) return true;
  }
  return false;
}

// A field's widgets are rebuilt together, once.
void FollowDefaults(FieldNode field, std::uint32_t mask) {
  VisitNodesOfName(field, [mask](FieldNode bearer) {
    if (bearer->firstKid == nullptr && ReadsChangedDefault(bearer, mask)) {
      MarkAppearanceStale(bearer);
    }
  });
  if (!FieldIsStale(field)) return;
  if (IsNull(GetFieldValue(field))) {
    ResetFieldValue(field);
  } else {
    RefreshAllWidgets(field);
  }
}

void OnDefaultsChanged(FormEventRecord* event, void*) {
  LoadAllFields(event->document);
  const std::uint32_t mask = event->mask;
  VisitFieldNodes(event->document, true, true, [mask](FieldNode leaf) -> Boolean {
    FollowDefaults(leaf, mask);
    return 1;
  });
}

}  // namespace

bool RegisterFieldTreeNotifications() {
  using enum OnFailure;
  const struct {
    std::uint32_t number;
    Callback routine;
  } notifications[] = {
      {quillon::kNoteDocOpened, MakeHostCallback<&OnDocOpened, kDrop>()},
      {quillon::kNoteDocChanged, MakeHostCallback<&OnDocChanged, kDrop>()},
      {quillon::kNotePermissionsChanged, MakeHostCallback<&OnPermissionsChanged, kDrop>()},
      {quillon::kNoteViewClosing, MakeHostCallback<&OnViewClosing, kDrop>()},
      {quillon::kNoteDocClosed, MakeHostCallback<&OnDocClosed, kDrop>()},
  };
  for (const auto& [number, routine] : notifications) {
    Viewer->RegisterNotification(number, Extension, routine, nullptr);
  }
  FormEventRegister(kEventDefaultsChanged, Wrap<&OnDefaultsChanged>, nullptr, nullptr);
  return true;
}

}  // namespace quillform
