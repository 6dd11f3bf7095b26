#include "plugin/model/page_notifications.h"

#include <optional>

#include "plugin/model/document_widgets.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "sdk/notifications.h"

namespace quillform {
namespace {

constexpr std::uint32_t kPermitFields = quillon::kPermitEdit | quillon::kPermitForms;
constexpr std::uint32_t kMKCapacity = 5;

bool IsWidget(AnnotHandle annot) {
  return Document->AnnotIsValid(annot) && Document->AnnotSubtype(annot) == key::Widget;
}

DocHandle DocOf(AnnotHandle annot) {
  return Document->DocOfObjectDoc(Objects->DocumentOf(Document->AnnotDict(annot)));
}

bool PermitsFields(DocHandle doc) { return (Document->GetPermissions(doc) & kPermitFields) != 0; }

// The document's form, made when there is none; the null object when it cannot be used.
ObjectHandle NeedForm(DocHandle doc) {
  if (IsNull(CatalogFormOf(Document->ObjectDocOf(doc)))) CreateFormDict(doc);
  return FormDictOf(doc);
}

bool HasUnusableForm(DocHandle doc) {
  return !IsNull(CatalogFormOf(Document->ObjectDocOf(doc))) && !DocumentHasForm(doc);
}

void TurnWithPage(AnnotHandle annot, std::uint16_t rotation) {
  const ObjectHandle dict = Document->AnnotDict(annot);
  const ObjectDoc doc = Objects->DocumentOf(dict);
  ChangeEntryOf(dict, key::MK, [&] {
    if (!IsKind(Objects->DictGet(dict, key::MK), ObjectKind::kDict)) {
      Objects->DictPut(dict, key::MK, Objects->NewDict(doc, false, kMKCapacity));
    }
    Objects->DictPut(Objects->DictGet(dict, key::MK), key::Rotation,
                     Objects->NewInteger(doc, false, rotation));
  });
}

void OnAnnotAdded(AnnotHandle annot, std::int32_t page, Atom, FailureCode, void*) {
  if (page < 0 || !IsWidget(annot)) return;
  const ObjectHandle dict = Document->AnnotDict(annot);
  const DocHandle doc = DocOf(annot);
  if (ExistingNodeOf(dict) != nullptr) return;
  if (!PermitsFields(doc)) return;
  PageScope scope(doc, static_cast<std::uint32_t>(page));
  if (IsNull(NeedForm(doc))) {
    const std::int32_t index = Document->AnnotIndex(scope.page, annot);
    if (index >= 0) Document->RemoveAnnot(scope.page, static_cast<std::uint32_t>(index));
    return;
  }
  Document->SetAnnotFlags(annot, Document->AnnotFlags(annot) | quillon::kAnnotPrint);
  const std::uint16_t rotation = Document->PageRotation(scope.page);
  if (rotation != 0) TurnWithPage(annot, rotation);
}

// A widget that is not on a page any more is no field either.
void StripField(ObjectHandle dict) {
  const ObjectHandle parent = Objects->DictGet(dict, key::Parent);
  if (IsKind(parent, ObjectKind::kDict)) {
    RemoveFromArray(KidsOf(parent), dict);
  } else if (const ObjectHandle form = FormDictOfObjects(Objects->DocumentOf(dict));
             !IsNull(form)) {
    RemoveFromArray(Objects->DictGet(form, key::Fields), dict);
  }
  for (Atom key : {key::T, key::Parent, key::V, key::Opt}) RemoveEntry(dict, key);
}

void OnAnnotWillRemove(AnnotHandle annot, std::int32_t, Atom, FailureCode, void*) {
  FieldNode node = FieldNodeOfWidget(annot);
  if (node == nullptr || (node->status & kNodeMoving) != 0) return;
  const ObjectHandle dict = node->dict;
  ChangeEntryOf(dict, key::Widget, [&] {
    const FailureCode failure = CatchFailure([&] { DeleteFieldNode(ExistingNodeOf(dict)); });
    StripField(dict);
    if (failure != quillon::kErrorNone) Raise(failure);
  });
}

// While it stands, a new node of a name that the form has already makes its widget one of that
// field (ISO 32000-1, Table 218 knows the entry for another purpose).
struct MergingByName {
  explicit MergingByName(ObjectHandle merging) : form(merging) {
    const ObjectDoc doc = Objects->DocumentOf(form);
    Objects->DictPut(form, key::NeedAppearances, Objects->NewBoolean(doc, false, 1));
  }
  ~MergingByName() {
    DropFailures([this] { Objects->DictRemove(form, key::NeedAppearances); });
  }
  MergingByName(const MergingByName&) = delete;
  MergingByName& operator=(const MergingByName&) = delete;

  ObjectHandle form;
};

bool IsOwnButton(ObjectHandle dict) {
  const ObjectHandle type = Objects->DictGet(dict, key::FT);
  return IsKind(type, ObjectKind::kName) && Objects->NameValue(type) == key::Btn;
}

// Whether the widget has become one of the document's fields. Meeting one of several widgets of an
// inserted field may dissolve that field and leave the widget with a path; it finds its place when
// it is met again.
bool FindsPlace(AnnotHandle annot) {
  for (int meeting = 0; meeting < 2; ++meeting) {
    FieldNode node = nullptr;
    DropFailures([&] { node = FieldNodeOfWidget(annot); });
    if (node != nullptr) return true;
  }
  return false;
}

void TakeInWidgets(DocHandle doc, std::uint32_t number) {
  PageScope scope(doc, number);
  if (!HasWidgets(scope.page)) return;
  const ObjectHandle form = NeedForm(doc);
  std::optional<MergingByName> merging;
  if (!IsNull(form)) merging.emplace(form);
  BulkLoad bulk(doc);
  VisitPageWidgets(scope.page, [&](PageHandle page, std::uint32_t index, AnnotHandle annot) {
    if ((merging && FindsPlace(annot)) || IsOwnButton(Document->AnnotDict(annot))) return;
    Document->RemoveAnnot(page, index);
  });
}

void OnPagesInserted(DocHandle doc, std::int32_t after, std::uint32_t count, FailureCode error,
                     void*) {
  if (error != quillon::kErrorNone || !PermitsFields(doc)) return;
  if (!FormIsUsable(doc) && !HasUnusableForm(doc)) return;
  const auto first = static_cast<std::uint32_t>(after + 1);
  for (std::uint32_t number = first; number < first + count; ++number) {
    DropFailures([&] { TakeInWidgets(doc, number); });
  }
}

void OnPagesWillDelete(DocHandle doc, std::uint32_t first, std::uint32_t last, void*) {
  for (std::uint32_t number = first; number <= last; ++number) {
    PageScope scope(doc, number);
    VisitPageWidgets(scope.page, [](PageHandle, std::uint32_t, AnnotHandle annot) {
      DropFailures([&] { DeleteFieldNode(ExistingNodeOf(Document->AnnotDict(annot))); });
    });
  }
}

void OnAnnotChanged(AnnotHandle annot, std::int32_t, Atom key, FailureCode error, void*) {
  if (key != key::F || error != quillon::kErrorNone || !IsWidget(annot)) return;
  if (FieldNode node = ExistingNodeOf(Document->AnnotDict(annot))) ReadFieldFlags(node);
}

}  // namespace

bool RegisterPageNotifications() {
  using enum OnFailure;
  const struct {
    std::uint32_t number;
    Callback routine;
  } notifications[] = {
      {quillon::kNoteAnnotAdded, MakeHostCallback<&OnAnnotAdded, kDrop>()},
      {quillon::kNoteAnnotWillRemove, MakeHostCallback<&OnAnnotWillRemove, kDrop>()},
      {quillon::kNotePagesInserted, MakeHostCallback<&OnPagesInserted, kDrop>()},
      {quillon::kNotePagesWillDelete, MakeHostCallback<&OnPagesWillDelete, kDrop>()},
      {quillon::kNoteAnnotChanged, MakeHostCallback<&OnAnnotChanged, kDrop>()},
  };
  for (const auto& [number, routine] : notifications) {
    Viewer->RegisterNotification(number, Extension, routine, nullptr);
  }
  return true;
}

}  // namespace quillform
